#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "capture/block_type.h"
#include "capture/one_based.h"
#include "platform/platform.h"
#include "save/operations.h"
#include "save/save_progress.h"

/// The camera index pass: reads the image list of every block of a range, so that a save can pick
/// the images of chosen cameras without reading the others.

/// One image as its block's list tells it. A long recording has many millions of them: the record
/// keeps what the list stores, and everything else follows from that.
struct IndexedImage {
  std::uint16_t startSector = 0;  ///< Sector number of its first sector.
  std::uint16_t endSector = 0;    ///< Sector number behind what belongs to it.
  std::int32_t seconds = 0;       ///< Capture time stamp, of images without a tail.
  std::uint8_t camera = 0;        ///< From 0; above 15 in block type 0x20 only.
  std::uint8_t flags = 0;         ///< As stored: the flags in bits 5..4, sector bits below.
  std::uint8_t textSectors = 0;   ///< 0 to 3, as stored: the text bits.
  std::uint8_t soundSectors = 0;  ///< 0 to 31.
};

/// Titles of the cameras, from camera 0 on; one byte a character.
using CameraTitles = std::vector<std::string>;

/// The image list of one block.
struct IndexedBlock {
  const format::BlockType* type = nullptr;  ///< None in a damaged block, which has no list either.
  std::vector<IndexedImage> images;
  /// None in blocks without a title table; shared by successive blocks with the same titles.
  std::shared_ptr<const CameraTitles> titles;
};

/// What the pass has found.
struct CameraIndex {
  SaveEnd end = SaveEnd::kSaved;       ///< Anything else: why the index is not complete.
  OneBased<IndexedBlock> blocks = {};  ///< The range's blocks.
};

/// The source's video standard bit: not PAL. Set by the pass; the last good block wins.
extern bool blnSourceNotPAL;

/// Reads the lists of blocks `firstBlock` to `lastBlock` (from 1, inclusive) of the file that was
/// scanned last. Lets messages run on the way, and stops when the user has cancelled.
CameraIndex IndexBlockRange(platform::Platform& system, SaveProgress& progress,
                            const std::string& sourcePath, std::int32_t firstBlock,
                            std::int32_t lastBlock);
