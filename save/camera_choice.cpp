#include "save/camera_choice.h"

#include "capture/mdlFileProcessing.h"
#include "save/save_state.h"

using mdlFileProcessing::lngCamMask;
using mdlFileProcessing::lngCamMaskAlt;

namespace {

constexpr int kMaskCameras = 16;  // Cameras that one availability mask tells of.
constexpr std::uint32_t kMask = 0xFFFF;

bool Has32Cameras() {
  return CameraCount() > kMaskCameras;
}

/// The cameras that occur in at least one block.
std::uint32_t Union(const OneBased<std::int32_t>& masks) {
  std::uint32_t cameras = 0;
  for (int block = 1; block <= masks.UpperBound(); ++block)
    cameras |= static_cast<std::uint32_t>(masks[block]);
  return cameras & kMask;
}

}  // namespace

int CameraCount() {
  const format::BlockType* type = mdlFileProcessing::SourceType();
  return type ? type->cameras : kMaskCameras;
}

std::uint32_t AvailableCameras() {
  const std::uint32_t low = Union(lngCamMask);
  return Has32Cameras() ? low | Union(lngCamMaskAlt) << kMaskCameras : low;
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
