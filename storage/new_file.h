#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <string>

#include "platform/platform.h"
#include "storage/flush_pace.h"
#include "storage/pacer.h"

/// A file that is being made. It stays only when it is whole and on the medium: until `Finish` has
/// succeeded the destructor removes it.
class NewFile {
 public:
  /// Where the file lies until it is whole.
  enum class Place {
    /// Under a temporary name on the target's volume, so that under the target's name there is at
    /// any moment a whole file or none: in the program's folder where that will do, otherwise in
    /// the target's.
    kTemporary,
    /// Under its own name, for discs on which a file cannot be renamed.
    kOwnName,
  };
  /// What becomes of a file that has the wanted name.
  enum class IfTaken {
    kReplace,     ///< It goes, even if it has come there only while this one was made.
    kReplaceOld,  ///< It goes if it was there when its name was asked for; nobody knew of another.
    kRefuse,
  };
  /// Why a file does not come to be.
  enum class Stop {
    kNone,
    kCancelled,  ///< What was asked whether to go on has said no.
    kNotWritten,
    kTooLarge,  ///< Its disk holds no file of this size.
    kNotNamed,  ///< It is whole and on the medium, but lies where `WholeCopy` tells.
    kTaken,     ///< Another file has the name, which is not to be replaced.
  };

  NewFile(platform::Core& system, Place place, GoOn goOn, IfTaken ifTaken = IfTaken::kReplaceOld);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Asks for the name `target`. False when there can be no new file, or when what has the name
  /// must not go; what others have open may be let go within a moment.
  bool AskFor(const std::string& target);
  /// Makes the file that is to have the name `target`, which is asked for unless it was before.
  /// False when that cannot be, or would be no file on a disk. Otherwise what has the name is cut
  /// to nothing with `kOwnName`, and stays until it is replaced with `kTemporary`.
  bool Create(const std::string& target);
  bool IsOpen() const { return hTargetFile != platform::FileHandle::kInvalid; }
  /// Writes at `position` bytes from the start. What is written is handed to the medium as the file
  /// grows, and messages run while a slow one is waited for. False when not all was written: the
  /// file cannot be finished any more.
  bool WriteAt(std::int64_t position, const void* bytes, std::uint32_t count);
  /// Writes behind all that was written so far.
  bool Append(const void* bytes, std::uint32_t count) { return WriteAt(size_, bytes, count); }
  /// Size in bytes.
  std::int64_t size() const { return size_; }
  /// What has stopped it; once that is something, it is written and finished no further.
  Stop WhyStopped() const { return stop_; }
  /// The system's reason for that, as far as it has told one.
  const platform::Failure& Reason() const { return reason_; }

  /// Hands the file to the medium, gives it its name in one step, and hands that to the medium,
  /// too. From that step on nothing removes it, not even a failure of what is left. False when it
  /// is not whole, or got no name though that was tried for ten seconds (something else has the old
  /// file open, or has taken the name meanwhile): then the whole copy stays where `WholeCopy`
  /// tells.
  bool Finish();
  /// Path of a file that is whole and on the medium, but has not got its name; otherwise empty.
  const std::string& WholeCopy() const { return wholeCopy_; }

  /// Whether a whole file waits for its name, which something else uses. Any thread may ask.
  static bool WaitsForName();
  /// Closes and removes every file that is being made, at once: the program is about to be ended.
  static void RemoveUnfinished();

 private:
  /// Whether something is done within some time; meanwhile messages run. What stops the file ends
  /// the trying as well.
  bool DoneWithin(std::chrono::seconds patience, const std::function<bool()>& done);
  bool CreateTemporary();
  bool OpenTemporary(const std::string& folder);
  /// Takes down what has stopped the file, unless something has before; false.
  bool Stopped(Stop why, const platform::Failure& reason = {});
  bool WritePiece(const std::uint8_t* bytes, std::uint32_t count);
  void BeginFlush();
  bool AwaitFlush();
  bool TakeName();
  bool Renamed();
  bool KeepName();
  bool Close();
  void Discard();

  platform::Core& system_;
  Place place_;
  GoOn goOn_;
  IfTaken ifTaken_;
  platform::IfTaken onto_ = platform::IfTaken::kRefuse;  ///< In the step in which it is named.
  std::string target_;                                   ///< Empty until it is asked for.
  std::string
      strTempFile;  ///< Where the file lies until it has its name; empty when it is no more.
  platform::FileHandle hTargetFile = platform::FileHandle::kInvalid;
  std::future<platform::Flushed> flush_;  ///< That of what was written before the present slice.
  FlushPace pace_;
  std::int64_t position_ = 0;
  std::int64_t size_ = 0;
  Stop stop_ = Stop::kNone;
  platform::Failure reason_;
  std::string wholeCopy_;
};
