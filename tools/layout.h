#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "tools/bytes.h"

/// The recording format as the tools know it. Stated anew on purpose and not taken from capture/:
/// the tools judge what the program writes, so a slip in one statement shows against the other.
namespace tools {

inline constexpr std::int64_t kBlockBytes = 2097152;
inline constexpr int kSectorBytes = 512;
/// Sector numbers have 12 bits.
inline constexpr int kSectorNumbers = 4096;

/// The last bytes of an image's last sector.
inline constexpr int kTailBytes = 56;
inline constexpr int kTailTime = 4;
inline constexpr int kTailTitle = 8;
inline constexpr int kTailTitleBytes = 48;
inline constexpr std::array<std::uint8_t, 4> kTailMark = {0x38, 0x01, 0x00, 0x00};

/// The sector after the tail of an image with text.
inline constexpr std::array<std::uint8_t, 4> kTextMark = {0x20, 0x00, 0x08, 0x02};
inline constexpr int kTextLength = 4;
inline constexpr int kTextStart = 12;
inline constexpr int kTextBytes = 500;

/// Title bytes that a reader takes, and titles in a block's title table.
inline constexpr int kTitleBytes = 16;
inline constexpr int kTitlesInTable = 16;

/// Where the trailer of every block type holds its times and its type.
inline constexpr int kEarliest = 0;
inline constexpr int kStart = 4;
inline constexpr int kEnd = 8;
inline constexpr int kListPlace = 12;
inline constexpr int kType = 13;
inline constexpr int kSequence = 14;

/// Camera masks that only types 0x30 and 0x60 have; the one of flags value f at index f - 1.
inline constexpr std::array<int, 3> kFlagMasks = {20, 28, 22};
inline constexpr int kTextMask = 30;

/// Bytes of the end entry, whatever the size of the image entries.
inline constexpr int kEndEntryBytes = 4;

/// Marks a field that a block type does not have.
inline constexpr int kNone = -1;

/// One block type; unless it says otherwise, as type 0x30 has it. Places in the trailer count from
/// its first byte, places in an entry from the entry's first byte.
struct Layout {
  const char* name = "30";       ///< As the command line names it.
  std::uint8_t type = 0x30;      ///< Block-type byte.
  bool is20D = false;            ///< In .20D files; in .60D files otherwise.
  int trailer = 0x1FFC00;        ///< Offset of the trailer in the block.
  int trailerBytes = 1024;       ///< Length of the trailer.
  int firstSector = 2;           ///< Number of the data area's first sector.
  int mostImages = 246;          ///< Images that the trailer has room for.
  int cameras = 16;              ///< 16 or 32.
  int cameraMask = 18;           ///< Mask of cameras 1 to 16.
  int highCameraMask = kNone;    ///< Mask of cameras 17 to 32.
  int imageCount = 32;           ///< 16 bits.
  int videoByte = 34;            ///< Byte that tells the video standard.
  std::uint8_t videoBit = 0x80;  ///< Set in that byte: NTSC.
  int titleTable = kNone;        ///< 16 titles of 16 bytes.
  int list = 36;                 ///< Entry list.
  int entryBytes = 4;            ///< Length of an image entry.
  int entryTime = kNone;         ///< 16 bits: seconds after the block's start.
  int entryFlags = 0;            ///< Byte with the flags in bits 5 and 4.
  int entrySector = 0;           ///< 16 bits, of which the lower 12 count.
  int entryParts = 2;            ///< Sound sectors in bits 7 to 3, text bits in bits 1 and 0.
  int entryCamera = 3;           ///< Camera from 0 on.
  /// Each image has a tail, which is a choice in the older types, and the trailer has masks of
  /// flags and texts.
  bool isOfToday = true;

  /// The entry of image `index`, from 0 on; the end entry lies behind the last one.
  template <typename Byte>
  Byte* Entry(Byte* trailerBegin, int index) const {
    return trailerBegin + list + std::ptrdiff_t{index} * entryBytes;
  }
  /// The sector that an entry names, all of its 16 bits.
  int SectorOf(const std::uint8_t* entry) const {
    return static_cast<int>(Get(entry + entrySector, 2));
  }
  /// Where in its block image `index` begins or, for their count, where the last one ends.
  int PlaceOf(const std::uint8_t* trailerBegin, int index) const {
    const int sector = SectorOf(Entry(trailerBegin, index));
    // A full block's end has one bit too many for the field, also where a damaged count hides it.
    const bool isWhole = entryParts == kNone || sector == kSectorNumbers;
    return ((isWhole ? sector : sector % kSectorNumbers) - firstSector) * kSectorBytes;
  }
};

/// Types 0x00 and 0x10 differ in nothing else.
constexpr Layout Oldest(const char* name, std::uint8_t type) {
  return {.name = name,
          .type = type,
          .mostImages = 146,
          .imageCount = 28,
          .videoByte = 30,
          .videoBit = 0x04,
          .titleTable = 32,
          .list = 288,
          .entryBytes = 5,
          .entrySector = 2,
          .entryParts = kNone,
          .entryCamera = 4,
          .isOfToday = false};
}

inline constexpr std::array<Layout, 5> kLayouts = {{
    Oldest("00", 0x00),
    Oldest("10", 0x10),
    {.name = "20",
     .type = 0x20,
     .mostImages = 159,
     .cameras = 32,
     .cameraMask = 22,
     .highCameraMask = 20,
     .videoByte = 18,
     .videoBit = 0x10,
     .list = 64,
     .entryBytes = 6,
     .entryTime = 0,
     .entryFlags = 2,
     .entrySector = 2,
     .entryParts = 4,
     .entryCamera = 5,
     .isOfToday = false},
    {},
    {.name = "60",
     .type = 0x60,
     .is20D = true,
     .trailer = 0x1FF400,
     .trailerBytes = 3072,
     .firstSector = 6,
     .mostImages = 758},
}};

/// The layout with this block-type byte in a file of this kind; null when there is none.
constexpr const Layout* FindLayout(std::uint8_t type, bool is20D) {
  for (const Layout& layout : kLayouts)
    if (layout.type == type && layout.is20D == is20D) return &layout;
  return nullptr;
}

/// The layout of the blocks that recorders and the program write today.
constexpr const Layout& FormOf(bool is20D) {
  return *FindLayout(is20D ? 0x60 : 0x30, is20D);
}

/// One image with all that belongs to it, as a recorder hands it to its disk.
struct Image {
  int camera = 0;            ///< From 0 on.
  std::int32_t seconds = 0;  ///< Capture time stamp, of which the bits are taken as unsigned.
  std::string bytes = "IMAGE";
  std::string title{};  ///< At most 48 bytes.
  std::string text{};   ///< At most 500 bytes.
  std::string sound{};  ///< Whole sectors, at most 31.
  int flags = 0;        ///< 0 to 3.
  bool tail = true;     ///< Without one only in the block types where it is a choice.

  std::uint32_t Stamp() const { return static_cast<std::uint32_t>(seconds); }
  bool operator==(const Image&) const = default;
};

}  // namespace tools
