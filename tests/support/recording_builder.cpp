#include "tests/support/recording_builder.h"

#include <algorithm>

#include "tools/block_builder.h"

namespace {

tools::Image AsRecorded(const TestImage& image) {
  return {image.camera,
          image.seconds,
          image.flags,
          image.title,
          image.text,
          {image.sound.begin(), image.sound.end()},
          {image.bytes.begin(), image.bytes.end()}};
}

}  // namespace

std::string Picture(int bytes, int seed) {
  std::string picture(bytes, '\0');
  std::uint32_t state = static_cast<std::uint32_t>(seed) * 2654435761u + 1;
  for (char& byte : picture) {
    state = state * 1664525u + 1013904223u;
    byte = static_cast<char>(state >> 24);
  }
  if (bytes > 0 && picture.back() == 0) picture.back() = '!';
  return picture;
}

std::ostream& operator<<(std::ostream& out, const TestImage& image) {
  return out << "camera " << image.camera << " at " << image.seconds << ", " << image.bytes.size()
             << " bytes, title '" << image.title << "', text '" << image.text << "', "
             << image.sound.size() << " of sound, flags " << image.flags;
}

std::string RecordingBuilder::Bytes() const {
  std::string recording;
  std::uint32_t number = 0;
  for (const BlockPlan& plan : blocks_) {
    tools::BlockStyle style = {false, true, true, {}};
    std::copy(plan.titles.begin(), plan.titles.end(), style.titles.begin());
    style.tails = std::all_of(plan.images.begin(), plan.images.end(),
                              [](const TestImage& image) { return image.tail; });
    tools::BlockBuilder block(style);
    block.Begin(*Layout(), ++number);
    for (const TestImage& image : plan.images) block.Add(AsRecorded(image));
    tools::Bytes bytes = block.Finish();
    if (plan.stamps) {
      std::uint8_t* const trailer = bytes.data() + TrailerOffset();
      tools::Put(trailer + tools::kStart, 4, static_cast<std::uint32_t>(plan.stamps->first));
      tools::Put(trailer + tools::kEnd, 4, static_cast<std::uint32_t>(plan.stamps->second));
    }
    recording.append(bytes.begin(), bytes.end());
  }
  return recording;
}
