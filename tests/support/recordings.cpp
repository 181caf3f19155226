#include "tests/support/recordings.h"

#include <algorithm>
#include <stdexcept>

namespace {

tools::Image AsAdded(tools::StoredImage&& image) {
  image.bytes.erase(image.bytes.find_last_not_of('\0') + 1);
  image.title = std::move(image.tailTitle);
  return std::move(image);
}

}  // namespace

void Demand(bool holds, const std::string& what) {
  if (!holds) throw std::out_of_range("broken: " + what);
}

std::string Picture(int bytes, int seed) {
  std::string picture = tools::Random(static_cast<std::uint64_t>(seed)).Text(bytes);
  if (bytes > 0 && picture.back() == 0) picture.back() = '!';
  return picture;
}

const tools::Layout& LayoutOf(int type) {
  return *tools::FindLayout(static_cast<std::uint8_t>(type), type == 0x60);
}

std::string Recording(int type, const std::vector<BlockPlan>& blocks) {
  std::string recording;
  std::uint32_t number = 0;
  for (const BlockPlan& plan : blocks) {
    tools::BlockStyle style = {.tight = true};
    std::copy(plan.titles.begin(), plan.titles.end(), style.titles.begin());
    tools::BlockBuilder block(style);
    block.Begin(LayoutOf(type), ++number);
    if (plan.stamps) block.SetTimes(plan.stamps->first, plan.stamps->second);
    for (const tools::Image& image : plan.images) block.Add(image);
    const tools::Bytes& bytes = block.Finish();
    recording.append(bytes.begin(), bytes.end());
  }
  return recording;
}

std::string Shortened(const std::string& recording, int type) {
  const tools::Layout& layout = LayoutOf(type);
  const std::size_t last = recording.size() - kBlock;
  const auto* trailer = BytesOf(recording).data() + last + layout.trailer;
  const int count = static_cast<int>(tools::Get(trailer + layout.imageCount, 2));
  const auto end = static_cast<std::size_t>(layout.PlaceOf(trailer, count));
  return recording.substr(0, last + end) +
         recording.substr(last + static_cast<std::size_t>(layout.trailer));
}

tools::StoredBlock BlockOf(std::string_view bytes, bool is20D, tools::Bytes&& room) {
  tools::StoredBlock block = {.bytes = std::move(room)};
  block.bytes.assign(BytesOf(bytes).begin(), BytesOf(bytes).end());
  block.trailer = static_cast<int>(bytes.size()) - tools::FormOf(is20D).trailerBytes;
  tools::ParseBlock(block, is20D);
  return block;
}

std::vector<tools::StoredBlock> BlocksOf(std::string_view recording, bool is20D) {
  std::vector<tools::StoredBlock> blocks;
  for (std::size_t start = 0; start < recording.size(); start += tools::kBlockBytes) {
    const std::string_view bytes = recording.substr(start, tools::kBlockBytes);
    const tools::Layout& layout = tools::FormOf(is20D);
    Demand(std::ssize(bytes) >= layout.trailerBytes, "trailer");
    const tools::StoredBlock& block = blocks.emplace_back(BlockOf(bytes, is20D));
    Demand(block.layout == &layout, "block type");
    Demand(block.listedCount <= layout.mostImages, "image count");
    for (const tools::StoredImage& image : block.images) {
      Demand(image.trouble.empty(), image.trouble);
      const auto* tail = block.bytes.data() + image.begin + image.bytes.size();
      Demand(std::equal(tools::kTailMark.begin(), tools::kTailMark.end(), tail), "tail");
    }
  }
  return blocks;
}

std::vector<tools::Image> ImagesOf(std::string_view recording, bool is20D) {
  std::vector<tools::Image> images;
  for (tools::StoredBlock& block : BlocksOf(recording, is20D))
    for (tools::StoredImage& image : block.images) images.push_back(AsAdded(std::move(image)));
  return images;
}
