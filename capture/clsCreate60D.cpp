#include "capture/clsCreate60D.h"

#include "capture/mdlFileProcessing.h"
#include "platform/runtime_error.h"

namespace {

/// A gap before the trailer of up to so many bytes is written, as zeros: file systems take a whole
/// block in one write a third faster than in two of odd sizes.
constexpr std::int32_t kSmallGap = 256 * 1024;

}  // namespace

clsCreate60D::clsCreate60D(platform::Files& files) : files_(files) {
  ChangeBlock();
}

clsCreate60D::~clsCreate60D() {
  Close60dFile();
}

bool clsCreate60D::Create60DFile(const std::string& Filename) {
  Close60dFile();
  variant_ = &format::VariantOf(mdlFileProcessing::bln20D);
  block_.ResetTrailer(*variant_);
  handle_ = files_.Open(Filename, platform::OpenMode::kWriteNew);
  fileSize_ = 0;
  return FileIsReady();
}

bool clsCreate60D::FileIsReady() const {
  return handle_ != platform::FileHandle::kInvalid;
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
  block_.Check(image);
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
  fileSize_ = mdlFileProcessing::FileSize64(files_, handle_);
}

void clsCreate60D::WriteAt(std::int32_t offset, const std::uint8_t* bytes, std::int32_t count) {
  const std::int64_t position = std::int64_t{blockPosition_} * format::kBlockSize + offset;
  const auto wanted = static_cast<std::uint32_t>(count);
  std::uint32_t written = 0;
  // Without its place a write would destroy what was written before.
  const bool whole = files_.Seek(handle_, position) &&
                     files_.Write(handle_, bytes, wanted, written) && written == wanted;
  failed_ = failed_ || !whole;
}

void clsCreate60D::Close60dFile() {
  if (!FileIsReady()) return;
  WriteBlock(block_.dataLength());
  if (!files_.Close(handle_)) failed_ = true;
  handle_ = platform::FileHandle::kInvalid;
}
