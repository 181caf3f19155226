#include "storage/new_file.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "platform/paths.h"
#include "platform/scoped_flag.h"

using platform::FileHandle;
using platform::FolderOf;
using platform::OpenMode;

namespace {

constexpr char kTemporaryPrefix[] = "WAV";
/// How long a file that has something else reading it is tried to be renamed, and how often.
constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::milliseconds kPause{50};

bool someWaitsForName = false;

std::vector<NewFile*>& Unfinished() {
  static std::vector<NewFile*> files;
  return files;
}

}  // namespace

NewFile::NewFile(platform::Core& system, Place place, GoOn goOn)
    : system_(system), place_(place), goOn_(std::move(goOn)) {
  Unfinished().push_back(this);
}

NewFile::~NewFile() {
  Discard();
  std::erase(Unfinished(), this);
}

void NewFile::RemoveUnfinished() {
  for (NewFile* file : Unfinished()) file->Discard();
}

bool NewFile::Create(const std::string& target) {
  target_ = target;
  if (place_ == Place::kTemporary) return CreateTemporary();
  hTargetFile = system_.files.Open(target, OpenMode::kWriteNew);
  if (!IsOpen()) return false;
  strTempFile = target;
  // A device takes every byte and keeps none.
  return system_.files.Identity(hTargetFile).has_value();
}

bool NewFile::CreateTemporary() {
  const std::string folder = FolderOf(target_);
  return (system_.names.OnSameVolume(system_.programFolder, folder) &&
          OpenTemporary(system_.programFolder)) ||
         OpenTemporary(folder);
}

bool NewFile::OpenTemporary(const std::string& folder) {
  strTempFile = system_.names.MakeTemporary(folder, kTemporaryPrefix);
  if (strTempFile.empty()) return false;
  system_.names.SetTemporary(strTempFile, true);
  hTargetFile = system_.files.Open(strTempFile, OpenMode::kWriteExisting);
  if (!IsOpen()) Discard();
  return IsOpen();
}

bool NewFile::WriteAt(std::int64_t position, const void* bytes, std::uint32_t count) {
  // Without its place a write would destroy what was written before.
  const bool placed =
      IsOpen() && (position == position_ || system_.files.Seek(hTargetFile, position));
  position_ = position;
  const auto end = static_cast<std::uint64_t>(position) + count;
  const auto* from = static_cast<const std::uint8_t*>(bytes);
  if (!placed) Stopped(Stop::kNotWritten);
  while (stop_ == Stop::kNone && count > 0) {
    const std::uint32_t piece = pace_.Piece(count);
    if (!WritePiece(from, piece)) break;
    from += piece;
    count -= piece;
  }
  if (stop_ == Stop::kNotWritten && end > system_.names.LargestFile(FolderOf(target_)))
    stop_ = Stop::kTooLarge;
  size_ = std::max(size_, position_);
  return stop_ == Stop::kNone;
}

bool NewFile::Stopped(Stop why) {
  if (stop_ == Stop::kNone) stop_ = why;
  return false;
}

bool NewFile::WritePiece(const std::uint8_t* bytes, std::uint32_t count) {
  std::uint32_t written = 0;
  if (!system_.files.Write(hTargetFile, bytes, count, written) || written != count)
    return Stopped(Stop::kNotWritten);
  position_ += count;
  if (!pace_.Wrote(count)) return true;
  if (!AwaitFlush()) return false;
  BeginFlush();
  return !pace_.IsSlow() || AwaitFlush();
}

void NewFile::BeginFlush() {
  flushBegun_ = system_.clock.Now();
  flush_ = system_.files.Flush(hTargetFile);
}

/// Lets messages run until the flush that was begun last has ended. False when it has failed or the
/// file is not wanted any more.
bool NewFile::AwaitFlush() {
  constexpr std::chrono::milliseconds kBetweenMessages{10};
  do {
    if (!goOn_() || !IsOpen()) return Stopped(Stop::kCancelled);
  } while (flush_.valid() && flush_.wait_for(kBetweenMessages) == std::future_status::timeout);
  if (!flush_.valid()) return true;
  pace_.Flushed(system_.clock.Now() - flushBegun_);
  return flush_.get() || Stopped(Stop::kNotWritten);
}

bool NewFile::Finish() {
  if (!IsOpen() || stop_ != Stop::kNone) return Stopped(Stop::kNotWritten);
  if (!AwaitFlush()) return false;
  BeginFlush();
  if (!AwaitFlush()) return false;
  if (place_ == Place::kTemporary) {
    // Backup tools leave out temporary files.
    system_.names.SetTemporary(strTempFile, false);
    if (!TakeName()) return false;
  }
  // What is on the medium stays, whatever its close answers.
  const bool closed = Close();
  if (place_ == Place::kOwnName && !closed) return Stopped(Stop::kNotWritten);
  strTempFile.clear();
  return true;
}

/// The file stays open meanwhile, with the right to rename it: so nothing that denies this can open
/// it any more, and what had opened it before will let it go.
bool NewFile::TakeName() {
  std::optional<ScopedFlag> waiting;
  const auto begun = system_.clock.Now();
  while (!system_.files.Rename(hTargetFile, strTempFile, target_)) {
    if (system_.clock.Now() - begun >= kPatience) {
      Close();
      wholeCopy_ = std::exchange(strTempFile, {});
      return Stopped(Stop::kNotNamed);
    }
    if (!waiting) waiting.emplace(someWaitsForName);
    system_.clock.Sleep(kPause);
    if (!goOn_() || !IsOpen()) return Stopped(Stop::kCancelled);
  }
  // Renamed, it would keep the permissions of the program's folder.
  if (FolderOf(strTempFile) != FolderOf(target_)) system_.names.InheritPermissions(target_);
  return true;
}

bool NewFile::WaitsForName() {
  return someWaitsForName;
}

bool NewFile::Close() {
  if (!IsOpen()) return true;
  if (flush_.valid()) flush_.wait();
  flush_ = {};
  return system_.files.Close(std::exchange(hTargetFile, FileHandle::kInvalid));
}

void NewFile::Discard() {
  Close();
  if (strTempFile.empty()) return;
  // A virus scanner may have the new file open for a moment.
  const std::string path = std::exchange(strTempFile, {});
  if (!system_.names.Remove(path)) system_.names.Remove(path);
}
