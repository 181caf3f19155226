#include "tools/recording_reader.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace tools {
namespace {

constexpr int kBarWidth = 50;

/// At most `most` bytes, up to the first zero.
std::string GetText(const std::uint8_t* at, int most) {
  return {at, std::find(at, at + most, std::uint8_t{0})};
}

std::string WithoutBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ParseText(const std::uint8_t* sector) {
  if (!std::equal(kTextMark.begin(), kTextMark.end(), sector)) return "";
  const auto length = static_cast<std::int32_t>(Get(sector + kTextLength, 4));
  return {sector + kTextStart, sector + kTextStart + std::clamp(length, 0, kTextBytes)};
}

/// The time of image `i`, from 0 on, as far as its block knows it.
std::int64_t ListedTime(const StoredBlock& block, int i) {
  const Layout& layout = *block.layout;
  if (layout.entryTime != kNone)
    return block.start + Get(layout.Entry(block.Trailer(), i) + layout.entryTime, 2);
  const auto last = static_cast<std::int64_t>(block.images.size()) - 1;
  return block.start + (block.end - block.start) * i / std::max<std::int64_t>(last, 1);
}

/// The title in the block's table, if it has one.
std::string ListedTitle(const StoredBlock& block, int camera) {
  if (block.layout->titleTable == kNone) return "";
  const std::uint8_t* table = block.Trailer() + block.layout->titleTable;
  return GetText(table + std::ptrdiff_t{camera} * kTitleBytes, kTitleBytes);
}

/// Fills in an image's bytes, which end at `end`, and what its tail tells or, without one, the
/// block.
void ParseBytes(const StoredBlock& block, int end, StoredImage& image) {
  const std::uint8_t* tail = block.At(end - kTailBytes);
  image.tail = block.layout->isOfToday || std::equal(kTailMark.begin(), kTailMark.end(), tail);
  image.bytes = block.Text(image.begin, image.tail ? end - kTailBytes : end);
  std::int64_t stamp = ListedTime(block, image.index - 1);
  if (image.tail) {
    stamp = Get(tail + kTailTime, 4);
    image.tailTitle = block.Text(end - kTailTitleBytes, end);
    image.tailTitle.erase(image.tailTitle.find_last_not_of('\0') + 1);
  }
  image.seconds = static_cast<std::int32_t>(stamp);
  image.title = WithoutBlanks(ShownTitle(image.tailTitle));
  if (image.title.empty()) image.title = WithoutBlanks(ListedTitle(block, image.camera));
}

/// Image `i`, from 0 on, of a block whose trailer is known.
StoredImage ParseImage(const StoredBlock& block, int i) {
  const Layout& layout = *block.layout;
  const std::uint8_t* entry = layout.Entry(block.Trailer(), i);
  const int parts = layout.entryParts == kNone ? 0 : entry[layout.entryParts];
  StoredImage image;
  image.index = i + 1;
  image.camera = entry[layout.entryCamera] & (layout.cameras == 32 ? 0xFF : 0x0F);
  image.flags = entry[layout.entryFlags] >> 4 & 3;
  image.begin = layout.PlaceOf(block.Trailer(), i);
  image.end = layout.PlaceOf(block.Trailer(), i + 1);
  const int sound = image.end - (parts >> 3) * kSectorBytes;
  const int text = sound - (parts & 3) * kSectorBytes;
  if (image.end > block.trailer) image.trouble = "reaches beyond its block's data";
  if (image.begin >= text) image.trouble = "has an empty extent";
  if (image.begin < 0) image.trouble = "begins before its block";
  if (!image.trouble.empty()) return image;
  ParseBytes(block, text, image);
  if (text < sound) image.text = ParseText(block.At(text));
  image.sound = block.Text(sound, image.end);
  return image;
}

}  // namespace

std::string ShownTitle(const std::string& tailTitle) {
  return tailTitle.substr(0, std::min<std::size_t>(tailTitle.find('\0'), kTitleBytes));
}

void ParseBlock(StoredBlock& block, bool is20D) {
  const std::uint8_t* trailer = block.Trailer();
  block.layout = FindLayout(trailer[kType], is20D);
  block.trouble = block.layout == nullptr ? "is of no type that such a recording has" : "";
  if (block.layout == nullptr) return;
  const Layout& layout = *block.layout;
  block.start = Get(trailer + kStart, 4);
  block.end = Get(trailer + kEnd, 4);
  block.ntsc = (trailer[layout.videoByte] & layout.videoBit) != 0;
  block.listedCount = static_cast<int>(Get(trailer + layout.imageCount, 2));
  if (block.listedCount == 0) block.trouble = "lists no image";
  if (block.listedCount > layout.mostImages)
    block.trouble = "lists more images than it has room for";
  block.images.resize(static_cast<std::size_t>(std::min(block.listedCount, layout.mostImages)));
  for (StoredImage& image : block.images) {
    image = ParseImage(block, static_cast<int>(&image - block.images.data()));
    if (!image.trouble.empty()) ++block.damagedImages;
  }
}

