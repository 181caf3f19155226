#include "tools/recording_reader.h"

#include <algorithm>
#include <stdexcept>

namespace tools {
namespace {

constexpr int kSectorNumbers = 4096;

/// At most `most` bytes, up to the first zero.
std::string GetText(const std::uint8_t* at, int most) {
  return {at, std::find(at, at + most, std::uint8_t{0})};
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Takes a block's trailer apart.
class BlockParser {
 public:
  explicit BlockParser(StoredBlock& block) : block_(block), layout_(*block.layout) {}

  void Parse() {
    const std::uint8_t* trailer = block_.Trailer();
    block_.start = Get(trailer + kStart, 4);
    block_.end = Get(trailer + kEnd, 4);
    block_.ntsc = (trailer[layout_.videoByte] & layout_.videoBit) != 0;
    block_.listedCount = static_cast<int>(Get(trailer + layout_.imageCount, 2));
    if (layout_.titleTable != kNone)
      for (int i = 0; i < kTitlesInTable; ++i)
        block_.titles.push_back(
            GetText(EntryAt(trailer + layout_.titleTable, i, kTitleBytes), kTitleBytes));
    if (block_.listedCount == 0) block_.trouble = "lists no image";
    if (block_.listedCount > layout_.mostImages)
      block_.trouble = "lists more images than it has room for";
    count_ = std::min(block_.listedCount, layout_.mostImages);
    for (int i = 0; i < count_; ++i) {
      block_.images.push_back(ParseImage(i));
      if (!block_.images.back().trouble.empty()) ++block_.damagedImages;
    }
  }

 private:
  const std::uint8_t* Entry(int i) const {
    return EntryAt(block_.Trailer() + layout_.list, i, layout_.entryBytes);
  }

  /// Where in the data area image `i` begins, or where the last one ends.
  int PlaceOf(int i) const {
    int sector = static_cast<int>(Get(Entry(i) + layout_.entrySector, 2));
    // A full block's end has one bit too many for the field.
    const bool isFullEnd = sector == kSectorNumbers && i == count_;
    if (layout_.entryParts != kNone && !isFullEnd) sector %= kSectorNumbers;
    return (sector - layout_.firstSector) * kSectorBytes;
  }

  StoredImage ParseImage(int i) const {
    const std::uint8_t* entry = Entry(i);
    const int parts = layout_.entryParts == kNone ? 0 : entry[layout_.entryParts];
    StoredImage image;
    image.index = i + 1;
    image.camera = entry[layout_.entryCamera] & (layout_.cameras == 32 ? 0xFF : 0x0F);
    image.flags = entry[layout_.entryFlags] >> 4 & 3;
    image.textSectors = parts & 3;
    image.begin = PlaceOf(i);
    image.end = PlaceOf(i + 1);
    image.soundBegin = image.end - (parts >> 3) * kSectorBytes;
    image.bytesEnd = image.soundBegin - image.textSectors * kSectorBytes;
    image.seconds = ListedTime(i);
    image.trouble = TroubleOf(image);
    if (image.trouble.empty()) ParseParts(image);
    return image;
  }

  std::int64_t ListedTime(int i) const {
    if (layout_.entryTime != kNone) return block_.start + Get(Entry(i) + layout_.entryTime, 2);
    return block_.start + (block_.end - block_.start) * i / std::max(count_ - 1, 1);
  }

  std::string TroubleOf(const StoredImage& image) const {
    if (image.begin < 0) return "begins before its block";
    if (image.begin >= image.bytesEnd) return "has an empty extent";
    return image.end > block_.trailer ? "reaches beyond its block's data" : "";
  }

  void ParseParts(StoredImage& image) const {
    if (image.textSectors > 0) image.text = ParseText(block_.At(image.bytesEnd));
    const std::uint8_t* tail = block_.At(image.bytesEnd - kTailBytes);
    image.hasTail = layout_.alwaysTails || std::equal(kTailMark.begin(), kTailMark.end(), tail);
    if (!image.hasTail) return;
    image.seconds = Get(tail + kTailTime, 4);
    image.title = GetText(tail + kTailTitle, kTitleBytes);
    image.bytesEnd -= kTailBytes;
  }

  static std::string ParseText(const std::uint8_t* sector) {
    if (!std::equal(kTextMark.begin(), kTextMark.end(), sector)) return "";
    const int length = std::clamp(GetSigned(sector + kTextLength), 0, kTextBytes);
    return {sector + kTextStart, sector + kTextStart + length};
  }

  StoredBlock& block_;
  const Layout& layout_;
  int count_ = 0;
};

}  // namespace

void ParseBlock(StoredBlock& block, bool is20D) {
  const Layout* layout = FindLayout(block.Trailer()[kType], is20D);
  block.isKnown = layout != nullptr;
  block.layout = block.isKnown ? layout : &FormOf(is20D);
  if (block.isKnown)
    BlockParser(block).Parse();
  else
    block.trouble = "is of no type that such a recording has";
}

std::string TitleOf(const StoredBlock& block, const StoredImage& image) {
  std::string title = Trimmed(image.title);
  if (!title.empty() || block.titles.empty()) return title;
  return Trimmed(block.titles[static_cast<std::size_t>(image.camera)]);
}

bool IsNameOf20D(const std::string& path) {
  const std::size_t length = path.size();
  return length >= 3 && path.compare(length - 3, 2, "20") == 0 && (path.back() | 0x20) == 'd';
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
  const int end = layout->list + count * layout->entryBytes + layout->entrySector;
  const std::int64_t sectors = static_cast<int>(Get(trailer.data() + end, 2)) - layout->firstSector;
  return sectors * kSectorBytes == data;
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
  Bytes bytes = std::move(block_.bytes);
  block_ = StoredBlock();
  block_.number = number;
  block_.trailer = TrailerOf(number);
  block_.compact = block_.trailer < form_.trailer;
  ReadBytes((number - 1) * kBlockBytes, block_.trailer + form_.trailerBytes, bytes);
  block_.bytes = std::move(bytes);
  ParseBlock(block_, form_.is20D);
  return block_;
}

std::vector<int> RecordingReader::MaskedCameras() {
  std::uint32_t mask = 0;
  Bytes trailer;
  for (int number = 1; number <= blockCount_; ++number) {
    ReadBytes((number - 1) * kBlockBytes + TrailerOf(number), form_.trailerBytes, trailer);
    const Layout* layout = FindLayout(trailer[kType], form_.is20D);
    if (layout == nullptr) continue;
    mask |= Get(trailer.data() + layout->cameraMask, 2);
    if (layout->highCameraMask != kNone)
      mask |= Get(trailer.data() + layout->highCameraMask, 2) << 16;
  }
  std::vector<int> cameras;
  for (int camera = 1; camera <= 32; ++camera)
    if ((mask >> (camera - 1) & 1) != 0) cameras.push_back(camera);
  return cameras;
}

std::string RecordingReader::Sum() {
  Bytes bytes;
  while (summed_ < size_) ReadBytes(summed_, std::min(size_ - summed_, kBlockBytes), bytes);
  std::string digits;
  for (const std::uint8_t byte : sum_.Finish())
    for (const int digit : {byte >> 4, byte & 15}) digits += "0123456789abcdef"[digit];
  return digits;
}

}  // namespace tools
