#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "capture/fields.h"
#include "capture/format.h"

/// Laying out of one block of a new capture file.
namespace mdlCreate60DFile {

/// An image with what belongs to it, to be added to a block.
struct NewImage {
  mdlFileProcessing::Bytes bytes = {};
  int flags = 0;           ///< 1 to 3 are stored, others are not.
  std::string title = {};  ///< One byte a character, like the text.
  std::string text = {};
  std::int32_t seconds = 0;             ///< Capture time stamp.
  std::int32_t camera = 0;              ///< From 0.
  mdlFileProcessing::Bytes sound = {};  ///< Whole sectors.
};

/// The block that is being filled: data area and trailer.
class BlockBuilder {
 public:
  /// Begins a block with the layout of `variant`.
  void Begin(const format::Variant& variant);

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

  std::int32_t imageCount() const { return summary_.imageCount; }
  const std::uint8_t* data() const { return data_.get(); }
  std::int32_t dataLength() const { return dataLength_; }  ///< Bytes, whole sectors.
  const std::vector<std::uint8_t>& trailer() const { return trailer_; }

 private:
  /// What the trailer tells of all images.
  struct Summary {
    std::int32_t imageCount = 0;
    std::int64_t earliest =
        std::numeric_limits<std::uint32_t>::max();  ///< As `TimeOfStamp` has it.
    std::int64_t latest = 0;
    std::int32_t cameraMask = 0;
    std::int32_t flagMasks[4] = {};  ///< By flags; the first is not used.
    std::int32_t textMask = 0;
  };

  void AddEntry(const NewImage& image);
  void AddToSummary(const NewImage& image);
  void AddBytes(mdlFileProcessing::Bytes bytes);
  void AddZeros(std::int32_t count);
  void AddTail(const NewImage& image);
  void AddText(const std::string& text);
  void PutSector(int offset);

  const format::Variant* variant_ = nullptr;
  std::vector<std::uint8_t> trailer_;
  int entryCursor_ = 0;
  Summary summary_;
  // Allocated once, for a whole block; only its first `dataLength_` bytes have a value.
  std::unique_ptr<std::uint8_t[]> data_{new std::uint8_t[format::kBlockSize]};
  std::int32_t dataLength_ = 0;
};

}  // namespace mdlCreate60DFile
