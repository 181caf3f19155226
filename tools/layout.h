#pragma once

#include <array>
#include <cstdint>

/// The recording format as the tools know it. Stated anew on purpose and not taken from capture/:
/// the tools judge what the program writes, so a slip in one statement shows against the other.
namespace tools {

inline constexpr std::int64_t kBlockBytes = 2097152;
inline constexpr int kSectorBytes = 512;

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

/// One block type. Places in the trailer count from its first byte, places in an entry from the
/// entry's first byte.
struct Layout {
  const char* name;       ///< As the command line names it.
  std::uint8_t type;      ///< Block-type byte.
  bool is20D;             ///< In .20D files; in .60D files otherwise.
  int trailer;            ///< Offset of the trailer in the block.
  int trailerBytes;       ///< Length of the trailer.
  int firstSector;        ///< Number of the data area's first sector.
  int mostImages;         ///< Images that the trailer has room for.
  int cameras;            ///< 16 or 32.
  int cameraMask;         ///< Mask of cameras 1 to 16.
  int highCameraMask;     ///< Mask of cameras 17 to 32.
  int imageCount;         ///< 16 bits.
  int videoByte;          ///< Byte that tells the video standard.
  std::uint8_t videoBit;  ///< Set in that byte: NTSC.
  int titleTable;         ///< 16 titles of 16 bytes.
  int list;               ///< Entry list.
  int entryBytes;         ///< Length of an image entry.
  int entryTime;          ///< 16 bits: seconds after the block's start.
  int entryFlags;         ///< Byte with the flags in bits 5 and 4.
  int entrySector;        ///< 16 bits, of which the lower 12 count.
  int entryParts;         ///< Sound sectors in bits 7 to 3, text bits in bits 1 and 0.
  int entryCamera;        ///< Camera from 0 on.
  bool alwaysTails;       ///< Each image carries a tail; in other types it may.
  bool fullMasks;         ///< Flags and text masks stand in the trailer.
};

inline constexpr std::array<Layout, 5> kLayouts = {{
    {"00", 0x00, false, 0x1FFC00, 1024,  2, 146, 16,    18, kNone, 28,   30,
     0x04, 32,   288,   5,        kNone, 0, 2,   kNone, 4,  false, false},
    {"10", 0x10, false, 0x1FFC00, 1024,  2, 146, 16,    18, kNone, 28,   30,
     0x04, 32,   288,   5,        kNone, 0, 2,   kNone, 4,  false, false},
    {"20", 0x20,  false, 0x1FFC00, 1024, 2, 159, 32, 22, 20,    32,   18,
     0x10, kNone, 64,    6,        0,    2, 2,   4,  5,  false, false},
    {"30", 0x30,  false, 0x1FFC00, 1024,  2, 246, 16, 18, kNone, 32,  34,
     0x80, kNone, 36,    4,        kNone, 0, 0,   2,  3,  true,  true},
    {"60", 0x60,  true, 0x1FF400, 3072,  6, 758, 16, 18, kNone, 32,  34,
     0x80, kNone, 36,   4,        kNone, 0, 0,   2,  3,  true,  true},
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

}  // namespace tools
