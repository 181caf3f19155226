#include <span>
#include <vector>

#include "capture/format.h"
#include "capture/source_file.h"
#include "save/operations.h"
#include "save/save_messages.h"
#include "save/target.h"

namespace {

/// Shows the hourglass while it lives.
class Hourglass {
 public:
  explicit Hourglass(SaveProgress& progress) : progress_(progress) { progress.ShowHourglass(true); }
  ~Hourglass() { progress_.ShowHourglass(false); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  SaveProgress& progress_;
};

SaveResult CopyBlocks(SourceFile& source, SaveProgress& progress, Pacer pacer, const SaveJob& job,
                      NewFile& file) {
  std::vector<std::uint8_t> bytRecord(format::kBlockSize);
  for (std::int32_t i = 1; i <= job.BlockCount(); ++i) {
    const std::int32_t block = job.firstBlock + i - 1;
    const std::int32_t lngBlockSize = source.LengthOf(block);
    const auto lngBytesRead = source.Read(block, 0, std::span(bytRecord).first(lngBlockSize));
    if (!lngBytesRead) return EndOfReading(source);
    // What the source does not hold of the block is filled up with what the buffer had there.
    if (lngBytesRead != lngBlockSize) progress.ShowBlockMessage(save_text::kReadError);
    if (!file.Append(bytRecord.data(), lngBlockSize)) return EndOfWriting(file);
    progress.ShowBlocksDone(i, job.BlockCount());
    if (!pacer.GoOn(i, job.BlockCount())) return {.end = SaveEnd::kCancelled};
  }
  return {};
}

}  // namespace

SaveResult SaveBlockRange(platform::Core& system, SaveProgress& progress, const SaveJob& job) {
  if (!job.HasBlocks()) return {.end = SaveEnd::kNotRead};
  SourceFile source(system.files, job.sourcePath);
  if (!source.IsOpen()) return EndOfReading(source);

  NewFile file(
      system, job.place, [&progress] { return progress.GoOn(); }, job.ifTaken);
  if (SaveResult asked = AskForTarget(system, source, job, file); asked.end != SaveEnd::kSaved)
    return asked;
  const std::int64_t bytes =
      std::int64_t{job.BlockCount() - 1} * format::kBlockSize + source.LengthOf(job.lastBlock);
  if (const SaveEnd room = RoomForNew(system, job, bytes); room != SaveEnd::kSaved)
    return {.end = room};
  if (!file.Create(job.targetPath)) return EndOfWriting(file);
  SaveResult copied = CopyBlocks(source, progress, PacerOf(progress, system.clock), job, file);
  if (copied.end != SaveEnd::kSaved) return copied;
  const Hourglass hourglass(progress);
  file.Finish();
  return EndOfWriting(file);
}
