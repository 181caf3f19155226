#pragma once

#include <cstdint>

#include "capture/image_list.h"
#include "capture/one_based.h"
#include "capture/source_file.h"
#include "platform/platform.h"
#include "save/operations.h"
#include "save/save_progress.h"

/// The camera index pass: reads the image list of every block of a range, so that a save can pick
/// the images of chosen cameras without reading the others.

/// What the pass has found.
struct CameraIndex {
  SaveEnd end = SaveEnd::kSaved;       ///< Anything else: why the index is not complete.
  OneBased<IndexedBlock> blocks = {};  ///< The range's blocks.
  bool blnSourceNotPAL = false;        ///< The video standard: not PAL. The last good block wins.
};

/// Reads the lists of blocks `firstBlock` to `lastBlock` (from 1, inclusive) of a file. Lets
/// messages run on the way, and stops when the user has cancelled.
CameraIndex IndexBlockRange(platform::Core& system, SaveProgress& progress, SourceFile& source,
                            std::int32_t firstBlock, std::int32_t lastBlock);
