#include "capture/mdlCreate60DFile.h"

#include <algorithm>

#include "capture/capture_time.h"

namespace mdlCreate60DFile {

using format::kSectorSize;
using mdlFileProcessing::PutBigEndian;

namespace {

/// Where the sector ends that holds the tail of an image whose bytes end at `imageEnd`. At least
/// one zero stands before a tail: an image that leaves exactly its length takes a further sector.
constexpr std::int64_t EndOfTail(std::int64_t imageEnd) {
  const std::int64_t used = imageEnd % kSectorSize;
  const bool tailFits = used + format::tail::kLength < kSectorSize;
  return imageEnd - used + kSectorSize + (tailFits ? 0 : kSectorSize);
}
static_assert(EndOfTail(0) == 512 && EndOfTail(455) == 512 && EndOfTail(456) == 1024 &&
              EndOfTail(512) == 1024);

/// Bytes that the image and what belongs to it take in an empty block.
std::int64_t StoredSize(const NewImage& image) {
  return EndOfTail(std::ssize(image.bytes)) + (image.text.empty() ? 0 : kSectorSize) +
         std::ssize(image.sound);
}

bool IsStored(int flags) {
  return flags >= 1 && flags <= 3;
}

}  // namespace

void BlockBuilder::Begin(const format::Variant& variant) {
  variant_ = &variant;
  trailer_.assign(static_cast<std::size_t>(variant.trailerLength), 0);
  entryCursor_ = format::trailer30::kEntryList;
  summary_ = {};
  dataLength_ = 0;
}

bool BlockBuilder::CanHold(const NewImage& image) const {
  return image.camera >= 0 && image.camera < format::kCameras &&
         image.sound.size() % kSectorSize == 0 &&
         image.sound.size() / kSectorSize <= format::kMostSoundSectors &&
         image.title.size() <= format::tail::kTitleRoom &&
         image.text.size() <= format::text::kRoom && StoredSize(image) <= variant_->trailerOffset;
}

bool BlockBuilder::HasRoomFor(const NewImage& image) const {
  // The reserve covers the rest of a sector, a sector for the tail and one for a text.
  constexpr std::int64_t kReserve = 2048;
  const std::int64_t end = dataLength_ + std::ssize(image.bytes) + std::ssize(image.sound);
  return end - end % kSectorSize + kReserve < variant_->trailerOffset &&
         summary_.imageCount < variant_->mostImages;
}

void BlockBuilder::Add(const NewImage& image) {
  AddEntry(image);
  AddToSummary(image);
  AddBytes(image.bytes);
  AddTail(image);
  if (!image.text.empty()) AddText(image.text);
  AddBytes(image.sound);
}

void BlockBuilder::AddEntry(const NewImage& image) {
  std::uint8_t* entry = &trailer_[static_cast<std::size_t>(entryCursor_)];
  PutSector(entryCursor_);
  if (IsStored(image.flags))
    entry[format::entry30::kSector] |=
        static_cast<std::uint8_t>(image.flags << format::kFlagsShift);
  entry[format::entry30::kSoundAndText] = static_cast<std::uint8_t>(
      std::ssize(image.sound) / kSectorSize << format::kSoundShift | (image.text.empty() ? 0 : 1));
  entry[format::entry30::kCamera] = static_cast<std::uint8_t>(image.camera & format::kCameraBits);
  entryCursor_ += format::entry30::kSize;
}

void BlockBuilder::PutSector(int offset) {
  PutBigEndian(&trailer_[static_cast<std::size_t>(offset)], 2,
               dataLength_ / kSectorSize + variant_->trailerSectors);
}

void BlockBuilder::AddToSummary(const NewImage& image) {
  summary_.earliest = std::min(summary_.earliest, TimeOfStamp(image.seconds));
  summary_.latest = std::max(summary_.latest, TimeOfStamp(image.seconds));
  const std::int32_t bit = 1 << image.camera;
  summary_.cameraMask |= bit;
  if (IsStored(image.flags)) summary_.flagMasks[image.flags] |= bit;
  if (!image.text.empty()) summary_.textMask |= bit;
  ++summary_.imageCount;
}

void BlockBuilder::AddBytes(mdlFileProcessing::Bytes bytes) {
  std::copy(bytes.begin(), bytes.end(), &data_[static_cast<std::size_t>(dataLength_)]);
  dataLength_ += static_cast<std::int32_t>(bytes.size());
}

void BlockBuilder::AddZeros(std::int32_t count) {
  std::fill_n(&data_[static_cast<std::size_t>(dataLength_)], count, std::uint8_t{0});
  dataLength_ += count;
}

void BlockBuilder::AddTail(const NewImage& image) {
  const auto end = static_cast<std::int32_t>(EndOfTail(dataLength_));
  AddZeros(end - dataLength_);
  std::uint8_t* tail = &data_[static_cast<std::size_t>(end - format::tail::kLength)];
  PutBigEndian(tail, 4, format::tail::kMarker);
  PutBigEndian(tail + format::tail::kSeconds, 4, image.seconds);
  std::copy(image.title.begin(), image.title.end(), tail + format::tail::kTitle);
}

void BlockBuilder::AddText(const std::string& text) {
  std::uint8_t* sector = &data_[static_cast<std::size_t>(dataLength_)];
  AddZeros(kSectorSize);
  PutBigEndian(sector, 4, format::text::kMarker);
  PutBigEndian(sector + format::text::kLength, 4, static_cast<std::int64_t>(text.size()));
  std::copy(text.begin(), text.end(), sector + format::text::kText);
}

void BlockBuilder::Seal(std::int32_t sequence, int videoStandard) {
  namespace header = format::trailer30;
  PutSector(entryCursor_);
  const auto put = [this](int offset, int length, std::int64_t value) {
    PutBigEndian(&trailer_[static_cast<std::size_t>(offset)], length, value);
  };
  put(format::trailer::kEarliest, 4, summary_.earliest);
  put(format::trailer::kStart, 4, summary_.earliest);
  put(format::trailer::kEnd, 4, summary_.latest);
  put(format::trailer::kEntryListOffset, 1, header::kEntryList);
  put(format::trailer::kBlockType, 1, variant_->blockType);
  put(header::kSequence, 4, sequence);
  put(header::kCameraMask, 2, summary_.cameraMask);
  put(header::kFlag1Mask, 2, summary_.flagMasks[1]);
  put(header::kFlag2Mask, 2, summary_.flagMasks[2]);
  put(header::kFlag3Mask, 2, summary_.flagMasks[3]);
  put(header::kTextMask, 2, summary_.textMask);
  put(header::kImageCount, 2, summary_.imageCount);
  put(header::kVideoStandard, 2, videoStandard);
}

void BlockBuilder::JoinTrailer(std::int32_t offset) {
  AddZeros(offset - dataLength_);
  AddBytes(trailer_);
}

}  // namespace mdlCreate60DFile
