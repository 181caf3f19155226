#pragma once

#include <cstdint>
#include <string>

/// A full block of images of 16 cameras in turn, `imagesPerBlock` of them, as large as fit.
std::string FullBlock(int imagesPerBlock);

/// Writes a recording of `blocks` times the same block, their stamps apart.
void WriteRecording(const std::string& path, const std::string& block, std::int64_t blocks);

/// Writes a recording of which only the trailers take room on the disk.
void WriteSparseRecording(const std::string& path, const std::string& block, std::int64_t blocks);
