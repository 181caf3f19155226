#pragma once

#include <cstdint>

#include "capture/format.h"

/// What the types of blocks have in common and what differs between them, for whoever reads them.
namespace format {

/// Stands for the offset of a field that a block type does not have.
inline constexpr int kAbsent = -1;

/// Where the capture time stamps of images without a tail come from.
enum class Stamps {
  kFromBlockStart,  ///< Each entry tells the seconds since the block's start.
  kSpread,          ///< Nowhere: the images are taken as spread evenly over the block's time.
};

/// An entry of a block's image list; offsets count from the entry's first byte.
struct EntryLayout {
  int size;            ///< Bytes.
  int flags;           ///< 1 byte: the flags in the bits `kStoredFlags`.
  int sector;          ///< 2 bytes: number of the image's first sector; also in the end entry.
  bool wideSectors;    ///< Sector numbers have 16 bits, not 12.
  int soundAndText;    ///< 1 byte, or `kAbsent`.
  int camera;          ///< 1 byte.
  int cameraBits;      ///< The bits of that byte which count.
  int secondsOfBlock;  ///< 2 bytes: seconds after the block's start; or `kAbsent`.
};

/// A block type; offsets count from the trailer's first byte.
struct BlockType {
  std::uint8_t type;  ///< Block-type byte.
  bool is20D;         ///< Occurs in .20D files, else in .60D files.
  int cameras;        ///< Cameras that a recording of this type can have.
  int cameraMask;     ///< 2 bytes, bit c: camera c (from 0).
  int cameraMaskAlt;  ///< 2 bytes, bit c: camera c + 16; or `kAbsent`.
  int imageCount;     ///< 2 bytes.
  int videoStandard;  ///< 1 byte.
  int notPal;         ///< The bit of that byte which means not PAL.
  int titles;         ///< `kCameras` titles of `tail::kTitleRead` bytes; or `kAbsent`.
  int entryList;
  EntryLayout entry;
  bool alwaysHasTails;  ///< Every image has a tail; in other types it may.
  Stamps stamps;        ///< Used for images without one.
  bool keepsSound;      ///< The sound of its images is taken over when they are saved.

  constexpr const Variant& variant() const { return VariantOf(is20D); }
  /// Images that the trailer has room for.
  constexpr int MostImages() const {
    return EntriesThatFit(variant().trailerLength, entryList, entry.size);
  }
};

namespace types {

inline constexpr BlockType k30 = {
    .type = kType30,
    .is20D = false,
    .cameras = kCameras,
    .cameraMask = trailer30::kCameraMask,
    .cameraMaskAlt = kAbsent,
    .imageCount = trailer30::kImageCount,
    .videoStandard = trailer30::kVideoStandard,
    .notPal = trailer30::kNtsc >> 8,
    .titles = kAbsent,
    .entryList = trailer30::kEntryList,
    .entry = {.size = entry30::kSize,
              .flags = entry30::kSector,
              .sector = entry30::kSector,
              .wideSectors = false,
              .soundAndText = entry30::kSoundAndText,
              .camera = entry30::kCamera,
              .cameraBits = kCameraBits,
              .secondsOfBlock = kAbsent},
    .alwaysHasTails = true,
    .stamps = Stamps::kSpread,
    .keepsSound = true,
};

constexpr BlockType With(BlockType like, std::uint8_t type, bool is20D) {
  like.type = type;
  like.is20D = is20D;
  return like;
}
inline constexpr BlockType k60 = With(k30, kType60, true);

inline constexpr BlockType k20 = {
    .type = kType20,
    .is20D = false,
    .cameras = 32,
    .cameraMask = 22,
    .cameraMaskAlt = 20,
    .imageCount = 32,
    .videoStandard = 18,
    .notPal = 0x10,
    .titles = kAbsent,
    .entryList = 64,
    .entry = {.size = 6,
              .flags = 2,
              .sector = 2,
              .wideSectors = false,
              .soundAndText = 4,
              .camera = 5,
              .cameraBits = 0xFF,
              .secondsOfBlock = 0},
    .alwaysHasTails = false,
    .stamps = Stamps::kFromBlockStart,
    .keepsSound = false,
};

inline constexpr BlockType k00 = {
    .type = kType00,
    .is20D = false,
    .cameras = kCameras,
    .cameraMask = trailer30::kCameraMask,
    .cameraMaskAlt = kAbsent,
    .imageCount = 28,
    .videoStandard = 30,
    .notPal = 0x04,
    .titles = 32,
    .entryList = 288,
    .entry = {.size = 5,
              .flags = 0,
              .sector = 2,
              .wideSectors = true,
              .soundAndText = kAbsent,
              .camera = 4,
              .cameraBits = kCameraBits,
              .secondsOfBlock = kAbsent},
    .alwaysHasTails = false,
    .stamps = Stamps::kSpread,
    .keepsSound = false,
};
inline constexpr BlockType k10 = With(k00, kType10, false);

static_assert(k20.MostImages() == 159 && k00.MostImages() == 146);

}  // namespace types

/// The block type with this type byte in a file of this kind; null when there is none.
constexpr const BlockType* BlockTypeOf(bool is20D, std::uint8_t type) {
  for (const BlockType* known : {&types::k30, &types::k60, &types::k20, &types::k10, &types::k00})
    if (known->is20D == is20D && known->type == type) return known;
  return nullptr;
}

}  // namespace format
