#include "capture/clsCreate60D.h"

#include "capture/mdlFileProcessing.h"

namespace {

/// A gap before the trailer of up to so many bytes is written, as zeros: file systems take a whole
/// block in one write a third faster than in two of odd sizes.
constexpr std::int32_t kSmallGap = 256 * 1024;

}  // namespace

clsCreate60D::clsCreate60D(NewFile& file) : file_(file) {
  block_.Begin(format::VariantOf(mdlFileProcessing::bln20D));
}

bool clsCreate60D::Create60DFile(const std::string& Filename) {
  variant_ = &format::VariantOf(mdlFileProcessing::bln20D);
  block_.Begin(*variant_);
  ready_ = file_.Create(Filename);
  return ready_;
}

bool clsCreate60D::FileIsReady() const {
  return ready_;
}

void clsCreate60D::SetVideoStandardToPAL(bool vsPAL) {
  isPal_ = vsPAL;
}

double clsCreate60D::GetCurrentFileSize() const {
  return static_cast<double>(file_.size());
}

bool clsCreate60D::AddDataTo60DFile(const mdlCreate60DFile::NewImage& image) {
  if (!FileIsReady() || !CanHold(image)) return false;
  if (!block_.HasRoomFor(image)) {
    WriteBlock(variant_->trailerOffset);
    block_.Begin(*variant_);
  }
  block_.Add(image);
  return true;
}

void clsCreate60D::WriteBlock(std::int32_t trailerOffset) {
  if (block_.imageCount() == 0) return;
  block_.Seal(blockPosition_ + 1, isPal_ ? 0 : format::trailer30::kNtsc);
  if (trailerOffset - block_.dataLength() <= kSmallGap) {
    block_.JoinTrailer(trailerOffset);
    WriteAt(0, block_.data(), block_.dataLength());
  } else {
    WriteAt(0, block_.data(), block_.dataLength());
    WriteAt(trailerOffset, block_.trailer().data(), variant_->trailerLength);
  }
  ++blockPosition_;
}

void clsCreate60D::WriteAt(std::int32_t offset, const std::uint8_t* bytes, std::int32_t count) {
  const std::int64_t position = std::int64_t{blockPosition_} * format::kBlockSize + offset;
  file_.WriteAt(position, bytes, static_cast<std::uint32_t>(count));
}

bool clsCreate60D::Close60dFile() {
  if (!FileIsReady()) return false;
  WriteBlock(block_.dataLength());
  ready_ = false;
  return file_.Finish();
}
