#include "tools/comparison.h"

#include <algorithm>
#include <cstdio>

#include <stdexcept>

#include "tools/listing.h"

namespace tools {
namespace {

/// What makes a part other than it should be.
class Difference : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string NameOf(const StoredBlock& block, const StoredImage& image) {
  return std::to_string(block.number) + "." + std::to_string(image.index);
}

void Demand(bool holds, const std::string& difference) {
  if (!holds) throw Difference(difference);
}

template <typename Value>
void DemandSame(const std::string& where, const Value& wanted, const Value& found) {
  Demand(wanted == found,
         where + " is " + std::to_string(found) + ", not " + std::to_string(wanted));
}

void DemandSame(const std::string& where, const std::string& wanted, const std::string& found) {
  Demand(wanted == found, where + " is " + Quoted(found) + ", not " + Quoted(wanted));
}

void DemandSameBytes(const std::string& where, const std::uint8_t* wanted,
                     const std::uint8_t* found, int count) {
  const auto place = std::mismatch(wanted, wanted + count, found).first - wanted;
  if (place == count) return;
  char text[64];
  std::snprintf(text, sizeof text, " differs at byte %td: %02x, not %02x", place, found[place],
                wanted[place]);
  throw Difference(where + text);
}

/// The title that an image is saved with.
std::string TitleToSave(const StoredBlock& block, const StoredImage& image) {
  const std::string title = TitleOf(block, image);
  return title.empty() ? "Camera " + std::to_string(image.camera + 1) : title;
}

/// Checks the trailer of a rebuilt block, the `sequence`-th, against its images.
void CheckTrailer(const StoredBlock& block, int sequence) {
  const Layout& layout = *block.layout;
  const std::string where = "part's block " + std::to_string(block.number) + ": ";
  Demand(block.isKnown && layout.type == FormOf(layout.is20D).type, where + "wrong block type");
  Demand(!block.images.empty(), where + "no images");
  std::int64_t earliest = UINT32_MAX;
  std::int64_t latest = 0;
  std::uint32_t cameras = 0, texts = 0;
  std::array<std::uint32_t, kFlagMasks.size()> flags = {};
  for (const StoredImage& image : block.images) {
    Demand(image.trouble.empty(),
           where + "image " + std::to_string(image.index) + " " + image.trouble);
    const std::uint32_t bit = 1u << image.camera;
    cameras |= bit;
    if (image.textSectors > 0) texts |= bit;
    if (image.flags > 0) flags[static_cast<std::size_t>(image.flags) - 1] |= bit;
    earliest = std::min(earliest, image.seconds);
    latest = std::max(latest, image.seconds);
  }
  const auto demand = [&](const std::string& name, int place, int width, std::int64_t wanted) {
    DemandSame(where + name, static_cast<std::uint32_t>(wanted),
               Get(block.Trailer() + place, width));
  };
  demand("sequence number", kSequence, 4, sequence);
  demand("place of the list", kListPlace, 1, 36);
  demand("earliest time", kEarliest, 4, earliest);
  demand("start time", kStart, 4, earliest);
  demand("end time", kEnd, 4, latest);
  demand("camera mask", layout.cameraMask, 2, cameras);
  demand("text mask", kTextMask, 2, texts);
  demand("video standard", layout.videoByte, 2, block.ntsc ? layout.videoBit << 8 : 0);
  for (std::size_t i = 0; i < flags.size(); ++i)
    demand("mask of flags " + std::to_string(i + 1), kFlagMasks[i], 2, flags[i]);
}

/// Goes through the images of a rebuilt part.
class RebuiltPart {
 public:
  explicit RebuiltPart(RecordingReader& reader) : reader_(reader) { FindNext(); }

  /// The next image; null behind the last one.
  const StoredImage* Next() const { return block_ ? &block_->images[image_] : nullptr; }
  const StoredBlock& Block() const { return *block_; }
  void Advance() {
    ++image_;
    FindNext();
  }

  /// What a reader finds when the writer stores a title: it overwrites the last one's beginning.
  std::string TitleAfter(const std::string& title) {
    title_.replace(0, title.size(), title);
    return title_.substr(0, std::min<std::size_t>(title_.find('\0'), kTitleBytes));
  }

 private:
  void FindNext() {
    while (number_ == 0 || (block_ && image_ == block_->images.size())) {
      block_ = number_ == reader_.BlockCount() ? nullptr : &reader_.Read(++number_);
      if (!block_) return;
      CheckTrailer(*block_, number_ + SkippedNumbers());
      image_ = 0;
      title_.assign(kTailTitleBytes, '\0');
    }
  }

