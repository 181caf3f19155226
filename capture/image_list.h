#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "capture/block_type.h"
#include "capture/fields.h"
#include "capture/mdlCreate60DFile.h"
#include "capture/source_file.h"

/// The images of a block: decoded from its trailer as its list tells them, then each from its own
/// bytes.

/// One image as its block's list tells it. A long recording has many millions of them. Where it
/// lies is told in bytes from the block's start.
struct IndexedImage {
  std::uint16_t startSector = 0;  ///< From the block's start.
  std::uint16_t endSector = 0;    ///< Behind what belongs to it; 0 when it lies where none can.
  std::int32_t seconds = 0;       ///< Capture time stamp, of images without a tail.
  std::uint8_t camera = 0;        ///< From 0; above 15 in block type 0x20 only.
  std::uint8_t flags = 0;         ///< 0 to 3.
  std::uint8_t textSectors = 0;   ///< 0 to 3.
  std::uint8_t soundSectors = 0;  ///< 0 to 31.

  bool IsDamaged() const { return endSector == 0; }
  std::int32_t Begin() const { return startSector * format::kSectorSize; }
  /// Its text, and the end of its bytes, of which the tail is the last part.
  std::int32_t Text() const { return Sound() - textSectors * format::kSectorSize; }
  std::int32_t Sound() const { return End() - soundSectors * format::kSectorSize; }
  std::int32_t End() const { return endSector * format::kSectorSize; }
};

/// The image list of one block.
struct IndexedBlock {
  const format::BlockType* type = nullptr;  ///< None in a damaged block, which has no list either.
  bool isNotPal = false;
  std::vector<IndexedImage> images = {};
  /// Titles of the cameras, from camera 0 on; none in blocks without a title table.
  std::vector<std::string> titles = {};
};

/// The list that a trailer holds, of a block whose data end where its trailer begins,
/// `trailerPlace` bytes from its start.
IndexedBlock DecodeList(mdlFileProcessing::Bytes trailer, std::int32_t trailerPlace, bool is20D);

/// The list of a block (from 1) of a file; none when its trailer cannot be read whole.
std::optional<IndexedBlock> ReadList(SourceFile& source, std::int32_t block);

/// An image with all that belongs to it, from its bytes, begin to end; it refers to them. Its title
/// is the one in its tail, else the one in its block's table, else one made from its camera.
mdlCreate60DFile::NewImage DecodeImage(const IndexedBlock& block, const IndexedImage& image,
                                       mdlFileProcessing::Bytes bytes);
