#include "cdwizard/cd_copy.h"

#include <algorithm>
#include <exception>
#include <optional>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/camera_index.h"
#include "save/last_file_part.h"
#include "save/operations.h"
#include "save/save_run.h"
#include "save/save_state.h"

using mdlFileProcessing::bytRecord;

namespace {

constexpr std::int64_t kMegabyte = 1048576;
constexpr std::int64_t kClusterBytes = 1024;
constexpr std::int64_t kMostBytes = 2147483647;
constexpr std::int32_t kPlayerPercent = 16;
constexpr std::int32_t kClosingPercent = 3;
// The first player files go to the disc's root, the others into the player's folder.
constexpr int kPlayerFilesInRoot = 3;

std::int64_t RoundedUp(std::int64_t bytes, std::int64_t unit) {
  return (bytes + unit - 1) / unit * unit;
}

bool IsAbsolute(const std::string& path) {
  return path.starts_with("\\\\") || path.find(":\\") == 1;
}

// The comparison regards letter case: a name that ends in ".60d" gets ".60D" behind it.
std::string WithEnding(const std::string& fileName, bool is20D) {
  const std::string ending = is20D ? ".20D" : ".60D";
  return fileName.ends_with(ending) ? fileName : fileName + ending;
}

// Where each of these player files lands on a disc.
std::vector<std::string> PlayerFilesOn(const Disc& disc, const std::vector<std::string>& paths) {
  std::vector<std::string> onDisc;
  for (const std::string& path : paths) {
    const bool inRoot = onDisc.size() < kPlayerFilesInRoot;
    onDisc.push_back((inRoot ? disc.drive() : disc.PlayerFolder()) + "\\" + LastFilePart(path));
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

/// Shows a chosen-camera save on the wizard's page. Nothing but the session's end stops it there,
/// and what comes after it is the wizard's own business.
class CameraProgress : public SaveProgress {
 public:
  CameraProgress(CopyView& view, std::int32_t base) : view_(view), base_(base) {}

  void ShowBlocksDone(std::int32_t done, std::int32_t total) override {
    view_.ShowPercent(std::max(Percent(done, total, base_) - kClosingPercent, 0.0));
  }
  // Of a disc that cannot be written the wizard itself tells after a copy that failed.
  void ShowMessage(const std::string& text) override {
    if (text != save_text::kWriteError) view_.ShowApplicationMessage(text);
    if (text == save_text::kNoImages) goesOn_ = false;
  }
  void ShowHourglass(bool) override {}
  void ShowFinished() override { view_.ShowPercent(100); }
  void ShowFailed() override {}
  void LetMessagesRun() override { goesOn_ = view_.LetMessagesRun(); }
  /// False once the session ends, or when there is nothing to save.
  bool StillSaving() override { return goesOn_; }

 private:
  CopyView& view_;
  std::int32_t base_;
  bool goesOn_ = true;
};

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
  return IsAbsolute(strPlayerRoot) && fso.HasFile(path);
}

std::int32_t CdCopy::PlayerBytes(const std::string& path) {
  const auto bytes = std::min<std::uint64_t>(fso.FileBytes(path).value_or(0), kMostBytes);
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
  return isCopied ? CopyEnd::kCopied : isOver_ ? CopyEnd::kOver : CopyEnd::kNotReady;
}

// The source stays open while the disc is cleared: Windows deletes no file that is open.
bool CdCopy::CopyAll(Job& job) {
  std::optional<SourceFile> source(std::in_place, system_.files, mainWindow_.SourcePath());
  if (!source->IsOpen() || !HasBlocks(mainWindow_.FirstBlock(), mainWindow_.LastBlock()))
    return false;
  if (!SparesSources(job)) return false;
  if (job.withPlayer && !ClearDisc(job.disc)) return false;
  view_.ShowProgress();
  if (!GoesOn()) return false;
  if (job.withPlayer && !CopyPlayerFiles(job.disc)) return false;
  if (!mdlSave::blnSomeCameras) return CopyBlocks(job.targetPath);
  source.reset();  // The camera index and the save open it themselves.
  return SendDataToClassCD(mainWindow_.SourcePath(), job.targetPath, mainWindow_.FirstBlock(),
                           mainWindow_.LastBlock());
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
  return disc.Clear() && GoesOn() && fso.MakeFolder(disc.PlayerFolder());
}

bool CdCopy::CopyPlayerFiles(const Disc& disc) {
  const std::vector<std::string> targets = PlayerFilesOn(disc, strPlayerFiles);
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (!CopyWholeFile(system_.files, system_.names, strPlayerFiles[i], targets[i])) return false;
    view_.ShowPercent(PlayerPercent(static_cast<int>(i)));
    if (!GoesOn()) return false;
  }
  intProgressBase = kPlayerPercent;
  return true;
}

bool CdCopy::CopyBlocks(const std::string& targetPath) {
  WholeFile target(system_.files, system_.names, targetPath);
  if (!target.IsOpen()) return false;
  const std::int32_t first = mainWindow_.FirstBlock();
  const std::int32_t blocks = mainWindow_.LastBlock() - first + 1;
  if (!mdlFileProcessing::SeekBlock(system_.files, first - 1, 0)) return false;
  bytRecord.Redimension(format::kBlockSize);
  for (std::int32_t i = 1; i <= blocks; ++i) {
    if (!CopyBlock(target)) return false;
    view_.ShowPercent(Percent(i, blocks, intProgressBase));
    if (!GoesOn()) return false;
  }
  return target.Finish();
}

// A block that the source does not hold whole is told and written all the same.
bool CdCopy::CopyBlock(WholeFile& target) {
  std::uint32_t lngBytesDone = 0;
  const bool isRead = system_.files.Read(mdlFileProcessing::hSourceFile, bytRecord.data(),
                                         format::kBlockSize, lngBytesDone);
  if (lngBytesDone != format::kBlockSize) view_.ShowApplicationMessage(save_text::kReadError);
  return isRead && target.Write(bytRecord.data(), format::kBlockSize);
}

bool CdCopy::SendDataToClassCD(const std::string& Filename, const std::string& TargetFilename,
                               std::int32_t SPoint, std::int32_t EPoint) {
  CameraProgress progress(view_, intProgressBase);
  // What keeps the pass from its end is told by the save.
  IndexBlockRange(system_.files, Filename, SPoint, EPoint);
  const SaveOutcome outcome =
      SaveChosenCameras(system_, progress, Filename, TargetFilename, SPoint, EPoint);
  isOver_ = !progress.StillSaving();
  return outcome == SaveOutcome::kSaved;
}

bool CdCopy::GoesOn() {
  isOver_ = !view_.LetMessagesRun();
  return !isOver_;
}
