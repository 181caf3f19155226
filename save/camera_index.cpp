#include "save/camera_index.h"

#include <algorithm>

#include "capture/breathing.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"

using format::BlockType;
using mdlFileProcessing::bytRecord;
using mdlFileProcessing::lngRecordOffset;

bool blnSourceNotPAL = false;

namespace {

/// The sector number behind a data area that is full to its trailer. It has a bit more than the 12
/// of an entry, and so reaches into the bits of the flags.
constexpr std::int32_t kBehindLastSector = 0x1000;

/// Index in `bytRecord`, when it holds a trailer, of a trailer offset.
constexpr int At(int offset) {
  return offset + 1;
}

std::int32_t Field(int offset, int length) {
  return mdlFileProcessing::ReadBigEndian(bytRecord, At(offset), length);
}

/// The sector where the image begins whose entry has its sector number at `offset`.
std::int32_t FirstSector(const BlockType& type, int offset) {
  return type.entry.wideSectors ? Field(offset, 2)
                                : mdlFileProcessing::ReadSectorNumber(bytRecord, At(offset), 2);
}

/// The sector where the image ends that stands before this entry.
std::int32_t EndSector(const BlockType& type, int offset) {
  return Field(offset, 2) == kBehindLastSector ? kBehindLastSector : FirstSector(type, offset);
}

/// The image whose entry begins at `offset`.
IndexedImage DecodeEntry(const BlockType& type, int offset) {
  const format::EntryLayout& entry = type.entry;
  IndexedImage image;
  image.startSector = static_cast<std::uint16_t>(FirstSector(type, offset + entry.sector));
  image.endSector = static_cast<std::uint16_t>(EndSector(type, offset + entry.size + entry.sector));
  image.flags = bytRecord[At(offset + entry.flags)] & format::kStoredFlags;
  image.camera = static_cast<std::uint8_t>(bytRecord[At(offset + entry.camera)] & entry.cameraBits);
  if (entry.secondsOfBlock != format::kAbsent)
    image.seconds = Field(offset + entry.secondsOfBlock, 2);
  if (entry.soundAndText == format::kAbsent) return image;
  const std::uint8_t soundAndText = bytRecord[At(offset + entry.soundAndText)];
  image.textSectors = soundAndText & format::kTextBits;
  image.soundSectors = static_cast<std::uint8_t>(soundAndText >> format::kSoundShift);
  return image;
}

void AddBlockStart(std::vector<IndexedImage>& images) {
  const auto start = static_cast<std::uint32_t>(Field(format::trailer::kStart, 4));
  for (IndexedImage& image : images)
    image.seconds = static_cast<std::int32_t>(start + static_cast<std::uint32_t>(image.seconds));
}

void SpreadStamps(std::vector<IndexedImage>& images) {
  const std::int64_t start = Field(format::trailer::kStart, 4);
  const std::int64_t span = Field(format::trailer::kEnd, 4) - start;
  const auto steps = std::max<std::int64_t>(std::ssize(images) - 1, 1);
  for (std::int64_t k = 0; IndexedImage & image : images)
    image.seconds = static_cast<std::int32_t>(start + span * k++ / steps);
}

/// Reads the lists of a source's blocks.
class IndexPass {
 public:
  explicit IndexPass(platform::Files& files) : files_(files) {}

  /// Indexes block `number` (from 1). False when the source does not give its trailer; damage is no
  /// such case.
  bool Index(std::int32_t number, IndexedBlock& block) {
    const format::Variant& variant = format::VariantOf(mdlFileProcessing::bln20D);
    lngRecordOffset = variant.trailerOffset;
    if (!mdlFileProcessing::ReadRecord(files_, number - 1, lngRecordOffset,
                                       variant.trailerLength) ||
        mdlFileProcessing::lngBytesRead != variant.trailerLength)
      return false;
    block.type =
        format::BlockTypeOf(mdlFileProcessing::bln20D, bytRecord[At(format::trailer::kBlockType)]);
    if (block.type) Decode(*block.type, block);
    return true;
  }

 private:
  void Decode(const BlockType& type, IndexedBlock& block) {
    blnSourceNotPAL = (bytRecord[At(type.videoStandard)] & type.notPal) != 0;
    const int count = std::min(Field(type.imageCount, 2), type.MostImages());
    if (count == 0) return;
    if (type.titles != format::kAbsent) block.titles = ReadTitles(type.titles);
    block.images.reserve(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k)
      block.images.push_back(DecodeEntry(type, type.entryList + k * type.entry.size));
    if (type.alwaysHasTails) return;
    if (type.stamps == format::Stamps::kFromBlockStart) AddBlockStart(block.images);
    if (type.stamps == format::Stamps::kSpread) SpreadStamps(block.images);
  }

  std::shared_ptr<const CameraTitles> ReadTitles(int table) {
    CameraTitles titles;
    for (int camera = 0; camera < format::kCameras; ++camera)
      titles.push_back(mdlFileProcessing::ReadTitleField(
          bytRecord, At(table + camera * format::tail::kTitleRead)));
    if (!titles_ || *titles_ != titles)
      titles_ = std::make_shared<const CameraTitles>(std::move(titles));
    return titles_;
  }

  platform::Files& files_;
  std::shared_ptr<const CameraTitles> titles_;  // The last block's.
};

/// Fills the blocks of the index. Anything but `kSaved` tells why that was not done to the end.
SaveEnd Fill(OneBased<IndexedBlock>& blocks, platform::Files& files, Breathing& breathing,
             std::int32_t firstBlock) {
  IndexPass pass(files);
  const std::int32_t count = blocks.UpperBound();
  for (std::int32_t b = 1; b <= count; ++b) {
    if (!pass.Index(firstBlock + b - 1, blocks[b])) return SaveEnd::kNotRead;
    if (!breathing.GoOn(b, count)) return SaveEnd::kCancelled;
  }
  return SaveEnd::kSaved;
}

}  // namespace

CameraIndex IndexBlockRange(platform::Platform& system, SaveProgress& progress,
                            const std::string& sourcePath, std::int32_t firstBlock,
                            std::int32_t lastBlock) {
  const SourceFile source(system.files, sourcePath);
  if (!source.IsOpen()) return {.end = SaveEnd::kNotRead};
  Breathing breathing(system.clock, [&progress](std::int32_t, std::int32_t) {
    progress.LetMessagesRun();
    return progress.StillSaving();
  });
  CameraIndex index;
  const std::int32_t count = lastBlock - firstBlock + 1;
  index.blocks.Redimension(static_cast<std::size_t>(count));
  index.end = Fill(index.blocks, system.files, breathing, firstBlock);
  return index;
}
