#include "capture/clsCreate60D.h"

#include "capture/mdlFileProcessing.h"
#include "platform/runtime_error.h"

namespace {

/// A gap before the trailer of up to so many bytes is written, as zeros: file systems take a whole
/// block in one write a third faster than in two of odd sizes.
constexpr std::int32_t kSmallGap = 256 * 1024;

}  // namespace

clsCreate60D::clsCreate60D(NewFile& file)
    : file_(file), variant_(&format::VariantOf(mdlFileProcessing::bln20D)) {
  ChangeBlock();
}

bool clsCreate60D::Create60DFile(const std::string& Filename) {
  variant_ = &format::VariantOf(mdlFileProcessing::bln20D);
  block_.ResetTrailer(*variant_);
  ready_ = file_.Create(Filename);
  fileSize_ = 0;
  return ready_;
}

bool clsCreate60D::FileIsReady() const {
  return ready_;
}

void clsCreate60D::SetVideoStandardToPAL(bool vsPAL) {
  isPal_ = vsPAL;
}

double clsCreate60D::GetCurrentFileSize() const {
  return fileSize_;
}

bool clsCreate60D::HasFailed() const {
  return failed_;
}

bool clsCreate60D::CanHold(const mdlCreate60DFile::NewImage& image) const {
  return block_.CanHold(image);
}

void clsCreate60D::AddDataTo60DFile(const std::uint8_t* Image, std::int32_t StartPosition,
                                    std::int32_t ImageSize, std::int16_t Flags,
                                    const std::string& Title, const std::string& atmText,
                                    std::int32_t Seconds, std::int32_t CameraNumber,
                                    std::int32_t AudioSectNum, const std::uint8_t* AudioArr) {
  if (!FileIsReady()) return;
  if (StartPosition < 0) throw RuntimeError::SubscriptOutOfRange("clsCreate60D");
  const mdlCreate60DFile::NewImage image = {
      Image + StartPosition, ImageSize,    Flags,   Title, atmText, Seconds,
      CameraNumber,          AudioSectNum, AudioArr};
  if (!CanHold(image)) throw RuntimeError::Overflow("clsCreate60D");
  if (!block_.HasRoomFor(image)) ChangeBlock();
  block_.Add(image);
}

void clsCreate60D::ChangeBlock() {
  WriteBlock(variant_->trailerOffset);
  block_.ResetTrailer(*variant_);
  block_.ResetData();
  ++blockSequence_;
}

void clsCreate60D::WriteBlock(std::int32_t trailerOffset) {
  if (block_.imageCount() == 0) return;
  block_.Seal(blockSequence_, isPal_ ? 0 : format::trailer30::kNtsc);
  if (trailerOffset - block_.dataLength() <= kSmallGap) {
    block_.JoinTrailer(trailerOffset);
    WriteAt(0, block_.data(), block_.dataLength());
  } else {
    WriteAt(0, block_.data(), block_.dataLength());
    WriteAt(trailerOffset, block_.trailer().data(), variant_->trailerLength);
  }
  ++blockPosition_;
  fileSize_ = static_cast<double>(file_.size());
}

void clsCreate60D::WriteAt(std::int32_t offset, const std::uint8_t* bytes, std::int32_t count) {
  const std::int64_t position = std::int64_t{blockPosition_} * format::kBlockSize + offset;
  if (!file_.WriteAt(position, bytes, static_cast<std::uint32_t>(count))) failed_ = true;
}

void clsCreate60D::Close60dFile() {
  if (!FileIsReady()) return;
  WriteBlock(block_.dataLength());
  ready_ = false;
  if (!file_.Finish()) failed_ = true;
}