  /// The writer keeps a reserve free and begins a new block for an image that would reach into it.
  /// When that is the file's first image, number 1 goes to a block that is never written.
  int SkippedNumbers() {
    if (block_->number == 1 && !block_->images.empty()) {
      const StoredImage& first = block_->images.front();
      constexpr int kReserve = 4 * kSectorBytes;
      const int size = first.bytesEnd - first.begin + first.end - first.soundBegin;
      skipsFirst_ =
          size + kReserve >= block_->layout->trailer && Get(block_->Trailer() + kSequence, 4) == 2;
    }
    return skipsFirst_ ? 1 : 0;
  }

  RecordingReader& reader_;
  int number_ = 0;  ///< Of the block, from 1 on.
  const StoredBlock* block_ = nullptr;
  std::size_t image_ = 0;
  std::string title_;
  bool skipsFirst_ = false;
};

/// Sectors that the writer gives to so many bytes and their tail.
int SectorsFor(int bytes) {
  return (bytes + kTailBytes) / kSectorBytes + 1;
}

/// Bytes of an image that are handed to the writer: all that lie before the tail. A zero at their
/// end is padding, and one byte less keeps the image in as many sectors as it had.
int BytesToSave(const StoredBlock& block, const StoredImage& image) {
  const bool padded = image.hasTail && *block.At(image.bytesEnd - 1) == 0;
  return image.bytesEnd - image.begin - (padded ? 1 : 0);
}

void CompareBytes(const std::string& where, const StoredBlock& block, const StoredImage& image,
                  const StoredBlock& partBlock, const StoredImage& saved) {
  const int size = BytesToSave(block, image);
  DemandSame(where + "room for image bytes", SectorsFor(size) * kSectorBytes - kTailBytes,
             saved.bytesEnd - saved.begin);
  DemandSameBytes(where + "image", block.At(image.begin), partBlock.At(saved.begin), size);
  const bool zeros = std::all_of(partBlock.At(saved.begin) + size, partBlock.At(saved.bytesEnd),
                                 [](std::uint8_t byte) { return byte == 0; });
  Demand(zeros, where + "image is followed by other bytes than zeros");
}

/// Bytes of an image's sound that are saved: those of block type 0x20 are not.
int SoundToSave(const StoredBlock& block, const StoredImage& image) {
  return block.layout->type == 0x20 ? 0 : image.end - image.soundBegin;
}

void CompareImage(const StoredBlock& block, const StoredImage& image, RebuiltPart& part) {
  const StoredBlock& partBlock = part.Block();
  const StoredImage& saved = *part.Next();
  const std::string where =
      "source " + NameOf(block, image) + ", part " + NameOf(partBlock, saved) + ": ";
  DemandSame(where + "camera", image.camera + 1, saved.camera + 1);
  DemandSame(where + "time", TimeText(static_cast<std::uint32_t>(image.seconds)),
             TimeText(saved.seconds));
  const std::string title = TitleToSave(block, image);
  const std::string overwritten = part.TitleAfter(title);
  if (saved.title != title) DemandSame(where + "title", overwritten, saved.title);
  DemandSame(where + "flags", image.flags, saved.flags);
  DemandSame(where + "text", image.text, saved.text);
  DemandSame(where + "text sectors", image.text.empty() ? 0 : 1, saved.textSectors);
  CompareBytes(where, block, image, partBlock, saved);
  const int sound = SoundToSave(block, image);
  DemandSame(where + "bytes of sound", sound, saved.end - saved.soundBegin);
  DemandSameBytes(where + "sound", block.At(image.soundBegin), partBlock.At(saved.soundBegin),
                  sound);
}

/// Whether a new block has room for an image, and for nothing else if need be.
bool FitsNewBlock(const StoredBlock& block, const StoredImage& image) {
  const int sectors = SectorsFor(BytesToSave(block, image)) + (image.text.empty() ? 0 : 1) +
                      SoundToSave(block, image) / kSectorBytes;
  return sectors * kSectorBytes <= FormOf(block.layout->is20D).trailer;
}

/// Whether a tail holds more than the title that readers take of it.
bool HasMoreThanTitle(const StoredBlock& block, const StoredImage& image) {
  if (!image.hasTail) return false;
  const std::uint8_t* title = block.At(image.bytesEnd) + kTailTitle;
  return std::any_of(title + image.title.size(), title + kTailTitleBytes,
                     [](std::uint8_t byte) { return byte != 0; });
}

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
    best_.difference = "no block of the source begins as the part does";
  }

  Comparison Run() {
    if (part_.Rest() > 0) best_.difference = "the part has bytes behind its last block";
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
    return narrowing_.blocks || std::equal(bytes.begin(), trailer, block.bytes.begin()) ||
           std::equal(trailer, bytes.end(), block.bytes.begin() + block.trailer);
  }

  bool BeginsAsImages(const StoredBlock& block) const {
    const auto kept = std::find_if(block.images.begin(), block.images.end(),
                                   [&](const StoredImage& image) { return IsKept(block, image); });
    if (kept == block.images.end() || firstBlock_.images.empty()) return false;
    const StoredImage& wanted = firstBlock_.images.front();
    return kept->camera == wanted.camera &&
           static_cast<std::uint32_t>(kept->seconds) == wanted.seconds;
  }

