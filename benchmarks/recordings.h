#pragma once

#include <cstdint>
#include <string>

/// A full block of `images` images of 16 cameras in turn, as large as fit.
std::string FullBlock(int images);

/// Writes a recording of `blocks` times the same block; when it is sparse, only the trailers take
/// room on the disk.
void WriteRecording(const std::string& path, std::string block, std::int64_t blocks,
                    bool isSparse = false);
