#include "capture/source_file.h"

#include "capture/mdlFileProcessing.h"

using mdlFileProcessing::hSourceFile;
using platform::FileHandle;

SourceFile::SourceFile(platform::Files& files, const std::string& path)
    : files_(files),
      opened_(files.Open(path, platform::OpenMode::kReadExisting)),
      outer_(hSourceFile) {
  hSourceFile = opened_;
}

SourceFile::~SourceFile() {
  if (IsOpen()) files_.Close(opened_);
  hSourceFile = outer_;
}

bool SourceFile::IsOpen() const {
  return opened_ != FileHandle::kInvalid;
}
