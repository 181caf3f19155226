#include "capture/image_list.h"

#include <algorithm>

#include "capture/capture_time.h"
#include "capture/mdlFileProcessing.h"
#include "platform/trimmed.h"

using format::BlockType;
using mdlCreate60DFile::NewImage;
using mdlFileProcessing::Bytes;
using mdlFileProcessing::ReadBigEndian;

namespace {

/// The sector number behind a data area that is full to its trailer. It has a bit more than the 12
/// of an entry, and so reaches into the bits of the flags.
constexpr std::int32_t kBehindLastSector = 0x1000;

/// The lists of one trailer.
class ListDecoder {
 public:
  ListDecoder(const BlockType& type, Bytes trailer, std::int32_t trailerPlace)
      : type_(type), trailer_(trailer), trailerPlace_(trailerPlace) {}

  IndexedBlock Decode() const {
    IndexedBlock block = {.type = &type_,
                          .isNotPal = (trailer_[Index(type_.videoStandard)] & type_.notPal) != 0};
    if (type_.titles != format::kAbsent)
      for (int camera = 0; camera < format::kCameras; ++camera)
        block.titles.push_back(mdlFileProcessing::ReadTitleField(
            trailer_, type_.titles + camera * format::tail::kTitleRead));
    const int count = std::min(ReadBigEndian(trailer_, type_.imageCount, 2), type_.MostImages());
    block.images.reserve(Index(count));
    for (int k = 0; k < count; ++k) {
      block.images.push_back(EntryAt(type_.entryList + k * type_.entry.size));
      if (!type_.alwaysHasTails) block.images.back().seconds = ListedSeconds(k, count);
    }
    return block;
  }

 private:
  static std::size_t Index(int offset) { return static_cast<std::size_t>(offset); }

  IndexedImage EntryAt(int offset) const {
    const format::EntryLayout& entry = type_.entry;
    IndexedImage image;
    image.flags =
        (trailer_[Index(offset + entry.flags)] & format::kStoredFlags) >> format::kFlagsShift;
    image.camera =
        static_cast<std::uint8_t>(trailer_[Index(offset + entry.camera)] & entry.cameraBits);
    if (entry.soundAndText != format::kAbsent) {
      const std::uint8_t parts = trailer_[Index(offset + entry.soundAndText)];
      image.textSectors = parts & format::kTextBits;
      image.soundSectors = static_cast<std::uint8_t>(parts >> format::kSoundShift);
    }
    Place(image, FirstSector(offset + entry.sector), EndSector(offset + entry.size + entry.sector));
    return image;
  }

  void Place(IndexedImage& image, std::int32_t start, std::int32_t end) const {
    const bool hasBytes = start >= 0 && start < end - image.soundSectors - image.textSectors;
    if (!hasBytes || end * format::kSectorSize > trailerPlace_) return;
    image.startSector = static_cast<std::uint16_t>(start);
    image.endSector = static_cast<std::uint16_t>(end);
  }

  /// The sector, from the block's start, whose number stands at `offset`.
  std::int32_t FirstSector(int offset) const {
    const std::int32_t number = type_.entry.wideSectors
                                    ? ReadBigEndian(trailer_, offset, 2)
                                    : mdlFileProcessing::ReadSectorNumber(trailer_, offset, 2);
    return number - type_.variant().trailerSectors;
  }
  /// The same where an image ends.
  std::int32_t EndSector(int offset) const {
    return ReadBigEndian(trailer_, offset, 2) == kBehindLastSector
               ? kBehindLastSector - type_.variant().trailerSectors
               : FirstSector(offset);
  }

  /// The time stamp of image `k` (from 0) of `count` that have no tails.
  std::int32_t ListedSeconds(int k, int count) const {
    const std::int64_t start = TimeOfStamp(ReadBigEndian(trailer_, format::trailer::kStart, 4));
    const std::int64_t span =
        TimeOfStamp(ReadBigEndian(trailer_, format::trailer::kEnd, 4)) - start;
    const int listed = type_.entry.secondsOfBlock;
    const std::int64_t after =
        listed == format::kAbsent
            ? span * k / std::max(count - 1, 1)
            : ReadBigEndian(trailer_, type_.entryList + k * type_.entry.size + listed, 2);
    return static_cast<std::int32_t>(start + after);
  }

  const BlockType& type_;
  Bytes trailer_;
  std::int32_t trailerPlace_;
};

/// The image's bytes before its tail. The writer adds a sector where an image leaves no room for
/// its tail, and these, padding and all, would reach one byte too far for it.
Bytes BeforeTail(Bytes bytes) {
  const Bytes all = bytes.first(bytes.size() - format::tail::kLength);
  return all.back() == 0 ? all.first(all.size() - 1) : all;
}

std::string TextIn(Bytes sectors) {
  if (sectors.empty() || ReadBigEndian(sectors, 0, 4) != format::text::kMarker) return "";
  std::int32_t length = ReadBigEndian(sectors, format::text::kLength, 4);
  return mdlFileProcessing::ReadTextField(sectors, format::text::kText, length);
}

}  // namespace

IndexedBlock DecodeList(Bytes trailer, std::int32_t trailerPlace, bool is20D) {
  const BlockType* type = format::BlockTypeOf(is20D, trailer[format::trailer::kBlockType]);
  return type ? ListDecoder(*type, trailer, trailerPlace).Decode() : IndexedBlock();
}

std::optional<IndexedBlock> ReadList(SourceFile& source, std::int32_t block) {
  const bool is20D = mdlFileProcessing::bln20D;
  std::vector<std::uint8_t> trailer(
      static_cast<std::size_t>(format::VariantOf(is20D).trailerLength));
  if (source.ReadTrailer(block, 0, trailer) != std::ssize(trailer)) return std::nullopt;
  return DecodeList(trailer, source.TrailerOf(block), is20D);
}

NewImage DecodeImage(const IndexedBlock& block, const IndexedImage& image, Bytes bytes) {
  const auto text = static_cast<std::size_t>(image.Text() - image.Begin());
  const auto sound = static_cast<std::size_t>(image.Sound() - image.Begin());
  NewImage decoded = {.bytes = bytes.first(text),
                      .flags = image.flags,
                      .text = TextIn(bytes.subspan(text, sound - text)),
                      .seconds = image.seconds,
                      .camera = image.camera};
  if (block.type->keepsSound) decoded.sound = bytes.subspan(sound);
  const Bytes tail = decoded.bytes.last(format::tail::kLength);
  if (block.type->alwaysHasTails || ReadBigEndian(tail, 0, 4) == format::tail::kMarker) {
    decoded.bytes = BeforeTail(decoded.bytes);
    decoded.seconds = ReadBigEndian(tail, format::tail::kSeconds, 4);
    decoded.title = Trimmed(mdlFileProcessing::ReadTitleField(tail, format::tail::kTitle));
  }
  if (decoded.title.empty() && !block.titles.empty())
    decoded.title = Trimmed(block.titles[image.camera]);
  if (decoded.title.empty()) decoded.title = "Camera " + std::to_string(image.camera + 1);
  return decoded;
}
