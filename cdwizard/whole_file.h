#pragma once

#include <cstdint>
#include <string>

#include "platform/file_names.h"
#include "platform/files.h"

/// A file that is made anew and stays only when all of it was written: unless `Finish` succeeds,
/// the destructor closes and removes it.
class WholeFile {
 public:
  WholeFile(platform::Files& files, platform::FileNames& names, std::string path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Whether the file could be made, and is a file on a disk.
  bool IsOpen() const { return isOnDisk_; }
  /// Appends bytes. False when not all of them were written.
  bool Write(const void* bytes, std::uint32_t count);
  /// Hands the file to the disk and closes it. False when the disk could not keep it.
  bool Finish();

 private:
  platform::Files& files_;
  platform::FileNames& names_;
  std::string path_;
  platform::FileHandle handle_;
  bool isOnDisk_ = false;
  bool isBegun_ = false;
};

/// Copies a file over whatever has the path `to`. False, with nothing left there, when any part
/// fails; when the file could not be made, what was there stays.
bool CopyWholeFile(platform::Files& files, platform::FileNames& names, const std::string& from,
                   const std::string& to);
