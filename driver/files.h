#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace driver {

/// Where the script that starts these tests has put everything.
inline constexpr const char* kProgramFolder = "C:\\Trimbrook\\";
inline constexpr const char* kProgram = "C:\\Trimbrook\\Trimbrook.exe";
inline constexpr const char* kWork = "C:\\work\\";
inline constexpr const char* kPictures = "C:\\pictures\\";
inline constexpr const char* kRecordings = "D:\\";

inline constexpr std::uint64_t kBlock = 2 * 1024 * 1024;
/// Blocks of the recording "long.60D".
inline constexpr int kLongBlocks = 100;

/// A recording made for these tests.
inline std::string Recording(const std::string& name) {
  return kRecordings + name;
}
/// A path for a file that a test makes.
inline std::string InWork(const std::string& name) {
  return kWork + name;
}

bool FileExists(const std::string& path);
/// Names of the files that match a pattern with a star.
std::vector<std::string> FilesLike(const std::string& pattern);
/// Cuts a file, or adds zeros to it; makes it when it is missing.
void Resize(const std::string& path, std::uint64_t bytes);
void Append(const std::string& path, const std::string& bytes);
void CopyTo(const std::string& from, const std::string& to);
/// Overwrites bytes in the midst of a file.
void Patch(const std::string& path, std::uint64_t offset, const std::string& bytes);
/// `bytes` bytes from an offset; all from there on when there are fewer.
std::string Read(const std::string& path, std::uint64_t offset = 0,
                 std::uint64_t bytes = UINT64_MAX);
/// Whether a file is made of the blocks first..last (from 1) of another one, and of nothing else.
bool HoldsBlocks(const std::string& path, const std::string& source, int first, int last);
/// Has `tools/list_recording` run with these arguments after the tests: it knows the format by
/// itself. `D:` and `C:` paths are given as here.
void CheckLater(const std::vector<std::string>& arguments);

/// Has the system below Wine run a shell command in the folder of the prefix, and does not wait for
/// it: what it changes, it changes without asking Windows.
void RunOutside(const std::string& command);
/// Leaves a picture of the screen under this name.
void SaveScreenshot(const std::string& name);

}  // namespace driver
