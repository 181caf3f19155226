#include <algorithm>

#include "capture/clsCreate60D.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "platform/paths.h"
#include "save/camera_index.h"
#include "save/image_extent.h"
#include "save/operations.h"
#include "save/save_state.h"
#include "save/stored_image.h"
#include "save/target.h"

using mdlFileProcessing::bytRecord;
using mdlFileProcessing::hSourceFile;

namespace {

/// Images that follow each other in a block are read together, up to so many bytes: enough to make
/// the calls cheap, and little enough that the writer finds them in the processor's cache.
constexpr std::int32_t kMostBytesAtOnce = 256 * 1024;

bool IsChosen(const IndexedImage& image) {
  return image.camera < format::kCameras && (mdlSave::lngCamSelLow >> image.camera & 1) != 0;
}

/// Whether the image is chosen and lies where images can.
bool MayBeKept(const format::BlockType& type, const IndexedImage& image) {
  return IsChosen(image) && ExtentOf(type, image).IsValid(type);
}

/// The least that the images which may be kept take in a new file: without what is left free in its
/// blocks.
std::uint64_t LeastBytes(const CameraIndex& index) {
  std::uint64_t bytes = 0;
  for (std::int32_t b = 1; b <= index.blocks.UpperBound(); ++b)
    for (const IndexedImage& image : index.blocks[b].images) {
      const format::BlockType& type = *index.blocks[b].type;
      const Extent extent = ExtentOf(type, image);
      if (MayBeKept(type, image)) bytes += static_cast<std::uint64_t>(extent.text - extent.begin);
    }
  return bytes;
}

/// Reads bytes `begin` to `end` of block `block` (from 0) into the buffer. False when the source
/// does not give all of them: an image must not be saved with other bytes than its own.
bool ReadPart(platform::Files& files, std::int32_t block, std::int32_t begin, std::int32_t end) {
  if (!mdlFileProcessing::SeekBlock(files, block, begin)) return false;
  std::uint32_t read = 0;
  const auto wanted = static_cast<std::uint32_t>(end - begin);
  const bool ok = files.Read(hSourceFile, bytRecord.data(), wanted, read);
  mdlFileProcessing::lngBytesRead = static_cast<std::int32_t>(read);
  return ok && read == wanted;
}

/// The rebuilding of one file.
class Rebuild {
 public:
  Rebuild(platform::Platform& system, SaveProgress& progress, const SaveJob& job)
      : system_(system),
        progress_(progress),
        job_(job),
        file_(system, job.place, MessagesOf(progress)),
        writer_(file_) {}

  SaveResult Run(const CameraIndex& index) {
    bytRecord.Redimension(format::kBlockSize);
    result_.end = AddBlocks(index.blocks);
    if (result_.end != SaveEnd::kSaved) return result_;
    if (!writer_.FileIsReady()) return Ended(SaveEnd::kNoImages);
    writer_.Close60dFile();
    return EndedWriting();
  }

 private:
  using ImageIterator = std::vector<IndexedImage>::const_iterator;

  SaveResult Ended(SaveEnd end) {
    result_.end = end;
    return result_;
  }
  /// The end of the writing so far, with what was lost.
  SaveResult EndedWriting() {
    const SaveResult written = EndOfWriting(progress_, file_, !writer_.HasFailed());
    result_.detail = written.detail;
    return Ended(written.end);
  }

  SaveEnd AddBlocks(const OneBased<IndexedBlock>& blocks) {
    const std::int32_t count = blocks.UpperBound();
    for (std::int32_t b = 1; b <= count; ++b) {
      if (!progress_.StillSaving()) return SaveEnd::kCancelled;
      const SaveEnd end = AddBlock(job_.firstBlock - 1 + b - 1, blocks[b]);
      if (end != SaveEnd::kSaved) return end;
      progress_.ShowBlocksDone(b, count);
      progress_.LetMessagesRun();
    }
    return SaveEnd::kSaved;
  }

  /// Adds the images of chosen cameras of block `number` (from 0).
  SaveEnd AddBlock(std::int32_t number, const IndexedBlock& block) {
    if (!block.type) ++result_.lostBlocks;
    for (auto image = block.images.cbegin(); image != block.images.cend();) {
      const auto end = EndOfRun(block, image);
      if (end != image) {
        const SaveEnd added = AddRun(number, block, image, end);
        if (added != SaveEnd::kSaved) return added;
        image = end;
        continue;
      }
      if (IsChosen(*image)) ++result_.lostImages;
      ++image;
    }
    return SaveEnd::kSaved;
  }

  /// The end of the images from `first` on that are chosen and lie where images can, and that can
  /// be read together.
  static ImageIterator EndOfRun(const IndexedBlock& block, ImageIterator first) {
    ImageIterator end = first;
    for (; end != block.images.cend() && MayBeKept(*block.type, *end); ++end) {
      const Extent extent = ExtentOf(*block.type, *end);
      if (end != first && extent.end - ExtentOf(*block.type, *first).begin > kMostBytesAtOnce)
        break;
    }
    return end;
  }

  SaveEnd AddRun(std::int32_t number, const IndexedBlock& block, ImageIterator image,
                 ImageIterator end) {
    const std::int32_t origin = ExtentOf(*block.type, *image).begin;
    if (!ReadPart(system_.files, number, origin, ExtentOf(*block.type, end[-1]).end))
      return SaveEnd::kNotRead;
    for (; image != end; ++image) {
      const StoredImage stored(block, *image, ExtentOf(*block.type, *image).From(origin));
      if (!writer_.CanHold(stored.AsNewImage())) {
        ++result_.lostImages;
        continue;
      }
      // There is something to write now: only now the old file goes.
      if (!writer_.FileIsReady() && !Begin()) return SaveEnd::kNotWritten;
      Add(stored.AsNewImage());
    }
    return EndedWriting().end;
  }

  bool Begin() {
    if (!ClearTarget(system_, progress_, job_.targetPath) ||
        !writer_.Create60DFile(job_.targetPath))
      return false;
    if (!blnSourceNotPAL) writer_.SetVideoStandardToPAL(true);
    return true;
  }

  void Add(const mdlCreate60DFile::NewImage& image) {
    writer_.AddDataTo60DFile(image.bytes, 0, image.size, static_cast<std::int16_t>(image.flags),
                             image.title, image.text, image.seconds, image.camera,
                             image.soundSectors, image.sound);
  }

  platform::Platform& system_;
  SaveProgress& progress_;
  const SaveJob& job_;
  NewFile file_;
  clsCreate60D writer_;
  SaveResult result_;
};

}  // namespace

SaveResult SaveChosenCameras(platform::Platform& system, SaveProgress& progress,
                             const SaveJob& job) {
  if (!mdlFileProcessing::SourceType()) return {.end = SaveEnd::kNotValid};
  if (!job.HasBlocks()) return {.end = SaveEnd::kNotRead};
  // Open from here to the end: Windows deletes no file that is open.
  const SourceFile source(system.files, job.sourcePath);
  if (!source.IsOpen()) return {.end = SaveEnd::kNotRead};
  if (!MayTakePlace(system, job.targetPath)) return {.end = SaveEnd::kNotWritten};
  const CameraIndex index =
      IndexBlockRange(system, progress, job.sourcePath, job.firstBlock, job.lastBlock);
  if (index.end != SaveEnd::kSaved) return {.end = index.end};
  if (LeastBytes(index) > system.names.LargestFile(platform::FolderOf(job.targetPath)))
    return {.end = SaveEnd::kTooLarge};
  return Rebuild(system, progress, job).Run(index);
}
