#pragma once

#include <cstdint>
#include <string>

#include "capture/format.h"
#include "platform/platform.h"
#include "save/save_progress.h"
#include "storage/new_file.h"

/// The operations that write the chosen part of a recording into a new capture file.

/// What is to be saved, and how.
struct SaveJob {
  enum class Mode {
    kWholeBlocks,    ///< All cameras: the blocks are copied as they are.
    kChosenCameras,  ///< Those of `cameras`: the file is rebuilt from images.
  };

  std::string sourcePath;
  std::string targetPath;
  std::int32_t firstBlock = 0;  ///< From 1, like the last; both are saved.
  std::int32_t lastBlock = 0;
  Mode mode = Mode::kWholeBlocks;
  std::uint32_t cameras = 0;  ///< Bit i is camera i + 1; none above 16 is ever saved.
  NewFile::Place place = NewFile::Place::kTemporary;
  NewFile::IfTaken ifTaken = NewFile::IfTaken::kReplaceOld;

  /// Whether the images of a camera (from 0) are to be kept.
  bool IsChosen(int camera) const {
    return camera < format::kCameras && (cameras >> camera & 1U) != 0;
  }
  bool HasBlocks() const { return firstBlock >= 1 && firstBlock <= lastBlock; }
  std::int32_t BlockCount() const { return lastBlock - firstBlock + 1; }
};

/// How a save has ended. Anything but `kSaved` leaves what was under the target's name before; only
/// when the disk has failed in the very last step (`kNotWritten`) may the whole new file be there.
enum class SaveEnd {
  kSaved,
  kCancelled,
  kNotRead,     ///< The source could not be read.
  kNotWritten,  ///< The target could not be written.
  kTooLarge,    ///< The target's disk holds no file of this size.
  kNoSpace,     ///< It has too little room left, which was seen before anything was written.
  kNotNamed,    ///< The new file is whole but could not get the target's name; it is kept.
  kTaken,       ///< There is a file of the target's name, which was not to be replaced.
  kNotValid,    ///< The source is no recording.
  kNoImages,    ///< The chosen cameras have no image that can be kept.
  kFault,       ///< Something that no one foresaw.
};

/// What a save answers.
struct SaveResult {
  SaveEnd end = SaveEnd::kSaved;
  std::string detail = {};      ///< `kNotNamed`: path of the whole copy; `kFault`: what it was.
  platform::Failure why = {};   ///< `kNotRead`, `kNotWritten`: the reason, as far as it is known.
  std::int64_t bytes = 0;       ///< Size of the new file.
  std::int64_t images = 0;      ///< Images that were kept, where cameras were chosen.
  std::int64_t lostImages = 0;  ///< Images of chosen cameras that could not be kept.
  std::int64_t lostBlocks = 0;  ///< Blocks whose lists could not be read.
};

/// Runs a job to its end, whatever happens. The file is on the medium when this answers `kSaved`.
SaveResult RunSave(platform::Core& system, SaveProgress& progress, const SaveJob& job);

/// Copies whole blocks, unchanged.
SaveResult SaveBlockRange(platform::Core& system, SaveProgress& progress, const SaveJob& job);

/// Rebuilds a capture file from the images of the chosen cameras.
SaveResult SaveChosenCameras(platform::Core& system, SaveProgress& progress, const SaveJob& job);
