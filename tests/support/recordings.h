#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/block_builder.h"
#include "tools/recording_reader.h"

/// Recordings in memory, built and read with the tools' own idea of the layout: what the program
/// writes is compared with it.

/// Throws `std::out_of_range` where a promise does not hold.
void Demand(bool holds, const std::string& what);

/// Deterministic image bytes that end in a byte other than zero; `seed` tells images apart.
std::string Picture(int bytes, int seed = 1);

/// The bytes that a text is made of.
inline std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Bytes of a block.
inline constexpr std::size_t kBlock = 2097152;

/// What a block is to hold.
struct BlockPlan {
  std::vector<tools::Image> images = {};
  /// Titles of cameras 1, 2, ..., in the blocks that keep a table of them.
  std::vector<std::string> titles = {};
  /// Start and end; otherwise they follow the images.
  std::optional<std::pair<std::int32_t, std::int32_t>> stamps = {};
};

/// The layout of a block type: 0x00, 0x10, 0x20, 0x30 or (in a .20D file) 0x60.
const tools::Layout& LayoutOf(int type);

/// A recording as a recorder would store it: whole blocks of 2 MiB, all of one type.
std::string Recording(int type, const std::vector<BlockPlan>& blocks);

/// The recording with its last block, which holds an image, as short as that of a rebuilt file.
std::string Shortened(const std::string& recording, int type);

/// A block from its first byte to its trailer's last one, taken apart by its own type. Its bytes
/// are stored in `room`.
tools::StoredBlock BlockOf(std::string_view bytes, bool is20D, tools::Bytes&& room = {});

/// All blocks of a recording of type 0x30 or 0x60, a compact last one included. Throws
/// `std::out_of_range` where the recording breaks its own layout.
std::vector<tools::StoredBlock> BlocksOf(std::string_view recording, bool is20D);

/// The images of all blocks, one after the other, without the zeros behind their bytes.
std::vector<tools::Image> ImagesOf(std::string_view recording, bool is20D);
