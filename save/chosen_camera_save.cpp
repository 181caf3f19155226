#include <algorithm>

#include "capture/clsCreate60D.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/camera_index.h"
#include "save/operations.h"
#include "save/save_run.h"
#include "save/save_state.h"

using mdlFileProcessing::bln20D;
using mdlFileProcessing::bytRecord;
using mdlFileProcessing::hSourceFile;
using mdlFileProcessing::ReadBigEndian;

namespace {

/// Images that follow each other in a block are read together, up to so many bytes: enough to make
/// the calls cheap, and little enough that the writer finds them in the processor's cache.
constexpr std::int32_t kMostBytesAtOnce = 256 * 1024;

/// Where an image lies, in bytes from some origin.
struct Extent {
  std::int32_t begin;  ///< The image's bytes, with the tail at their end.
  std::int32_t text;   ///< Its text; the end of the image's bytes.
  std::int32_t sound;
  std::int32_t end;

  Extent From(std::int32_t origin) const {
    return {begin - origin, text - origin, sound - origin, end - origin};
  }
};

/// Where an image lies in its block.
Extent ExtentOf(const IndexedImage& image) {
  const format::Variant& variant = format::VariantOf(bln20D);
  const auto byteOf = [&variant](std::int32_t sector) {
    return (sector - variant.trailerSectors) * format::kSectorSize;
  };
  const std::int32_t sound = image.endSector - image.soundSectors;
  return {byteOf(image.startSector), byteOf(sound - image.textSectors), byteOf(sound),
          byteOf(image.endSector)};
}

/// Whether this lies inside a block's data area and has room for an image.
bool IsValid(const Extent& extent) {
  return extent.begin >= 0 && extent.begin < extent.text &&
         extent.end <= format::VariantOf(bln20D).trailerOffset;
}

/// Index in `bytRecord` of a byte that was read.
constexpr int At(std::int32_t byte) {
  return byte + 1;
}

bool IsChosen(const IndexedImage& image) {
  return image.camera < format::kCameras && (mdlSave::lngCamSelLow >> image.camera & 1) != 0;
}

bool IsKept(const IndexedImage& image) {
  return IsChosen(image) && IsValid(ExtentOf(image));
}

/// Whether the last bytes before `end` are an image tail. The old block types have images without.
bool HasTail(const format::BlockType& type, std::int32_t end) {
  return type.alwaysHasTails ||
         ReadBigEndian(bytRecord, At(end - format::tail::kLength), 4) == format::tail::kMarker;
}

/// Number of bytes of an image that ends before its tail.
std::int32_t SizeBeforeTail(std::int32_t begin, std::int32_t tail) {
  // The writer adds a sector where an image leaves no room for its tail, and these bytes, padding
  // and all, would reach one byte too far for it.
  return tail - begin - (bytRecord[At(tail - 1)] == 0 ? 1 : 0);
}

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The title in an image's tail, else the one in its block's table, else one made from its camera.
std::string TitleOf(const IndexedImage& image, const CameraTitles* titles, std::int32_t tail,
                    bool hasTail) {
  std::string title;
  if (hasTail)
    title = Trimmed(mdlFileProcessing::ReadTitleField(bytRecord, At(tail + format::tail::kTitle)));
  if (title.empty() && titles) title = Trimmed((*titles)[image.camera]);
  return title.empty() ? "Camera " + std::to_string(image.camera + 1) : title;
}

std::string TextOf(const Extent& extent) {
  if (extent.text == extent.sound) return "";
  if (ReadBigEndian(bytRecord, At(extent.text), 4) != format::text::kMarker) return "";
  std::int32_t length = ReadBigEndian(bytRecord, At(extent.text + format::text::kLength), 4);
  return mdlFileProcessing::ReadTextField(bytRecord, At(extent.text + format::text::kText), length);
}

/// Hands an image that lies in the buffer to the writer. False when the writer refuses it.
bool AddImage(clsCreate60D& writer, const IndexedImage& image, const Extent& extent,
              const IndexedBlock& block) {
  const std::int32_t tail = extent.text - format::tail::kLength;
  const bool hasTail = HasTail(*block.type, extent.text);
  try {
    writer.AddDataTo60DFile(
        bytRecord.data(), extent.begin,
        hasTail ? SizeBeforeTail(extent.begin, tail) : extent.text - extent.begin,
        static_cast<std::int16_t>(image.flags >> format::kFlagsShift),
        TitleOf(image, block.titles.get(), tail, hasTail), TextOf(extent),
        hasTail ? ReadBigEndian(bytRecord, At(tail + format::tail::kSeconds), 4) : image.seconds,
        image.camera, block.type->keepsSound ? image.soundSectors : 0,
        bytRecord.data() + extent.sound);
  } catch (const RuntimeError&) {
    return false;
  }
  return true;
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

using ImageIterator = std::vector<IndexedImage>::const_iterator;

/// The end of the images from `first` on that are kept and can be read together.
ImageIterator EndOfRun(ImageIterator first, ImageIterator last) {
  ImageIterator end = first;
  while (end != last && IsKept(*end) &&
         (end == first || ExtentOf(*end).end - ExtentOf(*first).begin <= kMostBytesAtOnce))
    ++end;
  return end;
}

/// The new capture file. Deleted unless it is finished.
class NewCapture {
 public:
  NewCapture(platform::Platform& system, const std::string& path)
      : system_(system), path_(path), writer_(system.files) {
    created_ = writer_.Create60DFile(path);
    if (!blnSourceNotPAL) writer_.SetVideoStandardToPAL(true);
  }
  ~NewCapture() {
    writer_.Close60dFile();
    if (created_ && !finished_) RemoveOwnFile(system_.names, path_);
  }
  NewCapture(const NewCapture&) = delete;
  NewCapture& operator=(const NewCapture&) = delete;

  bool IsCreated() const { return created_; }
  bool HasImages() const { return hasImages_; }
  bool HasFailed() const { return writer_.HasFailed(); }

  /// Adds the images of chosen cameras of block `number` (from 0). False when they cannot be read.
  bool AddBlock(std::int32_t number, const IndexedBlock& block) {
    const auto last = block.images.cend();
    for (auto image = block.images.cbegin(); image != last;) {
      const auto end = EndOfRun(image, last);
      if (end == image) {
        ++image;
        continue;
      }
      const std::int32_t origin = ExtentOf(*image).begin;
      if (!ReadPart(system_.files, number, origin, ExtentOf(end[-1]).end)) return false;
      for (; image != end; ++image) {
        const Extent extent = ExtentOf(*image).From(origin);
        if (AddImage(writer_, *image, extent, block)) hasImages_ = true;
      }
    }
    return true;
  }

  /// Writes what is left and closes the file. False when it is not whole.
  bool Finish() {
    writer_.Close60dFile();
    finished_ = !writer_.HasFailed();
    return finished_;
  }

 private:
  platform::Platform& system_;
  std::string path_;
  clsCreate60D writer_;
  bool created_ = false;
  bool finished_ = false;
  bool hasImages_ = false;
};

SaveEnd Rebuild(SaveProgress& progress, NewCapture& capture, std::int32_t firstBlock) {
  bytRecord.Redimension(format::kBlockSize);
  const std::int32_t count = cameraIndex.blocks.UpperBound();
  for (std::int32_t b = 1; b <= count; ++b) {
    if (!progress.StillSaving()) return kSaveCancelled;
    if (!capture.AddBlock(firstBlock - 1 + b - 1, cameraIndex.blocks[b]))
      return SaveFailed(save_text::kReadError);
    if (capture.HasFailed()) return SaveFailed(save_text::kWriteError);
    progress.ShowBlocksDone(b, count);
    progress.LetMessagesRun();
  }
  if (!capture.HasImages()) return SaveFailed(save_text::kNoImages);
  return capture.Finish() ? kSaveDone : SaveFailed(save_text::kWriteError);
}

SaveEnd RunChosenCameraSave(platform::Platform& system, SaveProgress& progress,
                            const std::string& sourcePath, const std::string& targetPath,
                            std::int32_t firstBlock, std::int32_t lastBlock) {
  if (cameraIndex.state == CameraIndex::State::kNotValid) return SaveFailed(save_text::kNotValid);
  if (cameraIndex.state != CameraIndex::State::kFilled || !HasBlocks(firstBlock, lastBlock) ||
      cameraIndex.blocks.UpperBound() != lastBlock - firstBlock + 1)
    return SaveFailed(save_text::kReadError);
  const SourceFile source(system.files, sourcePath);
  if (!source.IsOpen()) return SaveFailed(save_text::kReadError);
  if (!ClearTarget(system, progress, targetPath)) return SaveFailed(save_text::kWriteError);
  NewCapture capture(system, targetPath);
  if (!capture.IsCreated()) return SaveFailed(save_text::kWriteError);
  return Rebuild(progress, capture, firstBlock);
}

}  // namespace

SaveOutcome SaveChosenCameras(platform::Platform& system, SaveProgress& progress,
                              const std::string& sourcePath, const std::string& targetPath,
                              std::int32_t firstBlock, std::int32_t lastBlock) {
  const SaveEnd end =
      RunChosenCameraSave(system, progress, sourcePath, targetPath, firstBlock, lastBlock);
  // A long recording's index is large, and each save has its own.
  cameraIndex = CameraIndex();
  return ShowSaveEnd(progress, end);
}
