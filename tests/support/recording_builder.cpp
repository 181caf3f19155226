#include "tests/support/recording_builder.h"

#include <algorithm>

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

std::ostream& tools::operator<<(std::ostream& out, const Image& image) {
  return out << "camera " << image.camera << " at " << image.seconds << ", " << image.bytes.size()
             << " bytes, title '" << image.title << "', text '" << image.text << "', "
             << image.sound.size() << " of sound, flags " << image.flags;
}

std::string RecordingBuilder::Bytes() const {
  std::string recording;
  std::uint32_t number = 0;
  for (const BlockPlan& plan : blocks_) {
    tools::BlockStyle style = {.tight = true};
    std::copy(plan.titles.begin(), plan.titles.end(), style.titles.begin());
    tools::BlockBuilder block(style);
    block.Begin(*Layout(), ++number);
    if (plan.stamps) block.SetTimes(plan.stamps->first, plan.stamps->second);
    for (const tools::Image& image : plan.images) block.Add(image);
    const tools::Bytes& bytes = block.Finish();
    recording.append(bytes.begin(), bytes.end());
  }
  return recording;
}
