#include "tools/comparison.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "tools/block_builder.h"
#include "tools/console.h"

namespace tools {
namespace {

/// What makes a part other than it should be.
struct Difference : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void Demand(bool holds, const std::string& difference) {
  if (!holds) throw Difference(difference);
}

std::string NameOf(int block, int image) {
  return std::to_string(block) + "." + std::to_string(image);
}

/// "byte 5000 is 58, not cb", or nothing when all are the same.
std::string FirstChange(const Bytes& wanted, const Bytes& found) {
  if (wanted.size() != found.size()) return "it has another length";
  const auto place = std::mismatch(wanted.begin(), wanted.end(), found.begin());
  if (place.first == wanted.end()) return "";
  char text[64];
  std::snprintf(text, sizeof text, "byte %td is %02x, not %02x", place.first - wanted.begin(),
                *place.second, *place.first);
  return text;
}

/// Builds the blocks of a rebuilt part once more, from the images of the source, and holds each
/// against the part's when it has as many images.
class Rebuilding {
 public:
  explicit Rebuilding(RecordingReader& part) : part_(part) { Begin(); }

  bool IsDone() const { return number_ > part_.BlockCount(); }
  bool IsNtsc() const { return !style_.pal; }

  /// The next image, which is number `index` of a block of the source.
  void Add(const Image& image, int block, int index) {
    Demand(!IsDone(), "source " + NameOf(block, index) + " and what follows is missing");
    Demand(builder_.Fits(image), "part's block " + std::to_string(number_) + " lists too much");
    builder_.Add(image);
    sources_.push_back(NameOf(block, index));
    if (builder_.ImageCount() == block_.listedCount) End();
  }

 private:
  void Begin() {
    if (IsDone()) return;
    block_ = part_.Read(number_);
    const std::string where = "part's block " + std::to_string(number_);
    Demand(block_.trouble.empty() && block_.damagedImages == 0, where + " is damaged");
    const Layout& form = FormOf(block_.layout->is20D);
    Demand(block_.layout == &form, where + " is of another type than rebuilt ones");
    // Number 1 goes to a block that is never written when the first image fills one all but alone.
    if (number_ == 1) {
      skipped_ = Get(block_.Trailer() + kSequence, 4) == 2 && block_.listedCount == 1 ? 1 : 0;
      style_.pal = !block_.ntsc;
    }
    builder_.Begin(form, static_cast<std::uint32_t>(number_ + skipped_));
    sources_.clear();
  }

  void End() {
    const Bytes& built = builder_.Finish();
    Bytes wanted(built.begin(), built.begin() + block_.trailer);
    const auto data = static_cast<std::ptrdiff_t>(block_.layout->trailer);
    wanted.insert(wanted.end(), built.begin() + data, built.end());
    const std::string change = FirstChange(wanted, block_.bytes);
    Demand(change.empty(), Where(wanted) + change);
    ++number_;
    Begin();
  }

  /// Which image of the part is other than its source, or that its trailer is.
  std::string Where(const Bytes& wanted) const {
    const auto place =
        std::mismatch(wanted.begin(), wanted.end(), block_.bytes.begin()).first - wanted.begin();
    const std::string block = "part's block " + std::to_string(number_) + ": ";
    for (std::size_t i = 0; i < sources_.size(); ++i) {
      const StoredImage& image = block_.images[i];
      if (place >= image.end) continue;
      return block + "image " + std::to_string(image.index) + " (camera " +
             std::to_string(image.camera + 1) + ", " + TimeText(image.Stamp()) + ", " +
             Quoted(image.title) + ") is not " + sources_[i] + " of the source: ";
    }
    return block + "its list is not that of its images: ";
  }

  RecordingReader& part_;
  BlockStyle style_;
  BlockBuilder builder_{style_};
  int number_ = 1;  ///< Of the part's block that is being built.
  int skipped_ = 0;
  StoredBlock block_;
  std::vector<std::string> sources_;  ///< Of its images.
};

/// Looks for the place of a part in its source: tries each block that the part may begin with.
class Search {
 public:
  Search(RecordingReader& source, RecordingReader& part, const Narrowing& narrowing)
      : source_(source), part_(part), narrowing_(narrowing) {
    range_ = narrowing.blocks.value_or(Range{1, source.BlockCount()});
    if (range_.last > source.BlockCount())
      throw std::invalid_argument("the source has only " + Counted(source.BlockCount(), "block"));
    cameras_ = narrowing.cameras.value_or(part.MaskedCameras());
    firstBlock_ = part.Read(1);
    best_.difference = part.Rest() > 0 ? "the part has bytes behind its last block"
                                       : "no block of the source begins as the part does";
    room_.Begin(FormOf(source.Is20D()), 1);
  }

  Comparison Run() {
    const int last = narrowing_.blocks ? range_.first : range_.last;
    for (int first = range_.first; first <= last && part_.Rest() == 0; ++first) {
      const StoredBlock& block = source_.Read(first);
      const bool asBlock = !narrowing_.cameras && BeginsAsBlock(block);
      const bool asImages = narrowing_.blocks || BeginsAsImages(block);
      if (asBlock && Try(first, &Search::CompareBlocks)) break;
      if (asImages && Try(first, &Search::CompareImages)) break;
    }
    return best_;
  }

