#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "capture/clsCreate60D.h"
#include "capture/mdlFileProcessing.h"
#include "save/camera_index.h"
#include "save/operations.h"
#include "save/target.h"

namespace {

/// Images that follow each other in a block are read together, up to so many bytes: enough to make
/// the calls cheap, and little enough that the writer finds them in the processor's cache.
constexpr std::int32_t kMostBytesAtOnce = 256 * 1024;

/// Images that follow each other in a block's list.
using Run = std::span<const IndexedImage>;

/// Whether the image is chosen and lies where images can.
bool MayBeKept(const SaveJob& job, const IndexedImage& image) {
  return job.IsChosen(image.camera) && !image.IsDamaged();
}

/// Whether any block takes the image. What fills a block of the source to its end may take a sector
/// more in a new one, for its tail.
bool IsSureToFit(const IndexedImage& image, const format::Variant& variant) {
  return image.End() - image.Begin() + format::kSectorSize <= variant.trailerOffset;
}

/// The least that a new file of the images which may be kept takes: a block holds so many of them,
/// and so many bytes, and all but the last are whole.
std::int64_t LeastBytes(const SaveJob& job, const CameraIndex& index) {
  const format::Variant& variant = format::VariantOf(mdlFileProcessing::bln20D);
  std::int64_t images = 0;
  std::int64_t bytes = 0;
  for (std::int32_t b = 1; b <= index.blocks.UpperBound(); ++b)
    for (const IndexedImage& image : index.blocks[b].images) {
      if (!MayBeKept(job, image) || !IsSureToFit(image, variant)) continue;
      ++images;
      bytes += image.Text() - image.Begin();
    }
  if (images == 0) return 0;
  const std::int64_t whole =
      std::max((images - 1) / variant.mostImages, (bytes - 1) / variant.trailerOffset);
  const std::int64_t least = whole * format::kBlockSize + format::kSectorSize;
  return std::max(least, bytes) + variant.trailerLength;
}

/// The first of these images, with those behind it, that may be kept and can be read together; none
/// when the first may not be kept.
Run FirstRun(const SaveJob& job, Run images) {
  const auto end = std::find_if(images.begin(), images.end(), [&](const IndexedImage& image) {
    return !MayBeKept(job, image) ||
           (&image != images.data() && image.End() - images.front().Begin() > kMostBytesAtOnce);
  });
  return {images.begin(), end};
}

/// The rebuilding of one file.
class Rebuild {
 public:
  Rebuild(SaveProgress& progress, Pacer pacer, const SaveJob& job, SourceFile& source,
          const CameraIndex& index, NewFile& file)
      : progress_(progress),
        pacer_(std::move(pacer)),
        job_(job),
        source_(source),
        index_(index),
        file_(file),
        writer_(file) {}

  SaveResult SaveAll() {
    result_.end = AddBlocks();
    if (result_.end == SaveEnd::kSaved && result_.images == 0) result_.end = SaveEnd::kNoImages;
    if (result_.end != SaveEnd::kSaved) return result_;
    writer_.Close60dFile();
    result_.end = EndOfFile();
    return result_;
  }

 private:
  SaveEnd EndOfFile() {
    const SaveResult written = EndOfWriting(file_);
    result_.detail = written.detail;
    result_.bytes = written.bytes;
    result_.why = written.why;
    return written.end;
  }

  SaveEnd AddBlocks() {
    const std::int32_t count = job_.BlockCount();
    for (std::int32_t b = 1; b <= count; ++b) {
      const SaveEnd end = AddBlock(job_.firstBlock + b - 1, index_.blocks[b]);
      if (end != SaveEnd::kSaved) return end;
      progress_.ShowBlocksDone(b, count);
      if (!pacer_.GoOn(b, count)) return SaveEnd::kCancelled;
    }
    return SaveEnd::kSaved;
  }

  /// Adds the images of chosen cameras of block `number`.
  SaveEnd AddBlock(std::int32_t number, const IndexedBlock& block) {
    if (!block.type) ++result_.lostBlocks;
    for (Run left = block.images; !left.empty();) {
      const Run run = FirstRun(job_, left);
      if (run.empty() && job_.IsChosen(left.front().camera)) ++result_.lostImages;
      const SaveEnd end = run.empty() ? SaveEnd::kSaved : AddRun(number, block, run);
      if (end != SaveEnd::kSaved) return end;
      left = left.subspan(std::max<std::size_t>(run.size(), 1));
    }
    return SaveEnd::kSaved;
  }

  SaveEnd AddRun(std::int32_t number, const IndexedBlock& block, Run run) {
    const std::int32_t origin = run.front().Begin();
    const auto length = static_cast<std::size_t>(run.back().End() - origin);
    if (bytRecord_.size() < length) bytRecord_.resize(length);
    // With other bytes than its own no image may be saved.
    const std::span read(bytRecord_.data(), length);
    if (source_.Read(number, origin, read) != std::ssize(read)) {
      result_.why = source_.Reason();
      return SaveEnd::kNotRead;
    }
    for (const IndexedImage& image : run) {
      const auto bytes = read.subspan(image.Begin() - origin, image.End() - image.Begin());
      if (!Add(DecodeImage(block, image, bytes))) return EndOfFile();
    }
    return EndOfFile();
  }

  /// Adds an image; one that no block takes is lost, and no reason to begin a file: that may cut
  /// what has its name. False when the new file cannot be made.
  bool Add(const mdlCreate60DFile::NewImage& image) {
    if (!writer_.FileIsReady() && writer_.CanHold(image) && !Begin()) return false;
    ++(writer_.AddDataTo60DFile(image) ? result_.images : result_.lostImages);
    return true;
  }

  bool Begin() {
    writer_.SetVideoStandardToPAL(!index_.blnSourceNotPAL);
    return writer_.Create60DFile(job_.targetPath);
  }

  SaveProgress& progress_;
  Pacer pacer_;
  const SaveJob& job_;
  SourceFile& source_;
  const CameraIndex& index_;
  NewFile& file_;
  clsCreate60D writer_;
  SaveResult result_;
  std::vector<std::uint8_t> bytRecord_;  // As long as the longest run so far.
};

}  // namespace

SaveResult SaveChosenCameras(platform::Core& system, SaveProgress& progress, const SaveJob& job) {
  if (!mdlFileProcessing::SourceType()) return {.end = SaveEnd::kNotValid};
  if (!job.HasBlocks()) return {.end = SaveEnd::kNotRead};
  // Open from here to the end: Windows deletes no file that is open.
  SourceFile source(system.files, job.sourcePath);
  if (!source.IsOpen()) return EndOfReading(source);
  NewFile file(
      system, job.place, [&progress] { return progress.GoOn(); }, job.ifTaken);
  if (SaveResult asked = AskForTarget(system, source, job, file); asked.end != SaveEnd::kSaved)
    return asked;
  const CameraIndex index =
      IndexBlockRange(system, progress, source, job.firstBlock, job.lastBlock);
  if (index.end == SaveEnd::kNotRead) return EndOfReading(source);
  if (index.end != SaveEnd::kSaved) return {.end = index.end};
  if (const SaveEnd room = RoomForNew(system, job, LeastBytes(job, index)); room != SaveEnd::kSaved)
    return {.end = room};
  return Rebuild(progress, PacerOf(progress, system.clock), job, source, index, file).SaveAll();
}
