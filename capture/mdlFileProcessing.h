#pragma once

#include <cstdint>
#include <string>

#include "capture/block_type.h"
#include "capture/one_based.h"
#include "platform/date_text.h"
#include "platform/files.h"
#include "storage/pacer.h"

/// The source index, which is of the recording that was opened last, and the scans that fill it.
namespace mdlFileProcessing {

/// Whether the source is a .20D file.
extern bool bln20D;

/// Number of blocks of the source.
extern std::int32_t lngBlockCount;
/// Start and end capture time stamp of each block, 1 to `lngBlockCount`.
extern OneBased<std::int32_t> lngBlockStart;
extern OneBased<std::int32_t> lngBlockEnd;
/// The same as dates.
extern OneBased<platform::Date> dtBlockStart;
extern OneBased<platform::Date> dtBlockEnd;
/// Cameras that its blocks can have: 32 as soon as one of them has the type of such recorders.
extern int lngCameraCount;
/// Block-type byte of the last block that a scan has read.
extern std::uint8_t bytBlockStatus;

/// The block type of the source, by `bytBlockStatus`; null when its kind of file has none such.
const format::BlockType* SourceType();

/// Camera mask of each block of the range that was checked last, from 1 on; bit c is camera c + 1.
extern OneBased<std::int32_t> lngCamMask;
/// The same for cameras 17 to 32, bit c being camera c + 17; empty unless `lngCameraCount` is 32.
extern OneBased<std::int32_t> lngCamMaskAlt;

/// Blocks of the largest source that is taken: 16 TiB, the most that a file of the usual file
/// systems holds. Its index takes some 200 MB.
inline constexpr std::int32_t kMostBlocks = 1 << 23;

/// How the reading of a source has ended. A file that ends early is read to its end as it is.
enum class ReadEnd : std::int16_t {
  kNotValid = 0,  ///< To the end: it is no recording of its kind.
  kDone = 1,
  kFailed,   ///< A read has failed, or the file cannot be opened.
  kStopped,  ///< The pacing said so.
};

/// What the reading of a source answers.
struct ReadAnswer {
  ReadEnd end = ReadEnd::kDone;
  platform::Failure why = {};  ///< `kFailed`: the reason, as far as the system has told it.
};

/// Reads every block's trailer into the source index. `bln20D` must be set. The source is valid
/// when the last block has a type that fits its kind; one that holds no block or more than
/// `kMostBlocks` is not, and has an empty index. So has one that was not read to its end.
ReadAnswer ScanSourceFile(platform::Files& files, const std::string& path, Pacer* pacer = nullptr);

/// Reads the camera masks of blocks `firstBlock` to `lastBlock` (both from 1, inclusive) of the
/// file that was scanned last; blocks outside its index are left out. Unless it is done there are
/// no masks.
ReadAnswer CheckAvailability(platform::Files& files, const std::string& path,
                             std::int32_t firstBlock, std::int32_t lastBlock,
                             Pacer* pacer = nullptr);

}  // namespace mdlFileProcessing
