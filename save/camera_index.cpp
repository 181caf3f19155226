#include "save/camera_index.h"

#include <optional>
#include <utility>

CameraIndex IndexBlockRange(platform::Core& system, SaveProgress& progress, SourceFile& source,
                            std::int32_t firstBlock, std::int32_t lastBlock) {
  Pacer pacer = PacerOf(progress, system.clock);
  CameraIndex index;
  const std::int32_t count = lastBlock - firstBlock + 1;
  index.blocks.Redimension(static_cast<std::size_t>(count));
  for (std::int32_t b = 1; b <= count; ++b) {
    std::optional<IndexedBlock> block = ReadList(source, firstBlock + b - 1);
    if (!block) return {.end = SaveEnd::kNotRead};
    if (block->type) index.blnSourceNotPAL = block->isNotPal;
    index.blocks[b] = std::move(*block);
    if (!pacer.GoOn(b, count)) return {.end = SaveEnd::kCancelled};
  }
  return index;
}
