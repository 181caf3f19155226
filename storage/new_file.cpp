#include "storage/new_file.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>
#include <vector>

#include "platform/scoped_flag.h"

using platform::FileHandle;
using platform::OpenMode;

namespace {

constexpr char kTemporaryPrefix[] = "WAV";
/// How long a file that has something else reading it is tried to be replaced, and how often. That
/// it is in use at first may be a glance of another's at the same name.
constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::seconds kMoment{1};
constexpr std::chrono::milliseconds kPause{50};
/// How often messages run while a flush is awaited.
constexpr std::chrono::milliseconds kBetweenMessages{10};

std::atomic<bool> someWaitsForName = false;

std::vector<NewFile*>& Unfinished() {
  static std::vector<NewFile*> files;
  return files;
}

}  // namespace

NewFile::NewFile(platform::Core& system, Place place, GoOn goOn, IfTaken ifTaken)
    : system_(system), place_(place), goOn_(std::move(goOn)), ifTaken_(ifTaken) {
  Unfinished().push_back(this);
}

NewFile::~NewFile() {
  Discard();
  std::erase(Unfinished(), this);
}

void NewFile::RemoveUnfinished() {
  for (NewFile* file : Unfinished()) file->Discard();
}

bool NewFile::AskFor(const std::string& target) {
  target_ = target;
  platform::Standing standing;
  DoneWithin(kMoment, [&] {
    standing = system_.names.LookAt(target);
    if (standing.isTaken && ifTaken_ == IfTaken::kRefuse) return Stopped(Stop::kTaken);
    return !standing.hindrance || standing.hindrance->kind != platform::Failure::Kind::kInUse;
  });
  if (standing.hindrance) Stopped(Stop::kNotWritten, *standing.hindrance);
  const bool replaces = standing.isTaken || ifTaken_ == IfTaken::kReplace;
  onto_ = replaces ? platform::IfTaken::kReplace : platform::IfTaken::kRefuse;
  return stop_ == Stop::kNone;
}

bool NewFile::DoneWithin(std::chrono::seconds patience, const std::function<bool()>& done) {
  std::optional<ScopedFlag<std::atomic<bool>>> waiting;
  const auto begun = system_.clock.Now();
  while (!done()) {
    if (stop_ != Stop::kNone || system_.clock.Now() - begun >= patience) return false;
    if (!waiting) waiting.emplace(someWaitsForName);
    system_.clock.Sleep(kPause);
    if (!goOn_()) return Stopped(Stop::kCancelled);
  }
  return true;
}

bool NewFile::Create(const std::string& target) {
  if (target_.empty() && !AskFor(target)) return false;
  if (place_ == Place::kTemporary) return CreateTemporary();
  hTargetFile = system_.files.Open(target, OpenMode::kWriteNew);
  if (!IsOpen()) return Stopped(Stop::kNotWritten, system_.files.LastFailure());
  strTempFile = target;
  // A device takes every byte and keeps none.
  return system_.files.Identity(hTargetFile).has_value() || Stopped(Stop::kNotWritten);
}

bool NewFile::CreateTemporary() {
  const std::string folder = system_.names.FolderOf(target_);
  // Where no file can be made the finished one could not get its name: known before the long copy.
  if (!OpenTemporary(folder)) return Stopped(Stop::kNotWritten, system_.files.LastFailure());
  if (!system_.names.OnSameVolume(system_.programFolder, folder)) return true;
  Discard();
  return OpenTemporary(system_.programFolder) || OpenTemporary(folder) ||
         Stopped(Stop::kNotWritten, system_.files.LastFailure());
}

bool NewFile::OpenTemporary(const std::string& folder) {
  const platform::TemporaryFile made = system_.files.MakeTemporary(folder, kTemporaryPrefix);
  hTargetFile = made.file;
  strTempFile = made.path;
  return IsOpen();
}

bool NewFile::WriteAt(std::int64_t position, const void* bytes, std::uint32_t count) {
  // Without its place a write would destroy what was written before.
  const bool placed =
      IsOpen() && (position == position_ || system_.files.Seek(hTargetFile, position));
  position_ = position;
  const auto end = static_cast<std::uint64_t>(position) + count;
  const auto* from = static_cast<const std::uint8_t*>(bytes);
  if (!placed) Stopped(Stop::kNotWritten, system_.files.LastFailure());
  while (stop_ == Stop::kNone && count > 0) {
    const std::uint32_t piece = pace_.Piece(count);
    if (!WritePiece(from, piece)) break;
    from += piece;
    count -= piece;
  }
  if (stop_ == Stop::kNotWritten &&
      end > system_.names.LargestFile(system_.names.FolderOf(target_)))
    stop_ = Stop::kTooLarge;
  size_ = std::max(size_, position_);
  return stop_ == Stop::kNone;
}

