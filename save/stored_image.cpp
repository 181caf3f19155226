#include "save/stored_image.h"

#include "capture/mdlFileProcessing.h"
#include "platform/trimmed.h"

using mdlFileProcessing::bytRecord;
using mdlFileProcessing::ReadBigEndian;

namespace {

/// Index in `bytRecord` of a byte that was read.
constexpr int At(std::int32_t byte) {
  return byte + 1;
}

/// Whether the last bytes before `end` are an image tail. The old block types have images without.
bool HasTail(const format::BlockType& type, std::int32_t end) {
  return type.alwaysHasTails ||
         ReadBigEndian(bytRecord, At(end - format::tail::kLength), 4) == format::tail::kMarker;
}

/// Number of bytes of an image that ends before its tail.
std::int32_t SizeBeforeTail(std::int32_t begin, std::int32_t tail) {
  // The writer adds a sector where an image leaves no room for its tail, and these bytes, padding
  // and all, would reach one byte too far for it.
  return tail - begin - (bytRecord[At(tail - 1)] == 0 ? 1 : 0);
}

std::string TextOf(const Extent& extent) {
  if (extent.text == extent.sound) return "";
  if (ReadBigEndian(bytRecord, At(extent.text), 4) != format::text::kMarker) return "";
  std::int32_t length = ReadBigEndian(bytRecord, At(extent.text + format::text::kLength), 4);
  return mdlFileProcessing::ReadTextField(bytRecord, At(extent.text + format::text::kText), length);
}

}  // namespace

// The title is the one in the image's tail, else the one in its block's table, else one made from
// its camera.
StoredImage::StoredImage(const IndexedBlock& block, const IndexedImage& image, const Extent& extent)
    : image_(image),
      extent_(extent),
      size_(extent.text - extent.begin),
      seconds_(image.seconds),
      soundSectors_(block.type->keepsSound ? image.soundSectors : 0),
      text_(TextOf(extent)) {
  if (HasTail(*block.type, extent.text)) {
    const std::int32_t tail = extent.text - format::tail::kLength;
    size_ = SizeBeforeTail(extent.begin, tail);
    seconds_ = ReadBigEndian(bytRecord, At(tail + format::tail::kSeconds), 4);
    title_ = Trimmed(mdlFileProcessing::ReadTitleField(bytRecord, At(tail + format::tail::kTitle)));
  }
  if (title_.empty() && block.titles) title_ = Trimmed((*block.titles)[image.camera]);
  if (title_.empty()) title_ = "Camera " + std::to_string(image.camera + 1);
}

mdlCreate60DFile::NewImage StoredImage::AsNewImage() const {
  return {.bytes = bytRecord.data() + extent_.begin,
          .size = size_,
          .flags = image_.flags >> format::kFlagsShift,
          .title = title_,
          .text = text_,
          .seconds = seconds_,
          .camera = image_.camera,
          .soundSectors = soundSectors_,
          .sound = bytRecord.data() + extent_.sound};
}
