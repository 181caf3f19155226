#include "tools/payload.h"

#include <algorithm>
#include <array>

#include "tools/listing.h"

namespace tools {
namespace {

constexpr std::array<std::uint8_t, 8> kMagic = {'T', 'E', 'S', 'T', 'I', 'M', 'G', '1'};
constexpr int kCamera = 8;
constexpr int kTime = 12;
constexpr int kNumber = 16;
constexpr int kLength = 20;
constexpr int kChecksum = 24;

std::uint32_t Checksum(const std::uint8_t* bytes, std::size_t count) {
  return static_cast<std::uint32_t>(Hash(bytes + kPayloadHeaderBytes, count - kPayloadHeaderBytes));
}

}  // namespace

std::string MakePayload(int camera, std::int64_t seconds, std::uint32_t number, int length) {
  std::string text = Random(kSeed + number).Text(static_cast<std::size_t>(length));
  if (!text.empty()) text.back() |= 1;
  if (length <= kPayloadHeaderBytes) return text;
  auto* bytes = reinterpret_cast<std::uint8_t*>(text.data());
  std::copy(kMagic.begin(), kMagic.end(), bytes);
  Put(bytes + kCamera, 4, static_cast<std::uint32_t>(camera));
  Put(bytes + kTime, 4, static_cast<std::uint32_t>(seconds));
  Put(bytes + kNumber, 4, number);
  Put(bytes + kLength, 4, static_cast<std::uint32_t>(length));
  Put(bytes + kChecksum, 4, Checksum(bytes, text.size()));
  return text;
}

std::string CheckImage(const StoredBlock& block, const StoredImage& image) {
  if (!image.trouble.empty()) return image.trouble;
  const std::uint8_t* bytes = block.At(image.begin);
  const int count = image.bytesEnd - image.begin;
  if (count < kPayloadHeaderBytes || !std::equal(kMagic.begin(), kMagic.end(), bytes))
    return "is none of make_recording's";
  const std::uint32_t length = Get(bytes + kLength, 4);
  if (length > static_cast<std::uint32_t>(count) || length < kPayloadHeaderBytes)
    return "is shorter than its header says";
  if (Checksum(bytes, length) != Get(bytes + kChecksum, 4)) return "has a wrong checksum";
  const int camera = static_cast<int>(Get(bytes + kCamera, 4));
  if (camera != image.camera + 1) return "shows camera " + std::to_string(camera);
  // An image's time is its own, or only spread over its block.
  const bool hasOwnTime = image.hasTail || block.layout->entryTime != kNone;
  const std::int64_t seconds = Get(bytes + kTime, 4);
  return !hasOwnTime || seconds == image.seconds ? "" : "shows " + TimeText(seconds);
}

}  // namespace tools
