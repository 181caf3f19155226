#pragma once

#include <string>

namespace platform {

/// Why a call has failed, as far as its user can do something about it.
struct Failure {
  enum class Kind {
    kUnknown,
    kDiskFull,
    kDiskProtected,  ///< Nothing can be written on the disk.
    kFileProtected,  ///< The file may not be written.
    kInUse,          ///< Another program has the file open and does not share it.
    kMissing,        ///< The file, or its folder, is not there.
    kTaken,          ///< A file has this name already.
    kUnseen,         ///< The file is hidden, or one of the system's.
    kFolder,         ///< A folder has this name.
    kChanged,        ///< The file is not what it was before.
    kIsSource,       ///< The file is the one that is read, under whatever name.
    kNoAnswer,       ///< The disk does not answer.
    kOther,          ///< What `text` says.
  };

  Kind kind = Kind::kUnknown;
  std::string text = {};  ///< The system's own words.
};

}  // namespace platform
