#include "cdwizard/cd_copy.h"

#include <algorithm>
#include <exception>

#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "platform/paths.h"
#include "save/save_messages.h"
#include "storage/new_file.h"

using platform::FileHandle;

namespace {

constexpr std::int64_t kMegabyte = 1048576;
constexpr std::int64_t kClusterBytes = 1024;
constexpr std::int64_t kMostBytes = 2147483647;
constexpr std::int32_t kPlayerPercent = 16;
constexpr std::int32_t kClosingPercent = 3;
// The first player files go to the disc's root, the others into the player's folder.
constexpr int kPlayerFilesInRoot = 3;
constexpr std::uint32_t kChunk = 256 * 1024;

std::int64_t RoundedUp(std::int64_t bytes, std::int64_t unit) {
  return (bytes + unit - 1) / unit * unit;
}

bool IsAbsolute(const std::string& path) {
  return path.starts_with("\\\\") || path.find(":\\") == 1;
}

// The comparison regards letter case: a name that ends in ".60d" gets ".60D" behind it.
std::string WithEnding(const std::string& fileName, bool is20D) {
  const std::string ending = format::VariantOf(is20D).ending;
  return fileName.ends_with(ending) ? fileName : fileName + ending;
}

// Where each of these player files lands on a disc.
std::vector<std::string> PlayerFilesOn(const Disc& disc, const std::vector<std::string>& paths) {
  std::vector<std::string> onDisc;
  for (const std::string& path : paths) {
    const bool inRoot = onDisc.size() < kPlayerFilesInRoot;
    onDisc.push_back((inRoot ? disc.drive() : disc.PlayerFolder()) + "\\" +
                     platform::LastFilePart(path));
  }
  return onDisc;
}

// Percentage when the player file with this index (from 0) is copied.
int PlayerPercent(int index) {
  return index < kPlayerFilesInRoot ? index + 1 : (index - 1) * 2;
}

// Percentage of the whole copy when `base` of it are the player's files.
double Percent(std::int32_t done, std::int32_t total, std::int32_t base) {
  return static_cast<double>(done) / total * (100 - base) + base;
}

/// Shows a save on the wizard's page. Nothing but the session's end stops it there.
class CopyProgress : public SaveProgress {
 public:
  /// `base` percent are the player's files', `closing` percent are left for the file's close.
  CopyProgress(CopyView& view, std::int32_t base, std::int32_t closing)
      : view_(view), base_(base), closing_(closing) {}

  void ShowBlocksDone(std::int32_t done, std::int32_t total) override {
    view_.ShowPercent(std::max(Percent(done, total, base_) - closing_, 0.0));
  }
  void ShowBlockMessage(const std::string& text) override { view_.ShowApplicationMessage(text); }
  void ShowHourglass(bool) override {}
  bool GoOn() override { return view_.GoOn(); }

 private:
  CopyView& view_;
  std::int32_t base_;
  std::int32_t closing_;
};

bool CopyBytes(platform::Files& files, FileHandle from, NewFile& to) {
  std::vector<std::uint8_t> chunk(kChunk);
  for (std::uint32_t bytesRead = kChunk; bytesRead > 0;) {
    if (!files.Read(from, chunk.data(), kChunk, bytesRead)) return false;
    if (!to.Append(chunk.data(), bytesRead)) return false;
  }
  return to.Finish();
}

}  // namespace

std::vector<std::string> PlayerFilePaths(const std::string& strPlayerRoot) {
  std::vector<std::string> paths;
  for (const char* relative :
       {"TessaviewCD\\Autorun.inf", "TessaviewCD\\Tessaview Notes.txt",
        "TessaviewCD\\WIN95.BAT.bat", "TessaviewCD\\Tessaview\\comdlg32.ocx",
        "TessaviewCD\\Tessaview\\pxcodec.dll", "TessaviewCD\\Tessaview\\msvbvm60.dll",
        "TessaviewCD\\Tessaview\\Oleaut32.dll", "TessaviewCD\\Tessaview\\Tessaview.exe",
        "TessaviewCD\\Tessaview\\kdu_v42R.dll", "TessaviewCD\\Tessaview\\tvjpeg.dll"})
    paths.push_back(strPlayerRoot + relative);
  return paths;
}

std::int32_t CdCopy::FilesSize(bool blnQW) {
  strPlayerFiles = blnQW ? PlayerFilePaths(strPlayerRoot) : std::vector<std::string>();
  lngPlayerFileSizes.assign(strPlayerFiles.size(), 0);
  lngFilesSize = 0;
  std::int64_t bytes = 0;
  for (std::size_t i = 0; i < strPlayerFiles.size() && bytes < kMostBytes; ++i) {
    if (!HasPlayerFile(strPlayerFiles[i])) {
      if (!MayGoOnWithout(strPlayerFiles[i])) return 0;
      bytes = 0;
      break;
    }
    lngPlayerFileSizes[i] = PlayerBytes(strPlayerFiles[i]);
    bytes = std::min(bytes + lngPlayerFileSizes[i], kMostBytes);
  }
  const std::int64_t megabytes = RoundedUp(bytes, kMegabyte) / kMegabyte;
  lngFilesSize = static_cast<std::int32_t>(megabytes) + mainWindow_.SizeEstimateMB();
  return lngFilesSize;
}

