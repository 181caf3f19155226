#pragma once

#include <cstdint>
#include <string_view>

/// The layout of a capture file: blocks of 2 MiB, each a data area of 512-byte sectors and a block
/// trailer that indexes the block's images. All integers are big-endian. docs/recording-format.md
/// tells the whole layout with a worked example.
namespace format {

inline constexpr std::int32_t kBlockSize = 2 * 1024 * 1024;  ///< Bytes in a block.
inline constexpr std::int32_t kSectorSize = 512;             ///< Bytes in a sector.

inline constexpr std::uint8_t kType00 = 0x00;  ///< Old .60D block with a title table.
inline constexpr std::uint8_t kType10 = 0x10;  ///< Old .60D block with a title table.
inline constexpr std::uint8_t kType20 = 0x20;  ///< Old .60D block of up to 32 cameras.
inline constexpr std::uint8_t kType30 = 0x30;  ///< Today's .60D block.
inline constexpr std::uint8_t kType60 = 0x60;  ///< .20D block.

/// What differs between the two kinds of capture file.
struct Variant {
  std::int32_t trailerOffset;   ///< Offset of the trailer inside the block, bytes.
  std::int32_t trailerLength;   ///< Bytes.
  std::int32_t trailerSectors;  ///< Trailer length in sectors; sector numbers count from it.
  std::uint8_t blockType;       ///< Block-type byte that is written.
  int mostImages;               ///< Images that a block holds at the most.
  const char* ending;           ///< Of the file's name, with its dot.
};

inline constexpr Variant kVariant60D = {.trailerOffset = 0x1FFC00,
                                        .trailerLength = 1024,
                                        .trailerSectors = 2,
                                        .blockType = kType30,
                                        .mostImages = 246,
                                        .ending = ".60D"};
inline constexpr Variant kVariant20D = {.trailerOffset = 0x1FF400,
                                        .trailerLength = 3072,
                                        .trailerSectors = 6,
                                        .blockType = kType60,
                                        .mostImages = 758,
                                        .ending = ".20D"};

constexpr const Variant& VariantOf(bool is20D) {
  return is20D ? kVariant20D : kVariant60D;
}

/// Whether a path's name is that of a .20D file.
constexpr bool IsNameOf20D(std::string_view path) {
  return path.ends_with("20D") || path.ends_with("20d");
}

/// Offsets inside the block trailer, the same in every block type.
namespace trailer {
inline constexpr int kEarliest = 0;          ///< 4 bytes.
inline constexpr int kStart = 4;             ///< 4 bytes: the block's start time stamp.
inline constexpr int kEnd = 8;               ///< 4 bytes: the block's end time stamp.
inline constexpr int kEntryListOffset = 12;  ///< 1 byte: 36.
inline constexpr int kBlockType = 13;        ///< 1 byte.
}  // namespace trailer

/// Block types 0x30 and 0x60: offsets inside the trailer.
namespace trailer30 {
inline constexpr int kSequence = 14;       ///< 4 bytes, from 1 on.
inline constexpr int kCameraMask = 18;     ///< 2 bytes, bit c: camera c (from 0).
inline constexpr int kFlag1Mask = 20;      ///< 2 bytes.
inline constexpr int kFlag3Mask = 22;      ///< 2 bytes.
inline constexpr int kFlag2Mask = 28;      ///< 2 bytes.
inline constexpr int kTextMask = 30;       ///< 2 bytes.
inline constexpr int kImageCount = 32;     ///< 2 bytes.
inline constexpr int kVideoStandard = 34;  ///< 2 bytes: 0 PAL, kNtsc otherwise.
inline constexpr int kNtsc = 0x8000;
inline constexpr int kEntryList = 36;
}  // namespace trailer30

/// Block types 0x30 and 0x60: offsets inside an image entry.
namespace entry30 {
inline constexpr int kSize = 4;
inline constexpr int kSector = 0;        ///< 2 bytes: flags in the high nibble, 12-bit sector.
inline constexpr int kSoundAndText = 2;  ///< 1 byte.
inline constexpr int kCamera = 3;        ///< 1 byte, camera AND kCameraBits.
}  // namespace entry30

inline constexpr int kCameras = 16;      ///< Cameras of a recording, except block type 0x20.
inline constexpr int kCameraBits = 15;   ///< Bits of a camera number in an entry.
inline constexpr int kFlagsShift = 4;    ///< An image's flags (0 to 3) in an entry's byte 0.
inline constexpr int kStoredFlags = 63;  ///< The bits of that byte which readers keep.
inline constexpr int kSoundShift = 3;    ///< Number of sound sectors in an entry.
inline constexpr int kMostSoundSectors = 31;
inline constexpr int kTextBits = 3;        ///< Text bits in an entry; a text is written as 1.
inline constexpr int kEndEntryLength = 4;  ///< After the last entry; holds the end's sector.

/// Entries that fit into a trailer behind `listOffset`.
constexpr int EntriesThatFit(int trailerLength, int listOffset, int entrySize) {
  return (trailerLength - listOffset - kEndEntryLength) / entrySize;
}
static_assert(kVariant60D.mostImages ==
              EntriesThatFit(kVariant60D.trailerLength, trailer30::kEntryList, entry30::kSize));
static_assert(kVariant20D.mostImages ==
              EntriesThatFit(kVariant20D.trailerLength, trailer30::kEntryList, entry30::kSize));

/// The last 56 bytes of an image's last sector.
namespace tail {
inline constexpr int kLength = 56;
inline constexpr std::int32_t kMarker = 0x38010000;  ///< 4 bytes at offset 0.
inline constexpr int kSeconds = 4;                   ///< 4 bytes: the image's capture time stamp.
inline constexpr int kTitle = 8;
inline constexpr int kTitleRoom = 48;  ///< Title bytes that are written at the most.
inline constexpr int kTitleRead = 16;  ///< Title bytes that are read at the most.
}  // namespace tail

/// The sector after the tail of an image with text.
namespace text {
inline constexpr std::int32_t kMarker = 0x20000802;  ///< 4 bytes at offset 0.
inline constexpr int kLength = 4;                    ///< 4 bytes: length in characters.
inline constexpr int kText = 12;
inline constexpr int kRoom = 500;
}  // namespace text

}  // namespace format