 private:
  /// What is alike but for a part of it is the place to tell a difference from.
  bool BeginsAsBlock(const StoredBlock& block) const {
    const Bytes& bytes = firstBlock_.bytes;
    if (bytes.size() != block.bytes.size()) return false;
    const auto trailer = bytes.begin() + block.trailer;
    return std::equal(bytes.begin(), trailer, block.bytes.begin()) ||
           std::equal(trailer, bytes.end(), block.bytes.begin() + block.trailer);
  }

  bool BeginsAsImages(const StoredBlock& block) const {
    const auto kept =
        std::find_if(block.images.begin(), block.images.end(), [&](const StoredImage& image) {
          return IsOfCameras(image) && image.trouble.empty() && room_.Fits(Saved(block, image));
        });
    if (kept == block.images.end() || firstBlock_.images.empty()) return false;
    const StoredImage& wanted = firstBlock_.images.front();
    return kept->camera == wanted.camera && kept->seconds == wanted.seconds;
  }

  bool IsOfCameras(const StoredImage& image) const { return cameras_.count(image.camera + 1) > 0; }

  /// Compares from a block of the source on. What agrees longest is what is told.
  bool Try(int first, void (Search::*compare)(int)) {
    found_ = Comparison();
    found_.blocks = {first, first};
    try {
      (this->*compare)(first);
    } catch (const Difference& difference) {
      found_.difference = difference.what();
    }
    if (found_.difference.empty() || found_.contents.all.count > mostImages_) {
      mostImages_ = found_.contents.all.count;
      best_ = found_;
    }
    return best_.difference.empty();
  }

  void CompareBlocks(int first) {
    for (int i = 1; i <= part_.BlockCount(); ++i) {
      const int number = first + i - 1;
      Demand(number <= range_.last,
             "the part goes on behind block " + std::to_string(range_.last) + " of the source");
      const StoredBlock& block = source_.Read(number);
      const std::string change = FirstChange(block.bytes, part_.Read(i).bytes);
      Demand(change.empty(), "part's block " + std::to_string(i) + " is not block " +
                                 std::to_string(number) + " of the source: " + change);
      found_.blocks.last = number;
      found_.contents.Add(block);
    }
    Demand(!narrowing_.blocks || found_.blocks.last == range_.last,
           "the part ends with block " + std::to_string(found_.blocks.last) + " of the source");
  }

  void CompareImages(int first) {
    found_.rebuilt = true;
    Rebuilding part(part_);
    bool ntsc = part.IsNtsc();
    for (int number = first; number <= range_.last && (!part.IsDone() || narrowing_.blocks);
         ++number) {
      const StoredBlock& block = source_.Read(number);
      if (block.layout != nullptr) ntsc = block.ntsc;
      if (!block.trouble.empty()) ++found_.contents.damagedBlocks;
      for (const StoredImage& image : block.images)
        if (IsOfCameras(image)) CompareNext(block, image, part);
      found_.blocks.last = number;
    }
    Demand(part.IsDone(), "the part has more images than the source there");
    Demand(ntsc == part.IsNtsc(), "the part is of another video standard");
  }

  void CompareNext(const StoredBlock& block, const StoredImage& image, Rebuilding& part) {
    if (!image.trouble.empty()) return found_.contents.Add(image);
    const Image saved = Saved(block, image);
    if (!room_.Fits(saved)) {
      ++found_.largeImages;
      return;
    }
    part.Add(saved, block.number, image.index);
    found_.contents.Add(image);
    if (image.sound != saved.sound) ++found_.lostSounds;
    if (image.tailTitle != ShownTitle(image.tailTitle)) ++found_.longTitles;
  }

  RecordingReader& source_;
  RecordingReader& part_;
  const Narrowing& narrowing_;
  Range range_;
  std::set<int> cameras_;
  BlockStyle style_;
  BlockBuilder room_{style_};  ///< An empty block, to ask what fits into one.
  StoredBlock firstBlock_;     ///< Of the part.
  Comparison found_;           ///< At the place that is tried.
  Comparison best_;
  std::int64_t mostImages_ = -1;
};

}  // namespace

Image Saved(const StoredBlock& block, const StoredImage& image) {
  Image saved = image;
  if (saved.tail && saved.bytes.back() == 0) saved.bytes.pop_back();
  if (saved.title.empty()) saved.title = "Camera " + std::to_string(image.camera + 1);
  if (block.layout->type == 0x20) saved.sound.clear();
  saved.tail = true;
  return saved;
}

void Times::Add(std::int64_t stamp) {
  first = std::min(first, stamp);
  last = std::max(last, stamp);
}

void Contents::Add(const StoredImage& image) {
  damagedImages += image.trouble.empty() ? 0 : 1;
  if (!image.trouble.empty()) return;
  for (Images* images : {&all, &cameras[image.camera + 1]}) {
    ++images->count;
    images->titles.insert(image.title);
    images->times.Add(image.Stamp());
  }
}

void Contents::Add(const StoredBlock& block) {
  if (!block.trouble.empty()) ++damagedBlocks;
  for (const StoredImage& image : block.images) Add(image);
}

Comparison Compare(const std::string& source, const std::string& part, const Narrowing& narrowing,
                   bool withSums) {
  Progress progress;
  RecordingReader from(source, &progress);
  RecordingReader to(part, &progress);
  Comparison found = Search(from, to, narrowing).Run();
  found.source = from.Facts(withSums);
  found.part = to.Facts(withSums);
  return found;
}

}  // namespace tools
