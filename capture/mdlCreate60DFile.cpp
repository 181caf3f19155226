#include "capture/mdlCreate60DFile.h"

#include <algorithm>

#include "capture/mdlFileProcessing.h"

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
  return EndOfTail(image.size) + (image.text.empty() ? 0 : kSectorSize) +
         std::int64_t{image.soundSectors} * kSectorSize;
}

bool IsStored(int flags) {
  return flags >= 1 && flags <= 3;
}

}  // namespace

void BlockBuilder::ResetTrailer(const format::Variant& variant) {
  variant_ = &variant;
  trailer_.assign(static_cast<std::size_t>(variant.trailerLength), 0);
  entryCursor_ = format::trailer30::kEntryList;
  imageCount_ = 0;
  earliest_ = std::numeric_limits<std::int32_t>::max();
  latest_ = 0;
  cameraMask_ = 0;
  textMask_ = 0;
  std::fill(std::begin(flagMasks_), std::end(flagMasks_), 0);
}

void BlockBuilder::ResetData() {
  if (!data_) data_.reset(new std::uint8_t[format::kBlockSize]);
  dataLength_ = 0;
  std::fill(std::begin(tail_), std::end(tail_), std::uint8_t{0});
}

bool BlockBuilder::CanHold(const NewImage& image) const {
  return image.size >= 0 && image.camera >= 0 && image.camera < format::kCameras &&
         image.soundSectors >= 0 && image.soundSectors <= format::kMostSoundSectors &&
         image.title.size() <= format::tail::kTitleRoom &&
         image.text.size() <= format::text::kRoom && StoredSize(image) <= variant_->trailerOffset;
}

bool BlockBuilder::HasRoomFor(const NewImage& image) const {
  // The reserve covers the rest of a sector, a sector for the tail and one for a text.
  constexpr std::int64_t kReserve = 2048;
  const std::int64_t end =
      std::int64_t{dataLength_} + image.size + std::int64_t{image.soundSectors} * kSectorSize;
  return end - end % kSectorSize + kReserve < variant_->trailerOffset &&
         imageCount_ < variant_->mostImages;
}

void BlockBuilder::Add(const NewImage& image) {
  AddEntry(image);
  AddToSummary(image);
  AddBytes(image.bytes, image.size);
  AddTail(image);
  if (!image.text.empty()) AddText(image.text);
  AddBytes(image.sound, image.soundSectors * kSectorSize);
}

void BlockBuilder::AddEntry(const NewImage& image) {
  std::uint8_t* entry = &trailer_[static_cast<std::size_t>(entryCursor_)];
  PutSector(entryCursor_);
  if (IsStored(image.flags))
    entry[format::entry30::kSector] |=
        static_cast<std::uint8_t>(image.flags << format::kFlagsShift);
  entry[format::entry30::kSoundAndText] = static_cast<std::uint8_t>(
      image.soundSectors << format::kSoundShift | (image.text.empty() ? 0 : 1));
  entry[format::entry30::kCamera] = static_cast<std::uint8_t>(image.camera & format::kCameraBits);
  entryCursor_ += format::entry30::kSize;
}

void BlockBuilder::PutSector(int offset) {
  PutBigEndian(&trailer_[static_cast<std::size_t>(offset)], 2,
               dataLength_ / kSectorSize + variant_->trailerSectors);
}

void BlockBuilder::AddToSummary(const NewImage& image) {
  earliest_ = std::min(earliest_, image.seconds);
  latest_ = std::max(latest_, image.seconds);
  const std::int32_t bit = 1 << image.camera;
  cameraMask_ |= bit;
  if (IsStored(image.flags)) flagMasks_[image.flags] |= bit;
  if (!image.text.empty()) textMask_ |= bit;
  ++imageCount_;
}

void BlockBuilder::AddBytes(const std::uint8_t* bytes, std::int32_t count) {
  std::copy_n(bytes, count, &data_[static_cast<std::size_t>(dataLength_)]);
  dataLength_ += count;
}

void BlockBuilder::AddZeros(std::int32_t count) {
  std::fill_n(&data_[static_cast<std::size_t>(dataLength_)], count, std::uint8_t{0});
  dataLength_ += count;
}

void BlockBuilder::AddTail(const NewImage& image) {
  const auto end = static_cast<std::int32_t>(EndOfTail(dataLength_));
  AddZeros(end - format::tail::kLength - dataLength_);
  PutBigEndian(tail_, 4, format::tail::kMarker);
  PutBigEndian(tail_ + format::tail::kSeconds, 4, image.seconds);
  std::copy(image.title.begin(), image.title.end(), tail_ + format::tail::kTitle);
  AddBytes(tail_, format::tail::kLength);
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
  const auto put = [this](int offset, int length, std::int32_t value) {
    PutBigEndian(&trailer_[static_cast<std::size_t>(offset)], length, value);
  };
  put(format::trailer::kEarliest, 4, earliest_);
  put(format::trailer::kStart, 4, earliest_);
  put(format::trailer::kEnd, 4, latest_);
  put(format::trailer::kEntryListOffset, 1, header::kEntryList);
  put(format::trailer::kBlockType, 1, variant_->blockType);
  put(header::kSequence, 4, sequence);
  put(header::kCameraMask, 2, cameraMask_);
  put(header::kFlag1Mask, 2, flagMasks_[1]);
  put(header::kFlag2Mask, 2, flagMasks_[2]);
  put(header::kFlag3Mask, 2, flagMasks_[3]);
  put(header::kTextMask, 2, textMask_);
  put(header::kImageCount, 2, imageCount_);
  put(header::kVideoStandard, 2, videoStandard);
}

void BlockBuilder::JoinTrailer(std::int32_t offset) {
  AddZeros(offset - dataLength_);
  AddBytes(trailer_.data(), variant_->trailerLength);
}

}  // namespace mdlCreate60DFile
