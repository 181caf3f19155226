#pragma once

#include <string>

#include "platform/files.h"

/// The capture file that is being read: open as `mdlFileProcessing::hSourceFile` while this object
/// lives. Where another is open already, that one is read again afterwards.
class SourceFile {
 public:
  SourceFile(platform::Files& files, const std::string& path);
  ~SourceFile();
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  bool IsOpen() const;

 private:
  platform::Files& files_;
  platform::FileHandle opened_;
  platform::FileHandle outer_;
};
