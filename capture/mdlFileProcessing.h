#pragma once

#include <cstdint>
#include <string>

#include "capture/block_type.h"
#include "capture/breathing.h"
#include "capture/one_based.h"
#include "platform/date_text.h"
#include "platform/files.h"

/// Reading of capture files: the source file's handle and buffer, the source index, and the scans
/// that fill it. One source file is read at a time; its routines share this state.
namespace mdlFileProcessing {

/// The capture file that is open for reading. Whoever opened it closes it, once.
extern platform::FileHandle hSourceFile;
/// What the last positioned read has read.
extern OneBased<std::uint8_t> bytRecord;
/// Offset inside a block at which positioned reads start, bytes.
extern std::int32_t lngRecordOffset;
/// Bytes that the last read has read.
extern std::int32_t lngBytesRead;
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
/// Block-type byte of the last block that a scan has read.
extern std::uint8_t bytBlockStatus;

/// The block type of the source, by `bytBlockStatus`; null when its kind of file has none such.
const format::BlockType* SourceType();

/// Camera mask of each block of the range that was checked last, from 1 on; bit c is camera c + 1.
extern OneBased<std::int32_t> lngCamMask;
/// The same for cameras 17 to 32, bit c being camera c + 17; empty unless the block type is 0x20.
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

/// Reads every block's trailer into the source index. `bln20D` must be set. The source is valid
/// when the last block has a type that fits its kind; one that holds no block or more than
/// `kMostBlocks` is not, and has an empty index. So has one that was not read to its end.
ReadEnd ScanSourceFile(platform::Files& files, platform::DateText& dates, const std::string& path,
                       Breathing* breathing = nullptr);

/// Reads the camera masks of blocks `firstBlock` to `lastBlock` (both from 1, inclusive) of the
/// file that was scanned last; blocks outside its index are left out. Unless it is done there are
/// no masks.
ReadEnd CheckAvailability(platform::Files& files, const std::string& path, std::int32_t firstBlock,
                          std::int32_t lastBlock, Breathing* breathing = nullptr);

/// Size of an open file in bytes; 0 when its low 32 bits are all ones.
double FileSize64(platform::Files& files, platform::FileHandle file);

/// Number of blocks in a file of `size` bytes: rounded to the nearest, halves to even; at most
/// 2^31 - 1.
std::int32_t BlocksInFile(double size);

/// Positions `hSourceFile` at block `block` (from 0), `offset` bytes from the block's start.
bool SeekBlock(platform::Files& files, std::int32_t block, std::int32_t offset);

/// Reads `count` bytes from block `block` (from 0) at `offset` into `bytRecord`, which is zeroed
/// first. False when the read itself fails; a short read is none.
bool ReadRecord(platform::Files& files, std::int32_t block, std::int32_t offset,
                std::int32_t count);

/// Value of `length` (1 to 4) bytes from index `start` (from 1) on, most significant byte first,
/// as a signed 32-bit integer: a value of 2^31 or more wraps.
std::int32_t ReadBigEndian(const OneBased<std::uint8_t>& bytes, int start, int length);

/// Stores `value` in `length` (1 to 4) bytes from `bytes` on, most significant byte first. A value
/// that does not fit raises an overflow; a field of 4 bytes takes any 32-bit value, signed or not.
void PutBigEndian(std::uint8_t* bytes, int length, std::int64_t value);

/// (byte `index` AND 15) x 256 + byte `index` + `width` - 1; with width 2 the 12-bit sector number
/// of an image entry.
std::int32_t ReadSectorNumber(const OneBased<std::uint8_t>& bytes, int index, int width);

/// Up to 16 bytes from index `start` on, up to the first zero byte; one byte a character.
std::string ReadTitleField(const OneBased<std::uint8_t>& bytes, int start);

/// `length` bytes from index `start` on, at most 500: a greater length is lowered in the caller's
/// variable as well. A length of 0 or below gives no text.
std::string ReadTextField(const OneBased<std::uint8_t>& bytes, int start, std::int32_t& length);

}  // namespace mdlFileProcessing
