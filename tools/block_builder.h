#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "tools/bytes.h"
#include "tools/layout.h"

namespace tools {

/// How the blocks of a recording are written.
struct BlockStyle {
  bool pal = false;
  bool tight = false;                                ///< Let an image run right up to its tail.
  bool noise = false;                                ///< Set all bits beside the video standard's.
  std::array<std::string, kTitlesInTable> titles{};  ///< For a title table.
};

/// Lays out blocks of 2 MiB, one after the other in the same memory: large sparse recordings have
/// hundreds of thousands of them.
class BlockBuilder {
 public:
  explicit BlockBuilder(const BlockStyle& style)
      : style_(style), block_(static_cast<std::size_t>(kBlockBytes)) {}

  /// Begins an empty block. All blocks of a builder have their trailer at the same place.
  void Begin(const Layout& layout, std::uint32_t sequence);
  /// The block's start and end time are these; otherwise they follow its images.
  void SetTimes(std::int32_t start, std::int32_t end) { times_.emplace(start, end); }

  /// Whether the data area and the entry list have room for one more image.
  bool Fits(const Image& image) const;
  /// Adds an image that fits.
  void Add(const Image& image);
  /// Adds an image of zeros of so many free sectors; `image.bytes` is not used. Its tail is zero,
  /// too, but where the trailer begins: of the data area no more than the last sector is touched.
  void AddHole(const Image& image, int sectors);
  /// Sectors of the data area that are still free.
  int FreeSectors() const;
  int ImageCount() const { return imageCount_; }
  /// The whole block, its trailer filled in; it stands until the next begins.
  const Bytes& Finish();

 private:
  bool HasTail(const Image& image) const { return layout_->isOfToday || image.tail; }
  int DataSectors(const Image& image) const;
  void List(const Image& image);
  void PutEntry(const Image& image);
  void PutMasks(const Image& image);
  void PutTail(const Image& image, int end);
  void PutText(const std::string& text);
  std::uint8_t* Trailer() { return block_.data() + layout_->trailer; }
  void Set(int place, std::uint32_t bits);

  const BlockStyle& style_;
  const Layout* layout_ = nullptr;
  std::uint32_t sequence_ = 0;
  Bytes block_;
  int dirty_ = 0;  ///< Bytes of the data area that may not be zero, from its start on.
  int used_ = 0;   ///< Bytes of the data area in use, whole sectors.
  int imageCount_ = 0;
  std::optional<std::pair<std::uint32_t, std::uint32_t>> times_;  ///< As set.
  std::uint32_t earliest_ = 0;
  std::uint32_t latest_ = 0;
};

}  // namespace tools
