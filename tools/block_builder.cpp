#include "tools/block_builder.h"

#include <algorithm>
#include <cstring>

namespace tools {
namespace {

void Copy(const std::string& text, int most, std::uint8_t* to) {
  text.copy(reinterpret_cast<char*>(to), static_cast<std::size_t>(most));
}

}  // namespace

void BlockBuilder::Begin(const Layout& layout, std::uint32_t sequence) {
  layout_ = &layout;
  std::fill_n(block_.begin(), dirty_, std::uint8_t{0});
  std::fill(block_.begin() + layout_->trailer - kSectorBytes, block_.end(), std::uint8_t{0});
  sequence_ = sequence;
  dirty_ = used_ = imageCount_ = 0;
  times_.reset();
}

/// Sectors for the image's bytes and its tail. A recorder ends an image at most 455 bytes into the
/// tail's sector; a tight one uses the last byte before the tail too.
int BlockBuilder::DataSectors(const Image& image) const {
  const int size = static_cast<int>(image.bytes.size()) + (HasTail(image) ? kTailBytes : 0);
  const int spare = style_.tight || !HasTail(image) ? kSectorBytes - 1 : kSectorBytes;
  return std::max(1, (size + spare) / kSectorBytes);
}

int BlockBuilder::FreeSectors() const {
  return (layout_->trailer - used_) / kSectorBytes;
}

bool BlockBuilder::Fits(const Image& image) const {
  const int sectors = DataSectors(image) + (image.text.empty() ? 0 : 1) +
                      static_cast<int>(image.sound.size()) / kSectorBytes;
  return imageCount_ < layout_->mostImages && sectors <= FreeSectors();
}

void BlockBuilder::Set(int place, std::uint32_t bits) {
  Put(Trailer() + place, 2, Get(Trailer() + place, 2) | bits);
}

void BlockBuilder::List(const Image& image) {
  PutEntry(image);
  PutMasks(image);
  earliest_ = imageCount_ == 0 ? image.Stamp() : std::min(earliest_, image.Stamp());
  latest_ = imageCount_ == 0 ? image.Stamp() : std::max(latest_, image.Stamp());
  ++imageCount_;
}

void BlockBuilder::Add(const Image& image) {
  List(image);
  std::memcpy(block_.data() + used_, image.bytes.data(), image.bytes.size());
  used_ += DataSectors(image) * kSectorBytes;
  if (HasTail(image)) PutTail(image, used_);
  if (!image.text.empty()) PutText(image.text);
  std::memcpy(block_.data() + used_, image.sound.data(), image.sound.size());
  used_ += static_cast<int>(image.sound.size());
  dirty_ = used_;
}

void BlockBuilder::AddHole(const Image& image, int sectors) {
  List(image);
  used_ += sectors * kSectorBytes;
  if (HasTail(image) && used_ == layout_->trailer) PutTail(image, used_);
}

void BlockBuilder::PutEntry(const Image& image) {
  const Layout& layout = *layout_;
  std::uint8_t* entry = layout.Entry(Trailer(), imageCount_);
  const int sector = used_ / kSectorBytes + layout.firstSector;
  Put(entry + layout.entrySector, 2, static_cast<std::uint32_t>(sector));
  entry[layout.entryFlags] |= static_cast<std::uint8_t>(image.flags << 4);
  entry[layout.entryCamera] = static_cast<std::uint8_t>(image.camera);
  if (layout.entryParts != kNone)
    entry[layout.entryParts] = static_cast<std::uint8_t>(image.sound.size() / kSectorBytes << 3 |
                                                         (image.text.empty() ? 0 : 1));
  if (layout.entryTime != kNone) {
    const std::uint32_t first = imageCount_ == 0 ? image.Stamp() : earliest_;
    Put(entry + layout.entryTime, 2, image.Stamp() - (times_ ? times_->first : first));
  }
}

void BlockBuilder::PutMasks(const Image& image) {
  const Layout& layout = *layout_;
  const std::uint32_t bit = 1u << (image.camera % 16);
  Set(image.camera < 16 ? layout.cameraMask : layout.highCameraMask, bit);
  if (!layout.isOfToday) return;
  if (image.flags != 0) Set(kFlagMasks[static_cast<std::size_t>(image.flags) - 1], bit);
  if (!image.text.empty()) Set(kTextMask, bit);
}

void BlockBuilder::PutTail(const Image& image, int end) {
  std::uint8_t* tail = block_.data() + end - kTailBytes;
  std::copy(kTailMark.begin(), kTailMark.end(), tail);
  Put(tail + kTailTime, 4, image.Stamp());
  Copy(image.title, kTailTitleBytes, tail + kTailTitle);
}

void BlockBuilder::PutText(const std::string& text) {
  std::uint8_t* sector = block_.data() + used_;
  std::copy(kTextMark.begin(), kTextMark.end(), sector);
  Put(sector + kTextLength, 4, static_cast<std::uint32_t>(text.size()));
  Copy(text, kTextBytes, sector + kTextStart);
  used_ += kSectorBytes;
}

const Bytes& BlockBuilder::Finish() {
  const Layout& layout = *layout_;
  std::uint8_t* trailer = Trailer();
  const auto [start, end] = times_.value_or(std::pair(earliest_, latest_));
  Put(trailer + kEarliest, 4, start);
  Put(trailer + kStart, 4, start);
  Put(trailer + kEnd, 4, end);
  // The list of types 0x00 and 0x10 begins beyond what this byte can tell.
  trailer[kListPlace] = static_cast<std::uint8_t>(layout.list <= 255 ? layout.list : 0);
  trailer[kType] = layout.type;
  Put(trailer + kSequence, 4, sequence_);
  Put(trailer + layout.imageCount, 2, static_cast<std::uint32_t>(imageCount_));
  const std::uint8_t others = style_.noise ? ~layout.videoBit : 0;
  trailer[layout.videoByte] = style_.pal ? others : others | layout.videoBit;
  if (layout.titleTable != kNone)
    for (int i = 0; i < kTitlesInTable; ++i)
      Copy(style_.titles[static_cast<std::size_t>(i)], kTitleBytes,
           trailer + layout.titleTable + std::ptrdiff_t{i} * kTitleBytes);
  const int sector = used_ / kSectorBytes + layout.firstSector;
  Put(layout.Entry(trailer, imageCount_) + layout.entrySector, 2,
      static_cast<std::uint32_t>(sector));
  return block_;
}

}  // namespace tools
