#pragma once

#include <string>

#include "tools/recording_reader.h"

namespace tools {

/// A text in quotes; bytes that are not printable ASCII, quotes and backslashes as \xHH.
std::string Quoted(const std::string& text);

/// "2021-03-04 12:34:56" for a number of seconds since 1960-01-01 00:00:00.
std::string TimeText(std::int64_t seconds);

/// "1 image", "2 images".
std::string Counted(std::int64_t count, const std::string& thing);

/// One line about a block.
std::string DescribeBlock(const StoredBlock& block);

/// One line about an image. Its hash leaves out zeros at the end, which may be padding.
std::string DescribeImage(const StoredBlock& block, const StoredImage& image);

}  // namespace tools
