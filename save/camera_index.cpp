#include "save/camera_index.h"

#include <algorithm>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/save_run.h"

using mdlFileProcessing::bln20D;
using mdlFileProcessing::bytBlockStatus;
using mdlFileProcessing::bytRecord;
using mdlFileProcessing::lngRecordOffset;
using mdlFileProcessing::ReadBigEndian;
using mdlFileProcessing::ReadRecord;

CameraIndex cameraIndex;
bool blnSourceNotPAL = false;

namespace {

/// Where the capture time stamps of a block's images come from.
enum class Stamps {
  kInTails,         ///< Each image's tail.
  kFromBlockStart,  ///< Each entry tells the seconds since the block's start.
  kSpread,          ///< Nowhere: the images are taken as spread evenly over the block's time.
};

/// The image list of a block type; offsets count from the trailer's first byte.
struct ListLayout {
  int header;         ///< The list header: where it is read from.
  int headerLength;   ///< Bytes that are read.
  int imageCount;     ///< 2 bytes, inside the header.
  int videoStandard;  ///< 1 byte, inside the header.
  int notPal;         ///< The bit of that byte which means not PAL.
  int titles;         ///< Title table inside the header; 0 when there is none.
  int entryList;
  int entrySize;
  int mostImages;
  Stamps stamps;
  int (*sector)(int at);           ///< Sector number of the list entry at index `at`.
  IndexedImage (*decode)(int at);  ///< All else of that entry.
};

int Sector30(int at) {
  return mdlFileProcessing::ReadSectorNumber(bytRecord, at, 2);
}
int Sector20(int at) {
  return Sector30(at + format::entry20::kSector);
}
int Sector00(int at) {
  return ReadBigEndian(bytRecord, at + format::entry00::kSector, 2);
}

/// The fields that block types 0x30 and 0x20 store alike.
IndexedImage DecodeCommon(int flagsAt, int soundAndTextAt) {
  IndexedImage image;
  image.flags = bytRecord[flagsAt] & format::kStoredFlags;
  image.textSectors = bytRecord[soundAndTextAt] & format::kTextBits;
  image.soundSectors = static_cast<std::uint8_t>(bytRecord[soundAndTextAt] >> format::kSoundShift);
  return image;
}

IndexedImage Decode30(int at) {
  IndexedImage image =
      DecodeCommon(at + format::entry30::kSector, at + format::entry30::kSoundAndText);
  image.camera = bytRecord[at + format::entry30::kCamera] & format::kCameraBits;
  return image;
}

IndexedImage Decode20(int at) {
  IndexedImage image =
      DecodeCommon(at + format::entry20::kSector, at + format::entry20::kSoundAndText);
  image.camera = bytRecord[at + format::entry20::kCamera];
  image.seconds = ReadBigEndian(bytRecord, at + format::entry20::kSeconds, 2);
  return image;
}

IndexedImage Decode00(int at) {
  IndexedImage image;
  image.flags = bytRecord[at + format::entry00::kFlags] & format::kStoredFlags;
  image.camera = bytRecord[at + format::entry00::kCamera] & format::kCameraBits;
  return image;
}

constexpr ListLayout Layout30(int mostImages) {
  using namespace format::trailer30;
  return {kImageCount, kVideoStandard + 1 - kImageCount,
          kImageCount, kVideoStandard,
          kNtsc >> 8,  0,
          kEntryList,  format::entry30::kSize,
          mostImages,  Stamps::kInTails,
          Sector30,    Decode30};
}

constexpr ListLayout Layout20() {
  using namespace format::trailer20;
  return {kVideoStandard,
          kImageCount + 2 - kVideoStandard,
          kImageCount,
          kVideoStandard,
          kNotPal,
          0,
          kEntryList,
          format::entry20::kSize,
          format::kMostImages20,
          Stamps::kFromBlockStart,
          Sector20,
          Decode20};
}

constexpr ListLayout Layout00() {
  using namespace format::trailer00;
  return {kImageCount,
          kHeaderLength,
          kImageCount,
          kVideoStandard,
          kNotPal,
          kTitles,
          kEntryList,
          format::entry00::kSize,
          format::kMostImages00,
          Stamps::kSpread,
          Sector00,
          Decode00};
}

constexpr ListLayout kList60 = Layout30(format::kVariant20D.mostImages);
constexpr ListLayout kList30 = Layout30(format::kVariant60D.mostImages);
constexpr ListLayout kList20 = Layout20();
constexpr ListLayout kList00 = Layout00();

/// The list layout of the source that was scanned last; null when it is not known.
const ListLayout* LayoutOfSource() {
  if (bln20D) return &kList60;
  switch (bytBlockStatus) {
    case format::kType20:
      return &kList20;
    case format::kType30:
      return &kList30;
    case format::kType00:
    case format::kType10:
      return &kList00;
    default:
      return nullptr;
  }
}

/// Reads the lists of a source's blocks.
class IndexPass {
 public:
  IndexPass(platform::Files& files, const ListLayout& layout) : files_(files), layout_(layout) {}

