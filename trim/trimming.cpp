#include "trim/trimming.h"

#include <bit>
#include <sstream>

#include "capture/capture_time.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/camera_choice.h"
#include "save/save_messages.h"
#include "trim/progress_bar.h"

using namespace mdlFileProcessing;

namespace trim {
namespace {

constexpr char kCancelled[] = "cancelled";
constexpr char kExists[] = "exists already (--replace replaces it)";

/// "camera 3", "cameras 1,3,5", as the option has them.
std::string NamesOf(std::uint32_t cameras) {
  std::string names = std::popcount(cameras) == 1 ? "camera" : "cameras";
  const char* between = " ";
  for (int i = 0; i < format::types::k20.cameras; ++i) {
    if ((cameras >> i & 1U) == 0) continue;
    names += between;
    names += std::to_string(i + 1);
    between = ",";
  }
  return names;
}

/// A text of several lines in one.
std::string InOneLine(const std::string& text) {
  std::string line;
  for (const char c : text) {
    if (c != '\r' && c != '\n') {
      line += c;
    } else if (!line.ends_with(' ')) {
      line += ' ';
    }
  }
  return line;
}

/// What the windows would tell of a save, in one line.
std::string TextOf(const SaveResult& result) {
  std::string text;
  for (const SaveMessage& message : MessagesOf(result)) {
    if (!text.empty()) text += ' ';
    text += InOneLine(message.text);
  }
  return text;
}

/// Shows a save on the terminal. It ends when the user wishes so, or a block is no longer whole.
class SaveOnTerminal : public SaveProgress {
 public:
  explicit SaveOnTerminal(const System& system) : system_(system), bar_(system, "Saving") {}

  void ShowBlocksDone(std::int32_t done, std::int32_t total) override { bar_.Show(done, total); }
  void ShowBlockMessage(const std::string& text) override { message_ = text; }
  void ShowHourglass(bool) override {}
  bool GoOn() override { return !system_.IsCancelled() && message_.empty(); }

  /// What was told about a block; empty for nothing.
  const std::string& message() const { return message_; }

 private:
  const System& system_;
  ProgressBar bar_;
  std::string message_;
};

/// One run of the program, in its steps.
class Trimming {
 public:
  Trimming(const System& system, const Request& request)
      : system_(system), core_(system.core()), request_(request) {
    job_.sourcePath = request.source;
    job_.targetPath = request.target;
    job_.ifTaken = request.replace ? NewFile::IfTaken::kReplace : NewFile::IfTaken::kRefuse;
  }

  Saved Run() {
    CheckTarget();
    ReadSource();
    ChooseRange();
    ChooseCameras();
    return Save();
  }

 private:
  /// What can be told before anything is read.
  void CheckTarget() {
    if (format::IsNameOf20D(request_.source) != format::IsNameOf20D(request_.target))
      throw Refusal(request_.target + ": the new file's name must end as the recording's does",
                    Outcome::kWrongUse);
    if (!request_.replace && core_.names.LookAt(request_.target).isTaken) RefuseTarget(kExists);
  }

  void ReadSource() {
    bln20D = format::IsNameOf20D(request_.source);
    const SourceFile source(core_.files, request_.source);
    if (!source.IsOpen()) RefuseSource(InOneLine(MessageOfReading(source.Reason())));
    if (!source.IsRecording()) RefuseSource(save_text::kNotValid);
    Read([&](Pacer& pacer) { return ScanSourceFile(core_.files, request_.source, &pacer); });
  }

  /// Reads all blocks in the way that `read` knows, with a bar.
  template <typename ReadBlocks>
  void Read(ReadBlocks read) {
    ProgressBar bar(system_, "Reading");
    Pacer pacer(core_.clock, [&](std::int32_t done, std::int32_t total) {
      bar.Show(done, total);
      return !system_.IsCancelled();
    });
    const auto [end, why] = read(pacer);
    if (end == ReadEnd::kStopped) throw Refusal(kCancelled);
    if (end == ReadEnd::kNotValid) RefuseSource(save_text::kNotValid);
    if (end == ReadEnd::kFailed) RefuseSource(InOneLine(MessageOfReading(why)));
  }

