#include "tools/recorder.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "tools/block_builder.h"
#include "tools/payload.h"

namespace tools {
namespace {

/// A page of the disk: what a block in a sparse file costs.
constexpr std::int64_t kPage = 4096;
/// Letters of texts: mostly capitals and digits, now and then one beyond ASCII.
constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789 .,:*$\xA3\xE4\xFC";
constexpr int kLetterCount = static_cast<int>(sizeof kLetters) - 1;

bool IsTurn(int every, std::uint32_t number) {
  return every > 0 && number % static_cast<std::uint32_t>(every) == 0;
}

std::string MakeText(Random& random, int length) {
  std::string text;
  for (int i = 0; i < length; ++i) text += kLetters[random.Between(0, kLetterCount - 1)];
  return text;
}

/// Makes whole blocks one after the other, as a recorder would.
class Recorder {
 public:
  explicit Recorder(const Wishes& wishes) : wishes_(wishes), builder_(wishes.style) {}

  /// Answers the number of images.
  std::uint32_t Record(const std::string& path) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    for (int block = 1; block <= wishes_.blocks; ++block) {
      const Bytes& bytes = MakeBlock(block);
      const std::int64_t skipped = IsDense(block) ? 0 : kBlockBytes - kPage;
      file.seekp((block - 1) * kBlockBytes + skipped);
      file.write(reinterpret_cast<const char*>(bytes.data()) + skipped, kBlockBytes - skipped);
    }
    file.close();
    if (!file) throw std::runtime_error(path + " could not be written");
    return imageCount_;
  }

 private:
  /// An image of the camera whose turn it is, of the present time, without contents.
  Image BareImage(std::uint32_t turn) const {
    Image image;
    image.camera = wishes_.cameras[turn % wishes_.cameras.size()] - 1;
    image.seconds = static_cast<std::int32_t>(wishes_.start +
                                              std::llround(std::floor(imageCount_ * wishes_.step)));
    image.title = wishes_.TitleOf(image.camera);
    image.tail = wishes_.tails;
    return image;
  }

  bool IsDense(int block) const {
    return !wishes_.sparse || std::any_of(wishes_.dense.begin(), wishes_.dense.end(), [&](Range r) {
      return r.first <= block && block <= r.last;
    });
  }

  Image NextImage() {
    Image image = BareImage(imageCount_);
    if (IsTurn(wishes_.flagsEvery, imageCount_))
      image.flags = 1 + static_cast<int>(imageCount_) / wishes_.flagsEvery % 3;
    // Each part has numbers of its own, so that one option changes one part.
    Random seeds(kSeed + imageCount_);
    Random sizes(seeds.Next()), texts(seeds.Next()), sounds(seeds.Next());
    const auto [leastText, mostText] = wishes_.textLength;
    const auto [leastSound, mostSound] = wishes_.soundSectors;
    const bool hasParts = layout_->entryParts != kNone;
    if (hasParts && IsTurn(wishes_.textEvery, imageCount_))
      image.text = MakeText(texts, texts.Between(leastText, mostText));
    if (hasParts && IsTurn(wishes_.soundEvery, imageCount_))
      image.sound = sounds.Text(std::size_t{kSectorBytes} * sounds.Between(leastSound, mostSound));
    int size = sizes.Between(wishes_.size.first, wishes_.size.last);
    if (wishes_.style.tight)
      size = std::max(1, (size + kTailBytes) / kSectorBytes) * kSectorBytes - kTailBytes;
    image.bytes = MakePayload(image.camera + 1, image.seconds, imageCount_, size);
    return image;
  }

  /// Adds one image that ends where the trailer begins.
  void FillUp() {
    const int size = builder_.FreeSectors() * kSectorBytes - kTailBytes - 1;
    if (size <= 0) return;
    Image image = BareImage(imageCount_);
    image.title = "FILL";
    image.bytes = MakePayload(image.camera + 1, image.seconds, imageCount_, size);
    builder_.Add(image);
    ++imageCount_;
  }

  void AddImages() {
    const int most = std::min(wishes_.mostImages, layout_->mostImages) - (wishes_.fill ? 1 : 0);
    while (builder_.ImageCount() < most) {
      const Image image = NextImage();
      if (!builder_.Fits(image)) break;
      builder_.Add(image);
      ++imageCount_;
    }
    if (wishes_.fill) FillUp();
  }

  /// One image over the whole data area, all zeros but for its tail, so that on disk the block
  /// takes the one page that holds tail and trailer.
  void AddHole(int block) {
    Image image = BareImage(static_cast<std::uint32_t>(block));
    image.title = "HOLE";
    builder_.AddHole(image);
    ++imageCount_;
  }

  const Bytes& MakeBlock(int block) {
    const auto index = static_cast<std::size_t>(block - 1) % wishes_.layouts.size();
    layout_ = wishes_.layouts[index];
    builder_.Begin(*layout_, static_cast<std::uint32_t>(block));
    IsDense(block) ? AddImages() : AddHole(block);
    if (wishes_.damages.empty()) return builder_.Finish();
    damaged_ = builder_.Finish();
    for (const Damage& damage : wishes_.damages) {
      Victim victim = {*layout_, damaged_.data(), random_};
      if (damage.block == 0 || damage.block == block) damage.kind->apply(victim);
    }
    return damaged_;
  }

  const Wishes& wishes_;
  Random random_{kSeed};  ///< For damage.
  BlockBuilder builder_;
  const Layout* layout_ = nullptr;  ///< Of the block that is being made.
  Bytes damaged_;
  std::uint32_t imageCount_ = 0;
};

}  // namespace

std::uint32_t Record(const Wishes& wishes, const std::string& path) {
  return Recorder(wishes).Record(path);
}

}  // namespace tools