  /// Indexes block `number` (from 1). False when it cannot be read; damage is no such case.
  bool Index(std::int32_t number, IndexedBlock& block) {
    if (!ReadPart(number, lngRecordOffset, layout_.headerLength)) return false;
    // A block that the file does not hold has neither images nor a video standard.
    if (mdlFileProcessing::lngBytesRead < layout_.headerLength) return true;
    blnSourceNotPAL = (bytRecord[InHeader(layout_.videoStandard)] & layout_.notPal) != 0;
    const int count =
        std::min(ReadBigEndian(bytRecord, InHeader(layout_.imageCount), 2), layout_.mostImages);
    if (count == 0) return true;
    if (layout_.titles != 0) block.titles = ReadTitles();
    if (!ReadPart(number, format::VariantOf(bln20D).trailerOffset + layout_.entryList,
                  count * layout_.entrySize + format::kEndEntryLength))
      return false;
    DecodeList(count, block.images);
    if (layout_.stamps == Stamps::kFromBlockStart) AddBlockStart(number, block.images);
    if (layout_.stamps == Stamps::kSpread) SpreadStamps(number, block.images);
    return true;
  }

 private:
  /// Reads a part of block `number` into `bytRecord`. What lies beyond the file's end reads as
  /// zeros; a read that brings less than the file holds has failed.
  bool ReadPart(std::int32_t number, std::int32_t offset, std::int32_t count) {
    if (!ReadRecord(files_, number - 1, offset, count)) return false;
    if (mdlFileProcessing::lngBytesRead == count) return true;
    const double end = (number - 1.0) * format::kBlockSize + offset + count;
    return mdlFileProcessing::FileSize64(files_, mdlFileProcessing::hSourceFile) < end;
  }

  /// Index in `bytRecord` of a trailer offset, when it holds the list header.
  int InHeader(int offset) const { return offset - layout_.header + 1; }

  std::shared_ptr<const CameraTitles> ReadTitles() {
    CameraTitles titles;
    for (int camera = 0; camera < format::kCameras; ++camera)
      titles.push_back(mdlFileProcessing::ReadTitleField(
          bytRecord, InHeader(layout_.titles + camera * format::tail::kTitleRead)));
    if (!titles_ || *titles_ != titles)
      titles_ = std::make_shared<const CameraTitles>(std::move(titles));
    return titles_;
  }

  void DecodeList(int count, std::vector<IndexedImage>& images) const {
    images.reserve(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k) {
      const int at = 1 + k * layout_.entrySize;
      IndexedImage image = layout_.decode(at);
      image.startSector = static_cast<std::uint16_t>(layout_.sector(at));
      image.endSector = static_cast<std::uint16_t>(layout_.sector(at + layout_.entrySize));
      images.push_back(image);
    }
    // A block that is full to its trailer ends at a sector whose number has one bit too many.
    if (images.back().endSector == 0) images.back().endSector = format::kSectorNumbers;
  }

  static void AddBlockStart(std::int32_t number, std::vector<IndexedImage>& images) {
    const auto start = static_cast<std::uint32_t>(mdlFileProcessing::lngBlockStart[number]);
    for (IndexedImage& image : images)
      image.seconds = static_cast<std::int32_t>(start + static_cast<std::uint32_t>(image.seconds));
  }

  static void SpreadStamps(std::int32_t number, std::vector<IndexedImage>& images) {
    const std::int64_t start = mdlFileProcessing::lngBlockStart[number];
    const std::int64_t span = mdlFileProcessing::lngBlockEnd[number] - start;
    const auto steps = std::max<std::int64_t>(std::ssize(images) - 1, 1);
    for (std::int64_t k = 0; IndexedImage & image : images)
      image.seconds = static_cast<std::int32_t>(start + span * k++ / steps);
  }

  platform::Files& files_;
  const ListLayout& layout_;
  std::shared_ptr<const CameraTitles> titles_;  // The last block's.
};

CameraIndex::State FillIndex(platform::Files& files, const std::string& sourcePath,
                             std::int32_t firstBlock, std::int32_t lastBlock) {
  if (!HasBlocks(firstBlock, lastBlock)) return CameraIndex::State::kUnreadable;
  const ListLayout* layout = LayoutOfSource();
  if (!layout) return CameraIndex::State::kNotValid;
  const SourceFile source(files, sourcePath);
  if (!source.IsOpen()) return CameraIndex::State::kUnreadable;

  lngRecordOffset = format::VariantOf(bln20D).trailerOffset + layout->header;
  const std::int32_t count = lastBlock - firstBlock + 1;
  cameraIndex.blocks.Redimension(static_cast<std::size_t>(count));
  IndexPass pass(files, *layout);
  for (std::int32_t b = 1; b <= count; ++b)
    if (!pass.Index(firstBlock + b - 1, cameraIndex.blocks[b]))
      return CameraIndex::State::kUnreadable;
  return CameraIndex::State::kFilled;
}

}  // namespace

bool IndexBlockRange(platform::Files& files, const std::string& sourcePath, std::int32_t firstBlock,
                     std::int32_t lastBlock) {
  cameraIndex = CameraIndex();
  cameraIndex.state = FillIndex(files, sourcePath, firstBlock, lastBlock);
  return cameraIndex.state == CameraIndex::State::kFilled;
}
