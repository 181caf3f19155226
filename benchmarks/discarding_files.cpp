#include "benchmarks/discarding_files.h"

using platform::FileHandle;

FileHandle DiscardingFiles::Open(const std::string& path, platform::OpenMode mode) {
  return files_.Open(path, mode);
}
bool DiscardingFiles::Read(FileHandle file, void* buffer, std::uint32_t bytes,
                           std::uint32_t& bytesRead) {
  return files_.Read(file, buffer, bytes, bytesRead);
}
bool DiscardingFiles::Write(FileHandle, const void*, std::uint32_t bytes,
                            std::uint32_t& bytesWritten) {
  bytesWritten = bytes;
  return true;
}
bool DiscardingFiles::Seek(FileHandle file, std::int64_t position) {
  return files_.Seek(file, position);
}
std::optional<std::uint64_t> DiscardingFiles::Size(FileHandle file) {
  return files_.Size(file);
}
bool DiscardingFiles::Flush(FileHandle file) {
  return files_.Flush(file);
}
bool DiscardingFiles::Rename(FileHandle file, const std::string& from, const std::string& to) {
  return files_.Rename(file, from, to);
}
bool DiscardingFiles::Close(FileHandle file) {
  return files_.Close(file);
}
std::optional<platform::FileIdentity> DiscardingFiles::Identity(FileHandle file) {
  return files_.Identity(file);
}
