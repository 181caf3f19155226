#include "capture/source_file.h"

#include "capture/mdlFileProcessing.h"

using mdlFileProcessing::hSourceFile;
using platform::FileHandle;

SourceFile::SourceFile(platform::Files& files, const std::string& path) : files_(files) {
  hSourceFile = files.Open(path, platform::OpenMode::kReadExisting);
}

SourceFile::~SourceFile() {
  if (IsOpen()) files_.Close(hSourceFile);
  hSourceFile = FileHandle::kInvalid;
}

bool SourceFile::IsOpen() const {
  return hSourceFile != FileHandle::kInvalid;
}