bool NewFile::Stopped(Stop why, const platform::Failure& reason) {
  if (stop_ == Stop::kNone) {
    stop_ = why;
    reason_ = reason;
  }
  return false;
}

bool NewFile::WritePiece(const std::uint8_t* bytes, std::uint32_t count) {
  std::uint32_t written = 0;
  if (!system_.files.Write(hTargetFile, bytes, count, written))
    return Stopped(Stop::kNotWritten, system_.files.LastFailure());
  if (written != count) return Stopped(Stop::kNotWritten, {platform::Failure::Kind::kDiskFull});
  position_ += count;
  if (!pace_.Wrote(count)) return true;
  if (!AwaitFlush()) return false;
  BeginFlush();
  return !pace_.IsSlow() || AwaitFlush();
}

void NewFile::BeginFlush() {
  flush_ = system_.files.Flush(hTargetFile);
}

/// Lets messages run until the flush that was begun last has ended. False when it has failed or the
/// file is not wanted any more.
bool NewFile::AwaitFlush() {
  do {
    if (!goOn_() || !IsOpen()) return Stopped(Stop::kCancelled);
  } while (flush_.valid() && flush_.wait_for(kBetweenMessages) == std::future_status::timeout);
  if (!flush_.valid()) return true;
  const platform::Flushed flushed = flush_.get();
  pace_.Flushed(flushed.took);
  return flushed.done || Stopped(Stop::kNotWritten, flushed.why);
}

bool NewFile::Finish() {
  if (!IsOpen() || stop_ != Stop::kNone) return Stopped(Stop::kNotWritten);
  if (!AwaitFlush()) return false;
  BeginFlush();
  if (!AwaitFlush()) return false;
  if (place_ == Place::kTemporary) return TakeName() && KeepName();
  if (!Close()) return Stopped(Stop::kNotWritten, system_.files.LastFailure());
  strTempFile.clear();
  return true;
}

/// The file stays open meanwhile, with the right to rename it: so nothing that denies this can open
/// it any more, and what had opened it before will let it go.
bool NewFile::TakeName() {
  if (!system_.files.Keep(hTargetFile, strTempFile))
    return Stopped(Stop::kNotWritten, system_.files.LastFailure());
  if (DoneWithin(kPatience, [this] { return Renamed(); })) return true;
  if (stop_ != Stop::kNone) return false;
  BeginFlush();  // The name that it has.
  Close();
  wholeCopy_ = std::exchange(strTempFile, {});
  return Stopped(Stop::kNotNamed);
}

bool NewFile::WaitsForName() {
  return someWaitsForName;
}

bool NewFile::Renamed() {
  // The session ends, and has closed it.
  if (!IsOpen()) return Stopped(Stop::kCancelled);
  if (system_.files.Rename(hTargetFile, strTempFile, target_, onto_)) return true;
  const bool isTaken = ifTaken_ == IfTaken::kRefuse && system_.names.LookAt(target_).isTaken;
  return isTaken && Stopped(Stop::kTaken);
}

/// Hands the name to the medium; whatever comes of that, and whoever cancels, the file stays.
bool NewFile::KeepName() {
  const bool hasMoved =
      system_.names.FolderOf(std::exchange(strTempFile, {})) != system_.names.FolderOf(target_);
  // Renamed, it would keep the permissions of the program's folder.
  if (hasMoved) system_.names.InheritPermissions(target_);
  BeginFlush();
  while (flush_.valid() && flush_.wait_for(kBetweenMessages) == std::future_status::timeout)
    goOn_();
  // The session ends, and has closed it.
  if (!flush_.valid()) return Stopped(Stop::kCancelled);
  const platform::Flushed flushed = flush_.get();
  Close();  // What is on the medium stays, whatever this answers.
  return flushed.done || Stopped(Stop::kNotWritten, flushed.why);
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
  // It may be gone already. Otherwise a virus scanner may have it open for a moment.
  const std::string path = std::exchange(strTempFile, {});
  if (!system_.names.Remove(path)) system_.names.Remove(path);
}
