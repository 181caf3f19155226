#include "save/save_run.h"

#include "capture/mdlFileProcessing.h"
#include "save/last_file_part.h"

using mdlFileProcessing::hSourceFile;
using platform::FileHandle;

SaveOutcome ShowSaveEnd(SaveProgress& progress, const SaveEnd& end) {
  if (end.message) progress.ShowMessage(end.message);
  switch (end.outcome) {
    case SaveOutcome::kSaved:
      progress.ShowFinished();
      break;
    case SaveOutcome::kCancelled:
      progress.LetMessagesRun();
      break;
    case SaveOutcome::kFailed:
      progress.ShowFailed();
      break;
  }
  return end.outcome;
}

bool HasBlocks(std::int32_t firstBlock, std::int32_t lastBlock) {
  return firstBlock >= 1 && firstBlock <= lastBlock;
}

namespace {

bool IsSource(platform::Files& files, const std::string& path) {
  const FileHandle file = files.Open(path, platform::OpenMode::kReadExisting);
  if (file == FileHandle::kInvalid) return false;
  const auto identity = files.Identity(file);
  const bool same = identity.has_value() && identity == files.Identity(hSourceFile);
  files.Close(file);
  return same;
}

/// Whether a file can have this path: its folder is there, and no folder has its name.
bool CanBeFile(platform::Drives& drives, const std::string& path) {
  const std::string folder = path.substr(0, path.size() - LastFilePart(path).size());
  return (folder.empty() || drives.HasFolder(folder)) && !drives.HasFolder(path);
}

}  // namespace

bool ClearTarget(platform::Platform& system, SaveProgress& progress,
                 const std::string& targetPath) {
  // The move at the end would tell that too, but after hours perhaps.
  if (!CanBeFile(system.drives, targetPath)) return false;
  // Windows refuses by itself to delete a file that is open without delete sharing, but not every
  // network volume does, nor does POSIX.
  if (IsSource(system.files, targetPath)) return false;
  // What a search does not show, a hidden or system file, is nobody's old target: it is to stay.
  if (!system.names.Find(targetPath)) return !system.drives.HasFile(targetPath);
  const bool removed = system.names.Remove(targetPath);
  progress.LetMessagesRun();
  return removed;
}

void RemoveOwnFile(platform::FileNames& names, const std::string& path) {
  // A virus scanner may have the new file open for a moment.
  if (!names.Remove(path)) names.Remove(path);
}
