#include "attacks/fuzz/hostile_recording.h"

#include <algorithm>

namespace {

constexpr std::size_t kBlock = 2097152;
constexpr int kMostBlocks = 3;
constexpr std::size_t kSector = 512;
constexpr int kTail = 56;

/// The buffer of all recordings, all zeros between them: a run would wait for fresh pages longest.
std::string& Buffer() {
  static std::string buffer(kMostBlocks * kBlock, '\0');
  return buffer;
}

const std::string& Noise() {
  static const std::string noise = [] {
    std::string bytes = Picture(kBlock + 1000, 3);
    std::replace(bytes.begin(), bytes.end(), '\0', '\1');
    return bytes;
  }();
  return noise;
}

/// Where the block types keep what.
struct Layout {
  int entries, entrySize, sectorInEntry, count;
};

Layout LayoutOf(int type) {
  if (type == 0x20) return {64, 6, 2, 32};
  if (type == 0x00 || type == 0x10) return {288, 5, 2, 28};
  return {36, 4, 0, 32};
}

/// Sectors that the image and its tail take.
int PictureSectors(const TestImage& image) {
  return static_cast<int>((image.bytes.size() + (image.tail ? kTail : 0) + kSector - 1) / kSector);
}

/// Sectors that the image takes with all that belongs to it.
int SectorsOf(const TestImage& image) {
  return PictureSectors(image) + (image.text.empty() ? 0 : 1) +
         static_cast<int>(image.sound.size() / kSector);
}

/// Lets the image take as many sectors as are free, so that the block is full to its trailer.
void Stretch(TestImage& image, int freeSectors) {
  const int sectors = freeSectors - SectorsOf(image) + PictureSectors(image);
  if (sectors < 1) return;
  image.bytes = Noise().substr(1, static_cast<std::size_t>(sectors) * kSector - kTail - 1);
}

}  // namespace

HostileRecording::HostileRecording(FuzzedDataProvider& data) {
  constexpr int kTypes[] = {0x30, 0x60, 0x20, 0x10, 0x00};
  type_ = data.PickValueInArray(kTypes);
  blocks_ = data.ConsumeIntegralInRange(1, kMostBlocks);
  bytes = std::move(Buffer());
  for (int block = 0; block < blocks_; ++block) AddBlock(data, block);
  bytes.resize(static_cast<std::size_t>(blocks_) * kBlock);
  sound_ = data.ConsumeBool();
  if (!sound_) Damage(data);
}

HostileRecording::~HostileRecording() {
  bytes.resize(kMostBlocks * kBlock);
  for (const auto& [offset, length] : written_)
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(offset), length, '\0');
  Buffer() = std::move(bytes);
}

std::vector<TestImage> HostileRecording::Images(int first, int last) const {
  std::vector<TestImage> images;
  for (const auto& [block, image] : images_)
    if (block + 1 >= first && block + 1 <= last) images.push_back(image);
  return images;
}

std::size_t HostileRecording::TrailerOf(int block) const {
  return static_cast<std::size_t>(block) * kBlock + (Is20D() ? 0x1FF400 : 0x1FFC00);
}

void HostileRecording::Put(std::size_t offset, int width, std::uint32_t value) {
  std::string part;
  for (int i = width - 1; i >= 0; --i) part += static_cast<char>(value >> 8 * i);
  fields_.push_back(offset);
  PutBytes(offset, part);
}

void HostileRecording::PutBytes(std::size_t offset, const std::string& part) {
  bytes.replace(offset, part.size(), part);
  written_.emplace_back(offset, part.size());
}

TestImage HostileRecording::NextImage(FuzzedDataProvider& data) {
  const bool isOld = type_ == 0x00 || type_ == 0x10;
  TestImage image;
  image.camera = data.ConsumeIntegralInRange(0, type_ == 0x20 ? 31 : 15);
  image.seconds = type_ == 0x20 ? start_ + data.ConsumeIntegralInRange(0, 65535)
                                : data.ConsumeIntegral<std::int32_t>();
  image.flags = data.ConsumeIntegralInRange(0, 3);
  image.tail = (type_ != 0x20 && !isOld) || data.ConsumeBool();
  if (image.tail) {
    const auto length = static_cast<std::size_t>(data.ConsumeIntegralInRange(1, 16));
    image.title = std::string(length, data.ConsumeIntegralInRange('A', 'Z'));
  } else {
    image.title = isOld ? "Table" : "Camera " + std::to_string(image.camera + 1);
  }
  if (!isOld && data.ConsumeIntegralInRange(0, 3) == 0)
    image.text = std::string(data.ConsumeIntegralInRange<std::size_t>(1, 500), 't');
  if (!isOld && data.ConsumeIntegralInRange(0, 3) == 0)
    image.sound = Noise().substr(1, kSector * data.ConsumeIntegralInRange<std::size_t>(1, 31));
  const int sectors = data.ConsumeIntegralInRange(0, 15) == 0 ? data.ConsumeIntegralInRange(1, 2000)
                                                              : data.ConsumeIntegralInRange(1, 4);
  // Up to the tail, or short of it by as much as a recorder ever pads.
  const int free = image.tail ? kTail + data.PickValueInArray({0, 1, 56, 455}) : 0;
  image.bytes = Noise().substr(
      images_.size() % 1000, static_cast<std::size_t>(sectors * static_cast<int>(kSector) - free));
  return image;
}

