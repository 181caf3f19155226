#include "save/target.h"

#include "platform/paths.h"

using platform::FileHandle;

namespace {

bool IsSource(platform::Files& files, const SourceFile& source, const std::string& path) {
  const FileHandle file = files.Open(path, platform::OpenMode::kReadExisting);
  if (file == FileHandle::kInvalid) return false;
  const auto identity = files.Identity(file);
  const bool same = identity.has_value() && identity == source.Identity();
  files.Close(file);
  return same;
}

/// Whether a file can have this path: its folder is there, and no folder has its name.
bool CanBeFile(platform::Drives& drives, const std::string& path) {
  const std::string folder = path.substr(0, path.size() - platform::LastFilePart(path).size());
  return (folder.empty() || drives.HasFolder(folder)) && !drives.HasFolder(path);
}

}  // namespace

bool MayTakePlace(platform::Core& system, const SourceFile& source, const std::string& targetPath) {
  // What a search does not show, a hidden or system file, is nobody's old target: it is to stay.
  const bool isUnseen = system.fso.HasFile(targetPath) && !system.names.Find(targetPath);
  // Windows refuses by itself to delete a file that is open without delete sharing, but not every
  // network volume does, nor does POSIX.
  return CanBeFile(system.fso, targetPath) && !isUnseen &&
         !IsSource(system.files, source, targetPath);
}

bool ClearTarget(platform::Core& system, const SourceFile& source, const std::string& targetPath) {
  if (!MayTakePlace(system, source, targetPath)) return false;
  if (!system.names.Find(targetPath)) return true;
  return system.names.Remove(targetPath);
}

SaveResult EndOfWriting(const NewFile& file) {
  switch (file.WhyStopped()) {
    case NewFile::Stop::kNone:
      return {.end = SaveEnd::kSaved, .bytes = file.size()};
    case NewFile::Stop::kCancelled:
      return {.end = SaveEnd::kCancelled};
    case NewFile::Stop::kTooLarge:
      return {.end = SaveEnd::kTooLarge};
    case NewFile::Stop::kNotNamed:
      return {.end = SaveEnd::kNotNamed, .detail = file.WholeCopy()};
    case NewFile::Stop::kNotWritten:
      break;
  }
  return {.end = SaveEnd::kNotWritten};
}
