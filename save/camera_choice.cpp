#include "save/camera_choice.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "capture/image_list.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/save_state.h"

using mdlFileProcessing::lngCamMask;
using mdlFileProcessing::lngCamMaskAlt;

namespace {

constexpr int kMaskCameras = 16;  // Cameras that one availability mask tells of.
constexpr std::uint32_t kMask = 0xFFFF;

bool Has32Cameras() {
  return mdlFileProcessing::lngCameraCount > kMaskCameras;
}

/// The cameras that occur in at least one block.
std::uint32_t Union(const OneBased<std::int32_t>& masks) {
  std::uint32_t cameras = 0;
  for (int block = 1; block <= masks.UpperBound(); ++block)
    cameras |= static_cast<std::uint32_t>(masks[block]);
  return cameras & kMask;
}

/// The first block of the range that has a camera (from 0), counted from 1; 0 for none.
std::int32_t FirstBlockWith(int camera) {
  const auto& masks = camera < kMaskCameras ? lngCamMask : lngCamMaskAlt;
  for (std::int32_t block = 1; block <= masks.UpperBound(); ++block)
    if ((masks[block] >> camera % kMaskCameras & 1) != 0) return block;
  return 0;
}

/// Bytes as the letters that they are in Latin 1, without control characters.
std::string Utf8OfLatin1(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto letter = static_cast<unsigned char>(byte);
    if (letter >= 0x80) {
      text += static_cast<char>(0xC0 | letter >> 6);
      text += static_cast<char>(0x80 | (letter & 0x3F));
    } else if (letter >= ' ') {
      text += byte;
    }
  }
  return text;
}

}  // namespace

std::uint32_t AvailableCameras() {
  const std::uint32_t low = Union(lngCamMask);
  return Has32Cameras() ? low | Union(lngCamMaskAlt) << kMaskCameras : low;
}

std::string FirstTitle(platform::Files& files, const std::string& path, std::int32_t firstBlock,
                       int camera) {
  const std::int32_t number = FirstBlockWith(camera);
  SourceFile source(files, path);
  if (number == 0 || !source.IsOpen()) return "";
  const std::int32_t block = firstBlock + number - 1;
  const std::optional<IndexedBlock> list = ReadList(source, block);
  if (!list) return "";
  const auto image = std::ranges::find_if(list->images, [camera](const IndexedImage& each) {
    return each.camera == camera && !each.IsDamaged();
  });
  if (image == list->images.end()) return "";
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(image->End() - image->Begin()));
  if (source.Read(block, image->Begin(), bytes) != std::ssize(bytes)) return "";
  return Utf8OfLatin1(DecodeImage(*list, *image, bytes).title);
}

SelectionMode ChooseCameras(std::uint32_t enabled, std::uint32_t ticked) {
  const std::uint32_t possible = Has32Cameras() ? enabled : enabled & kMask;
  const std::uint32_t chosen = possible & ticked;
  mdlSave::lngCamSelLow = static_cast<std::int32_t>(chosen & kMask);
  mdlSave::lngCamSelHigh = static_cast<std::int32_t>(chosen >> kMaskCameras);
  if (chosen == 0) return kNoCamera;
  return chosen == possible ? kAllCameras : kSomeCameras;
}

Room RoomFor(const SpaceNeed& need, SelectionMode mode) {
  const bool isBound = mode == kSomeCameras;
  if (need.sizeMB > need.freeMB) return isBound ? Room::kPerhaps : Room::kTooLittle;
  const std::uint64_t bytes = std::uint64_t{static_cast<std::uint32_t>(need.sizeMB)} << 20;
  return bytes > need.largestFile && !isBound ? Room::kTooLarge : Room::kEnough;
}
