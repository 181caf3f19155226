#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/operations.h"
#include "save/save_run.h"

using mdlFileProcessing::bytRecord;
using mdlFileProcessing::hSourceFile;
using mdlFileProcessing::lngBytesRead;
using platform::FileHandle;

namespace {

/// The file that is written before it takes the target's place. Deleted unless it has been moved.
class TemporaryFile {
 public:
  explicit TemporaryFile(platform::Platform& system)
      : system_(system), strTempFile_(system.names.MakeTemporary(system.programFolder, "WAV")) {
    if (strTempFile_.empty()) return;
    system.names.SetTemporary(strTempFile_, true);
    hTargetFile_ = system.files.Open(strTempFile_, platform::OpenMode::kWriteExisting);
  }
  ~TemporaryFile() {
    Close();
    if (!strTempFile_.empty()) RemoveOwnFile(system_.names, strTempFile_);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool IsOpen() const { return hTargetFile_ != FileHandle::kInvalid; }

  /// Writes the copy buffer, whole.
  bool WriteRecord() {
    std::uint32_t written = 0;
    const bool ok =
        system_.files.Write(hTargetFile_, bytRecord.data(), format::kBlockSize, written);
    lngBytesRead = static_cast<std::int32_t>(written);
    return ok && lngBytesRead == format::kBlockSize;
  }

  /// Closes the file and moves it onto the target.
  bool MoveTo(const std::string& targetPath) {
    if (!Close() || !system_.names.Move(strTempFile_, targetPath)) return false;
    strTempFile_.clear();
    // Backup tools leave out temporary files.
    system_.names.SetTemporary(targetPath, false);
    return true;
  }

 private:
  bool Close() {
    if (!IsOpen()) return true;
    const bool closed = system_.files.Close(hTargetFile_);
    hTargetFile_ = FileHandle::kInvalid;
    return closed;
  }

  platform::Platform& system_;
  std::string strTempFile_;
  FileHandle hTargetFile_ = FileHandle::kInvalid;
};

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

/// Reads block `block` (from 0) into the copy buffer. A block that the source does not hold whole
/// is told and leaves the rest of the buffer as it was.
bool ReadBlock(platform::Files& files, SaveProgress& progress, std::int32_t block) {
  if (!mdlFileProcessing::SeekBlock(files, block, 0)) return false;
  std::uint32_t read = 0;
  const bool ok = files.Read(hSourceFile, bytRecord.data(), format::kBlockSize, read);
  lngBytesRead = static_cast<std::int32_t>(read);
  if (ok && lngBytesRead != format::kBlockSize) progress.ShowMessage(save_text::kReadError);
  return ok;
}

SaveEnd CopyBlocks(platform::Files& files, SaveProgress& progress, TemporaryFile& temporary,
                   std::int32_t firstBlock, std::int32_t count) {
  bytRecord.Redimension(format::kBlockSize);
  for (std::int32_t i = 1; i <= count; ++i) {
    if (!progress.StillSaving()) return kSaveCancelled;
    if (!ReadBlock(files, progress, firstBlock - 1 + i - 1))
      return SaveFailed(save_text::kReadError);
    if (!temporary.WriteRecord()) return SaveFailed(save_text::kWriteError);
    progress.ShowBlocksDone(i, count);
    progress.LetMessagesRun();
  }
  return kSaveDone;
}

SaveEnd RunBlockRangeSave(platform::Platform& system, SaveProgress& progress,
                          const std::string& sourcePath, const std::string& targetPath,
                          std::int32_t firstBlock, std::int32_t lastBlock) {
  if (!HasBlocks(firstBlock, lastBlock)) return SaveFailed(save_text::kReadError);
  const SourceFile source(system.files, sourcePath);
  if (!source.IsOpen()) return SaveFailed(save_text::kReadError);
  mdlFileProcessing::lngBlockCount =
      mdlFileProcessing::BlocksInFile(mdlFileProcessing::FileSize64(system.files, hSourceFile));

  TemporaryFile temporary(system);
  if (!temporary.IsOpen() || !ClearTarget(system, progress, targetPath))
    return SaveFailed(save_text::kWriteError);
  const SaveEnd end =
      CopyBlocks(system.files, progress, temporary, firstBlock, lastBlock - firstBlock + 1);
  if (end.outcome != SaveOutcome::kSaved) return end;

  const Hourglass hourglass(progress);
  return temporary.MoveTo(targetPath) ? kSaveDone : SaveFailed(save_text::kWriteError);
}

}  // namespace

SaveOutcome SaveBlockRange(platform::Platform& system, SaveProgress& progress,
                           const std::string& sourcePath, const std::string& targetPath,
                           std::int32_t firstBlock, std::int32_t lastBlock) {
  return ShowSaveEnd(
      progress, RunBlockRangeSave(system, progress, sourcePath, targetPath, firstBlock, lastBlock));
}
