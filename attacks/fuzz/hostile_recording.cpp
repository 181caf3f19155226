#include "attacks/fuzz/hostile_recording.h"

#include <algorithm>

#include "tools/damage.h"

namespace {

using tools::kSectorBytes;
using tools::kTailBytes;

constexpr int kMostBlocks = 3;
constexpr auto kBlock = static_cast<std::size_t>(tools::kBlockBytes);
constexpr char kTableTitle[] = "Table";

/// The memory of all recordings: a run would wait for fresh pages longest.
std::string& Buffer() {
  static std::string buffer(kMostBlocks * kBlock, '\0');
  return buffer;
}

tools::BlockBuilder& Builder() {
  static tools::BlockStyle style = {.tight = true};
  style.titles.fill(kTableTitle);
  static tools::BlockBuilder builder(style);
  return builder;
}

/// Bytes other than zero, so that no image ends in what could be padding.
std::string Noise(std::size_t start, int count) {
  static const std::string noise = [] {
    std::string bytes = tools::Random(3).Text(kBlock + 1000);
    std::replace(bytes.begin(), bytes.end(), '\0', '\1');
    return bytes;
  }();
  return noise.substr(start, static_cast<std::size_t>(std::max(count, 0)));
}

const tools::Layout& NextLayout(FuzzedDataProvider& data, bool is20D) {
  if (is20D) return tools::FormOf(true);
  constexpr std::uint8_t kTypes[] = {0x30, 0x20, 0x10, 0x00};
  return *tools::FindLayout(data.PickValueInArray(kTypes), false);
}

void AddTitle(FuzzedDataProvider& data, const tools::Layout& layout, tools::Image& image) {
  image.tail = layout.alwaysTails || data.ConsumeBool();
  if (image.tail) {
    const auto length = static_cast<std::size_t>(data.ConsumeIntegralInRange(1, 16));
    image.title = std::string(length, data.ConsumeIntegralInRange('A', 'Z'));
  } else {
    image.title = layout.titleTable != tools::kNone ? kTableTitle
                                                    : "Camera " + std::to_string(image.camera + 1);
  }
}

/// Text and sound, of as many sectors together as this answers.
int AddParts(FuzzedDataProvider& data, tools::Image& image) {
  int sectors = 0;
  if (data.ConsumeIntegralInRange(0, 3) == 0) {
    image.text = std::string(data.ConsumeIntegralInRange<std::size_t>(1, tools::kTextBytes), 't');
    sectors = 1;
  }
  if (data.ConsumeIntegralInRange(0, 3) == 0) {
    const int sound = data.ConsumeIntegralInRange(1, 31);
    image.sound = Noise(1, sound * kSectorBytes);
    sectors += sound;
  }
  return sectors;
}

tools::Image NextImage(FuzzedDataProvider& data, const tools::Layout& layout, std::int32_t start,
                       std::size_t number) {
  tools::Image image;
  image.camera = data.ConsumeIntegralInRange(0, layout.cameras - 1);
  image.seconds = layout.entryTime != tools::kNone ? start + data.ConsumeIntegralInRange(0, 65535)
                                                   : data.ConsumeIntegral<std::int32_t>();
  image.flags = data.ConsumeIntegralInRange(0, 3);
  AddTitle(data, layout, image);
  const int parts = layout.entryParts != tools::kNone ? AddParts(data, image) : 0;
  int sectors = data.ConsumeIntegralInRange(0, 15) == 0 ? data.ConsumeIntegralInRange(1, 2000)
                                                        : data.ConsumeIntegralInRange(1, 4);
  // Now and then up to the trailer.
  if (image.tail && data.ConsumeIntegralInRange(0, 15) == 0)
    sectors = std::max(1, Builder().FreeSectors() - parts);
  // Up to the tail, or short of it by as much as a recorder ever pads.
  const int free = image.tail ? kTailBytes + data.PickValueInArray({0, 1, 56, 455}) : 0;
  image.bytes = Noise(number % 1000, sectors * kSectorBytes - free);
  return image;
}

}  // namespace

HostileRecording::HostileRecording(FuzzedDataProvider& data)
    : is20D_(data.ConsumeIntegralInRange(0, 3) == 0) {
  bytes = std::move(Buffer());
  const int count = data.ConsumeIntegralInRange(1, kMostBlocks);
  bytes.resize(static_cast<std::size_t>(count) * kBlock);
  while (Blocks() < count) AddBlock(data);
  sound_ = data.ConsumeBool();
  if (!sound_) Damage(data);
}

HostileRecording::~HostileRecording() {
  Buffer() = std::move(bytes);
}

void HostileRecording::AddBlock(FuzzedDataProvider& data) {
  const tools::Layout& layout = NextLayout(data, is20D_);
  layouts_.push_back(&layout);
  // What is of no type is damaged, whatever it holds.
  const bool isJunk = data.ConsumeIntegralInRange(0, 15) == 0;
  endsWell_ = !isJunk;
  tools::BlockBuilder& builder = Builder();
  builder.Begin(layout, 1);
  const auto start = data.ConsumeIntegralInRange<std::int32_t>(-70000, 0x7FFE0000);
  builder.SetTimes(start, data.ConsumeIntegral<std::int32_t>());
  int count = data.ConsumeIntegralInRange(0, 7);
  if (count == 7) count = data.ConsumeIntegralInRange(0, layout.mostImages);
  for (; builder.ImageCount() < count && data.remaining_bytes() > 0;) {
    const tools::Image image = NextImage(data, layout, start, images_.size());
    if (!builder.Fits(image)) break;
    builder.Add(image);
    if (endsWell_) images_.push_back({Blocks(), &layout, image});
  }
  const tools::Bytes& block = builder.Finish();
  const auto at = bytes.begin() + (Blocks() - 1) * tools::kBlockBytes;
  std::copy(block.begin(), block.end(), at);
  if (isJunk) at[layout.trailer + tools::kType] = data.PickValueInArray({'\x01', '\x40', '\xFF'});
}

void HostileRecording::DamageBlock(FuzzedDataProvider& data, std::size_t block) {
  const tools::Layout& layout = *layouts_[block];
  auto* begin = reinterpret_cast<std::uint8_t*>(bytes.data() + block * kBlock);
  const auto& kinds = tools::DamageKinds();
  const auto kind = data.ConsumeIntegralInRange<std::size_t>(0, 2 * kinds.size());
  if (kind < kinds.size()) {
    tools::Random random(data.ConsumeIntegral<std::uint8_t>());
    tools::Victim victim = {layout, begin, random};
    return kinds[kind].apply(victim);
  }
  // Some bytes of the trailer, or of what lies at the edges of a sector: tails and texts.
  const int place = data.ConsumeBool()
                        ? layout.trailer + data.ConsumeIntegralInRange(0, layout.trailerBytes - 5)
                        : data.ConsumeIntegralInRange(0, 255) * kSectorBytes +
                              data.PickValueInArray({0, 4, 8, 456, 460, 464});
  const std::string junk =
      data.ConsumeBytesAsString(data.ConsumeIntegralInRange<std::size_t>(1, 4));
  std::copy(junk.begin(), junk.end(), begin + place);
}

void HostileRecording::Damage(FuzzedDataProvider& data) {
  for (int n = data.ConsumeIntegralInRange(1, 8); n > 0; --n)
    DamageBlock(data, data.ConsumeIntegralInRange<std::size_t>(0, layouts_.size() - 1));
  if (data.ConsumeBool()) bytes.resize(data.ConsumeIntegralInRange<std::size_t>(0, bytes.size()));
}