bool IsNameOf20D(const std::string& path) {
  const std::size_t length = path.size();
  return length >= 3 && path.compare(length - 3, 2, "20") == 0 && (path.back() | 0x20) == 'd';
}

Progress::~Progress() {
  if (shown_ > 0) std::cerr << '\r' << std::string(kBarWidth + 8, ' ') << '\r' << std::flush;
}

void Progress::Advance(std::int64_t bytes) {
  done_ += bytes;
  const int percent = static_cast<int>(std::min<std::int64_t>(done_ * 100 / total_, 100));
  if (percent == shown_ || !IsWatched()) return;
  shown_ = percent;
  const int filled = percent * kBarWidth / 100;
  std::cerr << "\r[" << std::string(filled, '#') << std::string(kBarWidth - filled, ' ') << "] "
            << percent << '%' << std::flush;
}

RecordingReader::RecordingReader(const std::string& path, Progress* progress)
    : path_(path),
      file_(path, std::ios::binary | std::ios::ate),
      progress_(progress),
      form_(FormOf(IsNameOf20D(path))) {
  if (!file_) throw std::runtime_error(path + " cannot be opened");
  size_ = file_.tellg();
  rest_ = size_ % kBlockBytes;
  if (EndsInTrailer()) std::swap(compact_, rest_);
  blockCount_ = static_cast<int>(size_ / kBlockBytes) + (compact_ > 0 ? 1 : 0);
  if (blockCount_ <= 0) throw std::runtime_error(path_ + " holds no whole block");
  if (progress_ != nullptr) progress_->Expect(size_);
}

/// Whether what lies behind the whole blocks is a block with its trailer right behind its data.
bool RecordingReader::EndsInTrailer() {
  const std::int64_t data = rest_ - form_.trailerBytes;
  if (data <= 0 || data % kSectorBytes != 0) return false;
  Bytes trailer;
  ReadBytes(size_ - form_.trailerBytes, form_.trailerBytes, trailer);
  const Layout* layout = FindLayout(trailer[kType], form_.is20D);
  if (layout == nullptr) return false;
  const auto count = static_cast<int>(Get(trailer.data() + layout->imageCount, 2));
  if (count == 0 || count > layout->mostImages) return false;
  const int end = layout->SectorOf(layout->Entry(trailer.data(), count)) - layout->firstSector;
  return std::int64_t{end} * kSectorBytes == data;
}

void RecordingReader::ReadBytes(std::int64_t position, std::int64_t count, Bytes& bytes) {
  bytes.resize(static_cast<std::size_t>(count));
  file_.seekg(position);
  file_.read(reinterpret_cast<char*>(bytes.data()), count);
  if (!file_) throw std::runtime_error(path_ + " cannot be read");
  if (position != summed_) return;
  sum_.Add(bytes.data(), bytes.size());
  summed_ += count;
  if (progress_ != nullptr) progress_->Advance(count);
}

int RecordingReader::TrailerOf(int number) const {
  const bool isCompact = compact_ > 0 && number == blockCount_;
  return isCompact ? static_cast<int>(compact_) - form_.trailerBytes : form_.trailer;
}

const StoredBlock& RecordingReader::Read(int number) {
  block_ = {.number = number, .bytes = std::move(block_.bytes), .trailer = TrailerOf(number)};
  ReadBytes((number - 1) * kBlockBytes, block_.trailer + form_.trailerBytes, block_.bytes);
  ParseBlock(block_, form_.is20D);
  return block_;
}

std::set<int> RecordingReader::MaskedCameras() {
  std::set<int> cameras;
  Bytes trailer;
  for (int number = 1; number <= blockCount_; ++number) {
    ReadBytes((number - 1) * kBlockBytes + TrailerOf(number), form_.trailerBytes, trailer);
    const Layout* layout = FindLayout(trailer[kType], form_.is20D);
    if (layout == nullptr) continue;
    std::uint32_t mask = Get(trailer.data() + layout->cameraMask, 2);
    if (layout->highCameraMask != kNone)
      mask |= Get(trailer.data() + layout->highCameraMask, 2) << 16;
    for (int camera = 1; mask != 0; ++camera, mask >>= 1)
      if ((mask & 1) != 0) cameras.insert(camera);
  }
  return cameras;
}

FileFacts RecordingReader::Facts(bool withSum) {
  FileFacts facts = {.path = path_, .size = size_};
  if (!withSum) return facts;
  Bytes bytes;
  while (summed_ < size_) ReadBytes(summed_, std::min(size_ - summed_, kBlockBytes), bytes);
  for (const std::uint8_t byte : sum_.Finish())
    for (const int digit : {byte >> 4, byte & 15}) facts.sum += "0123456789abcdef"[digit];
  return facts;
}

}  // namespace tools
