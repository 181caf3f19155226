#pragma once

#include <cstdint>
#include <string>

#include "capture/format.h"
#include "capture/mdlCreate60DFile.h"
#include "storage/new_file.h"

/// Writes a new capture file image by image, in the order given: fills a block, writes it when it
/// is full, and writes the last one compactly, its trailer right behind its data. The kind of file
/// follows the source's (`mdlFileProcessing::bln20D`). One object writes one file.
class clsCreate60D {
 public:
  /// Writes into `file`, which outlives it.
  explicit clsCreate60D(NewFile& file);
  clsCreate60D(const clsCreate60D&) = delete;
  clsCreate60D& operator=(const clsCreate60D&) = delete;

  /// Whether a block takes the image, and its fields hold their values.
  bool CanHold(const mdlCreate60DFile::NewImage& image) const { return block_.CanHold(image); }
  /// Adds one image. False, and nothing is changed, when the writer is not ready or cannot hold
  /// it.
  bool AddDataTo60DFile(const mdlCreate60DFile::NewImage& image);
  /// Writes the last block and finishes the file, which can take a while: see `NewFile`. False when
  /// the file has not come to be.
  bool Close60dFile();
  /// Whether a file was created and not closed yet.
  bool FileIsReady() const;
  /// Creates the target file. False when that fails.
  bool Create60DFile(const std::string& Filename);
  /// Sets the video standard: PAL, or NTSC as at the start.
  void SetVideoStandardToPAL(bool vsPAL);
  /// Size of the file in bytes after the last block that was written; 0 before.
  double GetCurrentFileSize() const;

 private:
  /// Writes the block with its trailer at `trailerOffset`, unless it holds no image.
  void WriteBlock(std::int32_t trailerOffset);
  /// Writes at `offset` of the block's place in the file.
  void WriteAt(std::int32_t offset, const std::uint8_t* bytes, std::int32_t count);

  NewFile& file_;
  bool ready_ = false;
  bool isPal_ = false;
  const format::Variant* variant_ = nullptr;
  mdlCreate60DFile::BlockBuilder block_;
  std::int32_t blockPosition_ = 0;  // 2 MiB slot of the next block write, from 0.
};
