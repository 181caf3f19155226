#include "tests/support/recording_reader.h"

#include <algorithm>
#include <stdexcept>

#include "tools/recording_reader.h"

namespace {

void Demand(bool holds, const std::string& what) {
  if (!holds) throw std::out_of_range(what);
}

std::string WithoutZeros(std::string text) {
  text.erase(text.find_last_not_of('\0') + 1);
  return text;
}

tools::Image CopyOf(const tools::StoredBlock& block, const tools::StoredImage& image) {
  Demand(image.trouble.empty(), image.trouble);
  const std::uint8_t* tail = block.At(image.bytesEnd);
  Demand(std::equal(tools::kTailMark.begin(), tools::kTailMark.end(), tail), "tail");
  const auto* title = tail + tools::kTailTitle;
  return {image.camera,
          static_cast<std::int32_t>(image.seconds),
          {block.At(image.begin), tail},
          WithoutZeros({title, title + tools::kTailTitleBytes}),
          image.text,
          {block.At(image.soundBegin), block.At(image.end)},
          image.flags};
}

StoredBlock ReadBlock(std::string_view bytes, const tools::Layout& layout) {
  Demand(std::ssize(bytes) >= layout.trailerBytes, "trailer");
  tools::StoredBlock block;
  block.bytes.assign(bytes.begin(), bytes.end());
  block.trailer = static_cast<int>(bytes.size()) - layout.trailerBytes;
  tools::ParseBlock(block, layout.is20D);
  Demand(block.layout == &layout && block.isKnown, "block type");
  Demand(block.listedCount <= layout.mostImages, "image count");
  StoredBlock stored;
  stored.trailer = bytes.substr(static_cast<std::size_t>(block.trailer));
  for (const tools::StoredImage& image : block.images) {
    stored.images.push_back(CopyOf(block, image));
    stored.dataBytes = static_cast<std::size_t>(image.end);
  }
  return stored;
}

}  // namespace

std::uint32_t StoredBlock::Field(std::size_t offset, int width) const {
  return tools::Get(reinterpret_cast<const std::uint8_t*>(&trailer.at(offset)), width);
}

std::vector<StoredBlock> ReadRecording(std::string_view recording, bool is20D) {
  const tools::Layout& layout = *tools::FindLayout(is20D ? 0x60 : 0x30, is20D);
  std::vector<StoredBlock> blocks;
  for (std::size_t start = 0; start < recording.size(); start += tools::kBlockBytes)
    blocks.push_back(ReadBlock(recording.substr(start, tools::kBlockBytes), layout));
  return blocks;
}

std::vector<tools::Image> ImagesOf(std::string_view recording, bool is20D) {
  std::vector<tools::Image> images;
  for (StoredBlock& block : ReadRecording(recording, is20D))
    for (tools::Image& image : block.images) {
      image.bytes = WithoutZeros(std::move(image.bytes));
      images.push_back(std::move(image));
    }
  return images;
}
