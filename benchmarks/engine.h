#pragma once

#include <cstdint>
#include <string>

/// The save engine on this system, without a window: what stands beside the program's figures. Each
/// job answers its seconds, and ends the program when it fails.
namespace engine {

/// Reads a recording's block index.
double Scan(const std::string& source);
/// Reads the camera index of its first blocks, and keeps it until the next job.
double Index(const std::string& source, std::int32_t blocks);
/// Saves its first blocks, or of them the first `cameras` of 16 cameras. `source` was scanned last.
double Save(const std::string& source, const std::string& target, int cameras, std::int32_t blocks);
/// Memory in use, bytes.
double Heap();

}  // namespace engine
