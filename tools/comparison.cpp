#include "tools/comparison.h"

#include <algorithm>
#include <cstdio>

#include "tools/listing.h"
#include "tools/recording_reader.h"

namespace tools {
namespace {

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

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The title that an image is saved with.
std::string TitleToSave(const StoredBlock& block, const StoredImage& image) {
  std::string title = Trimmed(image.title);
  if (title.empty() && !block.titles.empty())
    title = Trimmed(block.titles[static_cast<std::size_t>(image.camera)]);
  return title.empty() ? "Camera " + std::to_string(image.camera + 1) : title;
}

/// Checks the trailer of a rebuilt block, the `sequence`-th, against its images.
void CheckTrailer(const StoredBlock& block, int sequence) {
  const Layout& layout = *block.layout;
  const std::string where = "target block " + std::to_string(block.number) + ": ";
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
  for (std::size_t i = 0; i < flags.size(); ++i)
    demand("mask of flags " + std::to_string(i + 1), kFlagMasks[i], 2, flags[i]);
}

/// Goes through the images of a rebuilt file.
class RebuiltFile {
 public:
  explicit RebuiltFile(const std::string& path) : reader_(path) {
    DemandSame("bytes behind the last block", std::int64_t{0}, reader_.Rest());
  }

  /// The next image; null after the last one.
  const StoredImage* Next() {
    while (!block_ || image_ == block_->images.size()) {
      if (block_ && block_->number == reader_.BlockCount()) return nullptr;
      block_ = &reader_.Read(block_ ? block_->number + 1 : 1);
      CheckTrailer(*block_, block_->number + SkippedNumbers());
      image_ = 0;
      title_.assign(kTailTitleBytes, '\0');
    }
    return &block_->images[image_++];
  }

  const StoredBlock& Block() const { return *block_; }

  /// What a reader finds when the writer stores a title: it overwrites the last one's beginning.
  std::string TitleAfter(const std::string& title) {
    title_.replace(0, title.size(), title);
    return title_.substr(0, std::min<std::size_t>(title_.find('\0'), kTitleBytes));
  }

 private:
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

  RecordingReader reader_;
  const StoredBlock* block_ = nullptr;
  std::size_t image_ = 0;
  std::string title_;
  bool skipsFirst_ = false;
};

/// Bytes of an image that are handed to the writer: all that lie before the tail. A zero at their
/// end is padding, and one byte less keeps the image in as many sectors as it had.
int BytesToSave(const StoredBlock& block, const StoredImage& image) {
  const bool padded = image.hasTail && *block.At(image.bytesEnd - 1) == 0;
  return image.bytesEnd - image.begin - (padded ? 1 : 0);
}

void CompareBytes(const std::string& where, const StoredBlock& block, const StoredImage& image,
                  const StoredBlock& targetBlock, const StoredImage& saved) {
  const int size = BytesToSave(block, image);
  const int room = ((size + kTailBytes) / kSectorBytes + 1) * kSectorBytes - kTailBytes;
  DemandSame(where + "room for image bytes", room, saved.bytesEnd - saved.begin);
  DemandSameBytes(where + "image", block.At(image.begin), targetBlock.At(saved.begin), size);
  const bool zeros = std::all_of(targetBlock.At(saved.begin) + size, targetBlock.At(saved.bytesEnd),
                                 [](std::uint8_t byte) { return byte == 0; });
  Demand(zeros, where + "image is followed by other bytes than zeros");
}

void CompareImage(const StoredBlock& block, const StoredImage& image, RebuiltFile& target,
                  const StoredImage& saved) {
  const StoredBlock& targetBlock = target.Block();
  const std::string where =
      "source " + NameOf(block, image) + ", target " + NameOf(targetBlock, saved) + ": ";
  DemandSame(where + "camera", image.camera + 1, saved.camera + 1);
  DemandSame(where + "time", TimeText(static_cast<std::uint32_t>(image.seconds)),
             TimeText(saved.seconds));
  const std::string title = TitleToSave(block, image);
  const std::string overwritten = target.TitleAfter(title);
  if (saved.title != title) DemandSame(where + "title", overwritten, saved.title);
  DemandSame(where + "flags", image.flags, saved.flags);
  DemandSame(where + "text", image.text, saved.text);
  DemandSame(where + "text sectors", image.text.empty() ? 0 : 1, saved.textSectors);
  CompareBytes(where, block, image, targetBlock, saved);
  // Sound of block type 0x20 is not kept.
  const int sound = block.layout->type == 0x20 ? 0 : image.end - image.soundBegin;
  DemandSame(where + "bytes of sound", sound, saved.end - saved.soundBegin);
  DemandSameBytes(where + "sound", block.At(image.soundBegin), targetBlock.At(saved.soundBegin),
                  sound);
}

Range RangeIn(const RecordingReader& reader, const std::optional<Range>& blocks) {
  const Range range = blocks.value_or(Range{1, reader.BlockCount()});
  if (range.last > reader.BlockCount())
    throw std::invalid_argument("the source has only " + std::to_string(reader.BlockCount()) +
                                " blocks");
  return range;
}

}  // namespace

int CompareBlocks(const std::string& source, const std::string& target,
                  const std::optional<Range>& blocks) {
  RecordingReader from(source);
  RecordingReader to(target);
  const Range range = RangeIn(from, blocks);
  const int count = range.last - range.first + 1;
  DemandSame("number of blocks", count, to.BlockCount());
  DemandSame("bytes behind the last block", std::int64_t{0}, to.Rest());
  for (int i = 1; i <= count; ++i) {
    const Bytes& wanted = from.Read(range.first + i - 1).bytes;
    const Bytes& found = to.Read(i).bytes;
    const std::string where = "target block " + std::to_string(i);
    DemandSame(where + " in bytes", wanted.size(), found.size());
    DemandSameBytes(where, wanted.data(), found.data(), static_cast<int>(wanted.size()));
  }
  return count;
}

int CompareImages(const std::string& source, const std::string& target,
                  const std::vector<int>& cameras, const std::optional<Range>& blocks) {
  RecordingReader from(source);
  RebuiltFile to(target);
  const Range range = RangeIn(from, blocks);
  int count = 0;
  bool ntsc = false;
  for (int number = range.first; number <= range.last; ++number) {
    const StoredBlock& block = from.Read(number);
    if (block.isKnown) ntsc = block.ntsc;
    for (const StoredImage& image : block.images) {
      if (!std::binary_search(cameras.begin(), cameras.end(), image.camera + 1)) continue;
      if (!image.trouble.empty()) continue;
      const StoredImage* saved = to.Next();
      Demand(saved != nullptr, "source " + NameOf(block, image) + " and what follows is missing");
      CompareImage(block, image, to, *saved);
      ++count;
    }
  }
  const StoredImage* more = to.Next();
  Demand(more == nullptr, "the target has more images than the source's range");
  if (count > 0) DemandSame("video standard NTSC", ntsc ? 1 : 0, to.Block().ntsc ? 1 : 0);
  return count;
}

}  // namespace tools
