#include "save/camera_index.h"

#include <vector>

#include "capture/mdlFileProcessing.h"
#include "storage/pacer.h"

using mdlFileProcessing::bln20D;

CameraIndex IndexBlockRange(platform::Core& system, SaveProgress& progress, SourceFile& source,
                            std::int32_t firstBlock, std::int32_t lastBlock) {
  Pacer pacer(system.clock, [&progress](std::int32_t, std::int32_t) { return progress.GoOn(); });
  const format::Variant& variant = format::VariantOf(bln20D);
  std::vector<std::uint8_t> trailer(static_cast<std::size_t>(variant.trailerLength));
  CameraIndex index;
  const std::int32_t count = lastBlock - firstBlock + 1;
  index.blocks.Redimension(static_cast<std::size_t>(count));
  for (std::int32_t b = 1; b <= count; ++b) {
    const std::int32_t number = firstBlock + b - 1;
    if (source.ReadTrailer(number, 0, trailer) != variant.trailerLength)
      return {.end = SaveEnd::kNotRead};
    IndexedBlock& block = index.blocks[b] = DecodeList(trailer, source.TrailerOf(number), bln20D);
    if (block.type) index.blnSourceNotPAL = block.isNotPal;
    if (!pacer.GoOn(b, count)) return {.end = SaveEnd::kCancelled};
  }
  return index;
}