int HostileRecording::Store(const TestImage& image, int block, int sector) {
  const std::size_t base = static_cast<std::size_t>(block) * kBlock;
  const std::size_t begin = base + static_cast<std::size_t>(sector) * kSector;
  std::size_t end = begin + static_cast<std::size_t>(PictureSectors(image)) * kSector;
  PutBytes(begin, image.bytes);
  if (image.tail) {
    Put(end - kTail, 4, 0x38010000);
    Put(end - kTail + 4, 4, static_cast<std::uint32_t>(image.seconds));
    PutBytes(end - kTail + 8, image.title);
  }
  if (!image.text.empty()) {
    Put(end, 4, 0x20000802);
    Put(end + 4, 4, static_cast<std::uint32_t>(image.text.size()));
    PutBytes(end + 12, image.text);
    end += kSector;
  }
  PutBytes(end, image.sound);
  end += image.sound.size();
  return static_cast<int>((end - base) / kSector);
}

void HostileRecording::PutEntry(const TestImage& image, std::size_t trailer, int k, int sector) {
  const Layout layout = LayoutOf(type_);
  const std::size_t entry =
      trailer + static_cast<std::size_t>(layout.entries + k * layout.entrySize);
  const auto flags = static_cast<std::uint32_t>(image.flags);
  const auto camera = static_cast<std::uint32_t>(image.camera);
  const std::uint32_t soundAndText =
      static_cast<std::uint32_t>(image.sound.size() / kSector) << 3 | (image.text.empty() ? 0 : 1);
  if (layout.entrySize == 5) {
    Put(entry, 1, flags << 4);
    Put(entry + 2, 2, static_cast<std::uint32_t>(sector));
    Put(entry + 4, 1, camera);
    return;
  }
  if (type_ == 0x20) Put(entry, 2, static_cast<std::uint32_t>(image.seconds - start_));
  const std::size_t common = entry + static_cast<std::size_t>(layout.sectorInEntry);
  Put(common, 2, flags << 12 | static_cast<std::uint32_t>(sector));
  Put(common + 2, 1, soundAndText);
  Put(common + 3, 1, camera);
}

void HostileRecording::PutHeader(FuzzedDataProvider& data, std::size_t trailer, int count) {
  Put(trailer + 4, 4, static_cast<std::uint32_t>(start_));
  Put(trailer + 8, 4, static_cast<std::uint32_t>(data.ConsumeIntegral<std::int32_t>()));
  Put(trailer + 13, 1, static_cast<std::uint32_t>(type_));
  Put(trailer + 18, 2, data.ConsumeIntegral<std::uint16_t>());
  Put(trailer + 22, 2, data.ConsumeIntegral<std::uint16_t>());
  Put(trailer + static_cast<std::size_t>(LayoutOf(type_).count), 2,
      static_cast<std::uint32_t>(count));
  if (LayoutOf(type_).entrySize != 5) return;
  Put(trailer + 30, 1, data.ConsumeIntegral<std::uint8_t>());
  for (std::size_t camera = 0; camera < 16; ++camera) PutBytes(trailer + 32 + 16 * camera, "Table");
}

void HostileRecording::AddBlock(FuzzedDataProvider& data, int block) {
  const std::size_t trailer = TrailerOf(block);
  const int bias = Is20D() ? 6 : 2;
  const int lastSector = static_cast<int>((trailer % kBlock) / kSector);
  start_ = data.ConsumeIntegralInRange(-70000, 0x7FFE0000);
  int count = data.ConsumeIntegralInRange(0, 7);
  const Layout layout = LayoutOf(type_);
  const int most = ((Is20D() ? 3072 : 1024) - layout.entries - 4) / layout.entrySize;
  if (count == 7) count = data.ConsumeIntegralInRange(0, most);
  int sector = 0;
  int stored = 0;
  for (; stored < count && data.remaining_bytes() > 0; ++stored) {
    TestImage image = NextImage(data);
    if (image.tail && data.ConsumeIntegralInRange(0, 15) == 0) Stretch(image, lastSector - sector);
    if (SectorsOf(image) > lastSector - sector) break;
    PutEntry(image, trailer, stored, sector + bias);
    sector = Store(image, block, sector);
    images_.emplace_back(block, image);
  }
  Put(trailer + static_cast<std::size_t>(layout.entries + stored * layout.entrySize +
                                         layout.sectorInEntry),
      2, static_cast<std::uint32_t>(sector + bias));
  PutHeader(data, trailer, stored);
}

void HostileRecording::Damage(FuzzedDataProvider& data) {
  for (int n = data.ConsumeIntegralInRange(1, 8); n > 0; --n) {
    const std::size_t trailer = TrailerOf(data.ConsumeIntegralInRange(0, blocks_ - 1));
    const std::size_t length = Is20D() ? 3072 : 1024;
    const std::size_t at =
        data.ConsumeBool()
            ? fields_[data.ConsumeIntegralInRange<std::size_t>(0, fields_.size() - 1)]
            : trailer + data.ConsumeIntegralInRange<std::size_t>(0, length - 5);
    PutBytes(at, data.ConsumeBytesAsString(data.ConsumeIntegralInRange<std::size_t>(1, 4)));
  }
  if (data.ConsumeBool()) bytes.resize(data.ConsumeIntegralInRange<std::size_t>(0, bytes.size()));
}
