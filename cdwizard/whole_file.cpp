#include "cdwizard/whole_file.h"

#include <utility>
#include <vector>

using platform::FileHandle;
using platform::OpenMode;

namespace {

constexpr std::uint32_t kChunk = 256 * 1024;

bool CopyBytes(platform::Files& files, FileHandle from, WholeFile& to) {
  std::vector<std::uint8_t> chunk(kChunk);
  for (std::uint32_t bytesRead = kChunk; bytesRead > 0;) {
    if (!files.Read(from, chunk.data(), kChunk, bytesRead)) return false;
    if (!to.Write(chunk.data(), bytesRead)) return false;
  }
  return to.Finish();
}

}  // namespace

WholeFile::WholeFile(platform::Files& files, platform::FileNames& names, std::string path)
    : files_(files),
      names_(names),
      path_(std::move(path)),
      handle_(files.Open(path_, OpenMode::kWriteNew)),
      isBegun_(handle_ != FileHandle::kInvalid) {
  // A device takes every byte and keeps none.
  isOnDisk_ = isBegun_ && files_.Identity(handle_).has_value();
}

WholeFile::~WholeFile() {
  if (handle_ != FileHandle::kInvalid) files_.Close(handle_);
  if (isBegun_) names_.Remove(path_);
}

bool WholeFile::Write(const void* bytes, std::uint32_t count) {
  std::uint32_t written = 0;
  return files_.Write(handle_, bytes, count, written) && written == count;
}

bool WholeFile::Finish() {
  const bool isFlushed = files_.Flush(handle_);
  const bool isClosed = files_.Close(std::exchange(handle_, FileHandle::kInvalid));
  isBegun_ = !isFlushed || !isClosed;
  return !isBegun_;
}

bool CopyWholeFile(platform::Files& files, platform::FileNames& names, const std::string& from,
                   const std::string& to) {
  const FileHandle source = files.Open(from, OpenMode::kReadExisting);
  if (source == FileHandle::kInvalid) return false;
  bool isCopied = false;
  if (WholeFile target(files, names, to); target.IsOpen())
    isCopied = CopyBytes(files, source, target);
  files.Close(source);
  return isCopied;
}