bool CdCopy::HasPlayerFile(const std::string& path) {
  return IsAbsolute(strPlayerRoot) && system_.fso.HasFile(path);
}

std::int32_t CdCopy::PlayerBytes(const std::string& path) {
  const auto bytes = std::min<std::uint64_t>(system_.fso.FileBytes(path).value_or(0), kMostBytes);
  const std::int64_t rounded = RoundedUp(static_cast<std::int64_t>(bytes), kClusterBytes);
  return static_cast<std::int32_t>(std::min(rounded, kMostBytes));
}

bool CdCopy::MayGoOnWithout(const std::string& path) {
  return view_.AskYesNo("The file (" + path +
                        ") can not be found! \r\n"
                        "You can only save the selected file but not the Tessaview files. "
                        "Do you want to continue?");
}

CopyEnd CdCopy::CopyFiles(bool blnQW, const std::string& drive, const std::string& fileName) {
  Job job = {.disc = Disc(system_, drive),
             .withPlayer = blnQW && lngFilesSize > mainWindow_.SizeEstimateMB(),
             .targetPath = {}};
  job.targetPath = (job.withPlayer ? job.disc.PlayerFolder() : drive) + "\\" +
                   WithEnding(fileName, mdlFileProcessing::bln20D);
  isOver_ = false;
  intProgressBase = 0;
  bool isCopied = false;
  try {
    isCopied = CopyAll(job);
  } catch (const std::exception&) {
    // No memory, for one: it ends the copy as any other fault does.
    isCopied = false;
  }
  if (isCopied) return CopyEnd::kCopied;
  return isOver_ || !GoOn() ? CopyEnd::kOver : CopyEnd::kNotReady;
}

// The source stays open while the disc is cleared: Windows deletes no file that is open.
bool CdCopy::CopyAll(Job& job) {
  const SourceFile source(system_.files, mainWindow_.SourcePath());
  const SaveJob recording = RecordingJob(job.targetPath);
  if (!source.IsOpen() || !recording.HasBlocks()) return false;
  if (!SparesSources(job)) return false;
  if (job.withPlayer && !ClearDisc(job.disc)) return false;
  view_.ShowProgress();
  if (!GoOn()) return false;
  if (job.withPlayer && !CopyPlayerFiles(job.disc)) return false;
  return SendDataToClassCD(recording);
}

bool CdCopy::SparesSources(Job& job) {
  std::vector<std::string> kept, written = {job.targetPath};
  if (job.withPlayer) {
    kept = strPlayerFiles;
    for (const std::string& path : PlayerFilesOn(job.disc, strPlayerFiles)) written.push_back(path);
  }
  kept.push_back(mainWindow_.SourcePath());
  return job.disc.Spares(kept, job.withPlayer, written);
}

bool CdCopy::ClearDisc(Disc& disc) {
  return disc.Clear() && GoOn() && system_.fso.MakeFolder(disc.PlayerFolder());
}

bool CdCopy::CopyPlayerFiles(const Disc& disc) {
  const std::vector<std::string> targets = PlayerFilesOn(disc, strPlayerFiles);
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (!CopyPlayerFile(strPlayerFiles[i], targets[i])) return false;
    view_.ShowPercent(PlayerPercent(static_cast<int>(i)));
    if (!GoOn()) return false;
  }
  intProgressBase = kPlayerPercent;
  return true;
}

bool CdCopy::CopyPlayerFile(const std::string& from, const std::string& to) {
  const FileHandle source = system_.files.Open(from, platform::OpenMode::kReadExisting);
  if (source == FileHandle::kInvalid) return false;
  NewFile target(system_, NewFile::Place::kOwnName, [this] { return GoOn(); });
  const bool isCopied = target.Create(to) && CopyBytes(system_.files, source, target);
  system_.files.Close(source);
  // A disc that takes no times carries the player all the same.
  if (isCopied) system_.names.CopyTimes(from, to);
  return isCopied;
}

SaveJob CdCopy::RecordingJob(const std::string& targetPath) {
  SaveJob job = mainWindow_.ChosenJob();
  job.targetPath = targetPath;
  job.place = NewFile::Place::kOwnName;
  return job;
}

bool CdCopy::SendDataToClassCD(const SaveJob& job) {
  const bool isRebuilt = job.mode == SaveJob::Mode::kChosenCameras;
  CopyProgress progress(view_, intProgressBase, isRebuilt ? kClosingPercent : 0);
  const SaveResult result = RunSave(system_, progress, job);
  TellEnd(result);
  const bool isSaved = result.end == SaveEnd::kSaved;
  if (isSaved && isRebuilt) view_.ShowPercent(100);
  return isSaved;
}

void CdCopy::TellEnd(SaveResult result) {
  isOver_ = result.end == SaveEnd::kCancelled;
  result.why = {};  // The wizard's boxes have their words alone.
  for (const SaveMessage& message : MessagesOf(result)) {
    // Of a disc that cannot be written the wizard itself tells.
    if (result.end == SaveEnd::kNotWritten) continue;
    message.isOnChoice ? view_.ShowMessage(message.text)
                       : view_.ShowApplicationMessage(message.text);
    isOver_ = message.isOnChoice;
  }
}

bool CdCopy::GoOn() {
  isOver_ = !view_.GoOn();
  return !isOver_;
}