  void ChooseRange() {
    BlockRange range = {1, lngBlockCount};
    if (request_.blocks) {
      range = *request_.blocks;
    } else if (request_.from || request_.to) {
      const BlockRange found = FindTimes();
      if (request_.from) range.first = found.first;
      if (request_.to) range.last = found.last;
    }
    if (range.last > lngBlockCount)
      RefuseSource("has only " + std::to_string(lngBlockCount) + " blocks");
    job_.firstBlock = range.first;
    job_.lastBlock = range.last;
  }

  /// What "Confirm" finds. An end that is not given is the recording's own.
  BlockRange FindTimes() {
    const std::int64_t start = request_.from.value_or(SecondsOfDate(dtBlockStart[1]));
    const std::int64_t end = request_.to.value_or(SecondsOfDate(dtBlockEnd[lngBlockCount]));
    if (request_.clip) return FindClippedTimes(start, end);
    if (const char* refusal = TimeRangeRefusal(start, end)) RefuseSource(refusal);
    return BlocksOfTimeRange(start, end);
  }

  BlockRange FindClippedTimes(std::int64_t start, std::int64_t end) {
    if (request_.from && request_.to && start >= end) RefuseSource(range_text::kNotEarlier);
    const auto found = BlocksOfClippedRange(start, end);
    if (!found)
      throw Refusal(request_.source + ": holds nothing of the time range",
                    Outcome::kNothingInRange);
    return *found;
  }

  /// No wish for cameras, or one for all that occur in the range, means whole blocks.
  void ChooseCameras() {
    if (!request_.cameras) return;
    Read([&](Pacer& pacer) {
      return CheckAvailability(core_.files, request_.source, job_.firstBlock, job_.lastBlock,
                               &pacer);
    });
    const std::uint32_t available = AvailableCameras();
    if (available != 0 && (available & ~*request_.cameras) == 0) return;
    job_.mode = SaveJob::Mode::kChosenCameras;
    job_.cameras = *request_.cameras;
    const std::uint32_t missing = job_.cameras & ~available;
    if (missing != 0) RefuseSource("no images in the range of " + NamesOf(missing));
    const std::uint32_t high = job_.cameras >> format::kCameras << format::kCameras;
    if (high != 0)
      RefuseSource(NamesOf(high) + " cannot be kept when only some cameras are selected");
  }

  Saved Save() {
    SaveResult result;
    {
      SaveOnTerminal progress(system_);
      result = RunSave(core_, progress, job_);
      if (!progress.message().empty()) RefuseSource(progress.message());
    }
    if (result.end == SaveEnd::kCancelled) throw Refusal(kCancelled);
    if (result.end == SaveEnd::kTaken) RefuseTarget(kExists);
    if (result.end == SaveEnd::kNotRead || result.end == SaveEnd::kNoImages)
      RefuseSource(TextOf(result));
    if (result.end != SaveEnd::kSaved) RefuseTarget(TextOf(result));
    const bool isDamaged = result.lostImages + result.lostBlocks > 0;
    return {isDamaged ? Outcome::kDamaged : Outcome::kSaved, Report(result)};
  }

  std::string Report(const SaveResult& result) const {
    std::ostringstream report;
    report << job_.targetPath << ": " << core_.dates.Format(dtBlockStart[job_.firstBlock]) << " to "
           << core_.dates.Format(dtBlockEnd[job_.lastBlock]) << ", blocks " << job_.firstBlock
           << '-' << job_.lastBlock;
    if (job_.mode == SaveJob::Mode::kChosenCameras)
      report << ", " << result.images << " images of " << NamesOf(job_.cameras);
    report << ", " << result.bytes << " bytes";
    const std::string losses = TextOf(result);
    if (!losses.empty()) report << ". " << losses;
    return report.str();
  }

  [[noreturn]] void RefuseSource(const std::string& why) const {
    throw Refusal(request_.source + ": " + why);
  }
  [[noreturn]] void RefuseTarget(const std::string& why) const {
    throw Refusal(request_.target + ": " + why);
  }

  const System& system_;
  platform::Core& core_;
  const Request& request_;
  SaveJob job_;
};

}  // namespace

Saved Trim(const System& system, const Request& request) {
  return Trimming(system, request).Run();
}

}  // namespace trim
