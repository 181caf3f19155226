#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "capture/format.h"

/// Laying out of one block of a new capture file.
namespace mdlCreate60DFile {

/// An image with what belongs to it, to be added to a block.
struct NewImage {
  const std::uint8_t* bytes;
  std::int32_t size;  ///< Bytes.
  int flags;          ///< 1 to 3 are stored, others are not.
  const std::string& title;
  const std::string& text;
  std::int32_t seconds;
  std::int32_t camera;  ///< From 0.
  std::int32_t soundSectors;
  const std::uint8_t* sound;
};

/// The block that is being filled: data area and trailer.
class BlockBuilder {
 public:
  /// Empties the trailer; it has the layout of `variant` from now on.
  void ResetTrailer(const format::Variant& variant);
  /// Empties the data area and the buffer of image tails.
  void ResetData();

  /// Whether the fields can hold the values of the image, and a block the image.
  bool CanHold(const NewImage& image) const;
  /// Whether the image goes into this block, or into the next.
  bool HasRoomFor(const NewImage& image) const;
  /// Adds an image that it can hold and for which there is room.
  void Add(const NewImage& image);
  /// Completes the trailer: the end entry and the header. Bit 15 of `videoStandard` is not PAL.
  void Seal(std::int32_t sequence, int videoStandard);
  /// Puts the sealed trailer at `offset` of the data area, with zeros before it.
  void JoinTrailer(std::int32_t offset);

  std::int32_t imageCount() const { return imageCount_; }
  const std::uint8_t* data() const { return data_.get(); }
  std::int32_t dataLength() const { return dataLength_; }  ///< Bytes, whole sectors.
  const std::vector<std::uint8_t>& trailer() const { return trailer_; }

 private:
  void AddEntry(const NewImage& image);
  void AddToSummary(const NewImage& image);
  void AddBytes(const std::uint8_t* bytes, std::int32_t count);
  void AddZeros(std::int32_t count);
  void AddTail(const NewImage& image);
  void AddText(const std::string& text);
  void PutSector(int offset);

  const format::Variant* variant_ = &format::kVariant60D;
  std::vector<std::uint8_t> trailer_;
  int entryCursor_ = format::trailer30::kEntryList;
  std::int32_t imageCount_ = 0;
  std::int32_t earliest_ = std::numeric_limits<std::int32_t>::max();
  std::int32_t latest_ = 0;
  std::int32_t cameraMask_ = 0;
  std::int32_t flagMasks_[4] = {};  // By flags; the first is not used.
  std::int32_t textMask_ = 0;

  // Allocated once, for a whole block; only its first `dataLength_` bytes have a value.
  std::unique_ptr<std::uint8_t[]> data_;
  std::int32_t dataLength_ = 0;
  // Not cleared between images: a title leaves the end of a longer one before it in place, as
  // readers of these files know it.
  std::uint8_t tail_[format::tail::kLength] = {};
};

}  // namespace mdlCreate60DFile
