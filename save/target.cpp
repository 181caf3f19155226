#include "save/target.h"

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

SaveEnd EndAt(NewFile::Stop stop) {
  switch (stop) {
    case NewFile::Stop::kNone:
      return SaveEnd::kSaved;
    case NewFile::Stop::kCancelled:
      return SaveEnd::kCancelled;
    case NewFile::Stop::kTooLarge:
      return SaveEnd::kTooLarge;
    case NewFile::Stop::kNotNamed:
      return SaveEnd::kNotNamed;
    case NewFile::Stop::kTaken:
      return SaveEnd::kTaken;
    case NewFile::Stop::kNotWritten:
      break;
  }
  return SaveEnd::kNotWritten;
}

}  // namespace

SaveResult AskForTarget(platform::Core& system, const SourceFile& source, const SaveJob& job,
                        NewFile& file) {
  // Not every system refuses by itself to replace a file that is open.
  if (IsSource(system.files, source, job.targetPath))
    return {.end = SaveEnd::kNotWritten, .why = {platform::Failure::Kind::kIsSource}};
  file.AskFor(job.targetPath);
  return EndOfWriting(file);
}

SaveEnd RoomForNew(platform::Core& system, const SaveJob& job, std::int64_t bytes) {
  const std::string folder = system.names.FolderOf(job.targetPath);
  const auto size = static_cast<std::uint64_t>(bytes);
  if (size > system.names.LargestFile(folder)) return SaveEnd::kTooLarge;
  if (job.place == NewFile::Place::kOwnName) return SaveEnd::kSaved;
  const std::uint64_t free = system.names.FreeBytes(folder);
  return free != 0 && size > free ? SaveEnd::kNoSpace : SaveEnd::kSaved;
}

SaveResult EndOfWriting(const NewFile& file) {
  return {.end = EndAt(file.WhyStopped()),
          .detail = file.WholeCopy(),
          .why = file.Reason(),
          .bytes = file.size()};
}

SaveResult EndOfReading(const SourceFile& source) {
  return {.end = SaveEnd::kNotRead, .why = source.Reason()};
}