  bool IsOfCameras(const StoredImage& image) const {
    return std::binary_search(cameras_.begin(), cameras_.end(), image.camera + 1);
  }

  bool IsKept(const StoredBlock& block, const StoredImage& image) const {
    return IsOfCameras(image) && image.trouble.empty() && FitsNewBlock(block, image);
  }

  /// Compares from a block of the source on. What agrees longest is what is told.
  bool Try(int first, void (Search::*compare)(int)) {
    found_ = Comparison();
    found_.blocks = {first, first};
    agreed_ = 0;
    try {
      (this->*compare)(first);
    } catch (const Difference& difference) {
      found_.difference = difference.what();
    }
    if (found_.difference.empty() || agreed_ > mostAgreed_) {
      mostAgreed_ = agreed_;
      best_ = found_;
    }
    return best_.difference.empty();
  }

  void Count(const StoredBlock& block, const StoredImage& image) {
    agreed_ += image.end - image.begin;
    ++found_.images;
    found_.cameras.insert(image.camera + 1);
    found_.times.Add(static_cast<std::uint32_t>(image.seconds));
    if (!found_.rebuilt) return;
    if (image.soundBegin < image.end && SoundToSave(block, image) == 0) ++found_.lostSounds;
    if (HasMoreThanTitle(block, image)) ++found_.longTitles;
  }

  void CompareBlocks(int first) {
    for (int i = 1; i <= part_.BlockCount(); ++i) {
      const int number = first + i - 1;
      Demand(number <= range_.last,
             "the part goes on behind block " + std::to_string(range_.last) + " of the source");
      const StoredBlock& block = source_.Read(number);
      const Bytes& bytes = part_.Read(i).bytes;
      const std::string where =
          "part's block " + std::to_string(i) + ", the source's " + std::to_string(number) + ":";
      DemandSame(where + " length", block.bytes.size(), bytes.size());
      DemandSameBytes(where, block.bytes.data(), bytes.data(), static_cast<int>(bytes.size()));
      agreed_ += 2 * kBlockBytes;  // Rather than as the images in it.
      found_.blocks.last = number;
      found_.damagedImages += block.damagedImages;
      if (!block.trouble.empty()) ++found_.damagedBlocks;
      for (const StoredImage& image : block.images)
        if (image.trouble.empty()) Count(block, image);
    }
    Demand(!narrowing_.blocks || found_.blocks.last == range_.last,
           "the part ends with block " + std::to_string(found_.blocks.last) + " of the source");
  }

  void CompareImages(int first) {
    found_.rebuilt = true;
    RebuiltPart part(part_);
    bool ntsc = false;
    for (int number = first; number <= range_.last && (part.Next() || narrowing_.blocks);
         ++number) {
      const StoredBlock& block = source_.Read(number);
      if (block.isKnown) ntsc = block.ntsc;
      if (!block.trouble.empty()) ++found_.damagedBlocks;
      for (const StoredImage& image : block.images)
        if (IsOfCameras(image)) CompareNext(block, image, part);
      found_.blocks.last = number;
    }
    Demand(!part.Next(), "the part has more images than the source there");
    Demand(found_.images > 0, "the source has no image of these cameras there");
    DemandSame("video standard NTSC", ntsc ? 1 : 0, part_.Read(1).ntsc ? 1 : 0);
  }

  void CompareNext(const StoredBlock& block, const StoredImage& image, RebuiltPart& part) {
    if (!image.trouble.empty()) {
      ++found_.damagedImages;
    } else if (!FitsNewBlock(block, image)) {
      ++found_.largeImages;
    } else {
      Demand(part.Next(), "source " + NameOf(block, image) + " and what follows is missing");
      CompareImage(block, image, part);
      Count(block, image);
      part.Advance();
    }
  }

  RecordingReader& source_;
  RecordingReader& part_;
  const Narrowing& narrowing_;
  Range range_;
  std::vector<int> cameras_;
  StoredBlock firstBlock_;  ///< Of the part.
  Comparison found_;        ///< At the place that is tried.
  std::int64_t agreed_ = 0;
  Comparison best_;
  std::int64_t mostAgreed_ = -1;
};

}  // namespace

void Times::Add(std::int64_t seconds) {
  first = std::min(first, seconds);
  last = std::max(last, seconds);
}

Comparison Compare(RecordingReader& source, RecordingReader& part, const Narrowing& narrowing) {
  Comparison found = Search(source, part, narrowing).Run();
  found.source = source.Path();
  found.part = part.Path();
  found.sourceSize = source.Size();
  found.partSize = part.Size();
  return found;
}

}  // namespace tools
