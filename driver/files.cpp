#include "driver/files.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "forms/win32.h"

namespace driver {
namespace {

std::filesystem::path PathOf(const std::string& path) {
  return forms::Wide(path);
}

}  // namespace

bool FileExists(const std::string& path) {
  return GetFileAttributesW(forms::Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::vector<std::string> FilesLike(const std::string& pattern) {
  std::vector<std::string> names;
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW(forms::Wide(pattern).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  do names.push_back(forms::Utf8(found.cFileName));
  while (FindNextFileW(search, &found));
  FindClose(search);
  return names;
}

// The runtime library refuses to make a file larger than the disk's free space, though most of it
// may be a hole.
void Resize(const std::string& path, std::uint64_t bytes) {
  const HANDLE file = CreateFileW(forms::Wide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                  nullptr, OPEN_ALWAYS, 0, nullptr);
  LARGE_INTEGER end = {};
  end.QuadPart = static_cast<LONGLONG>(bytes);
  const bool done = SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file);
  CloseHandle(file);
  if (!done) throw std::runtime_error("Cannot resize " + path);
}

void Append(const std::string& path, const std::string& bytes) {
  std::ofstream(PathOf(path), std::ios::binary | std::ios::app) << bytes;
}

void CopyTo(const std::string& from, const std::string& to) {
  if (!CopyFileW(forms::Wide(from).c_str(), forms::Wide(to).c_str(), FALSE))
    throw std::runtime_error("Cannot copy " + from + " to " + to);
}

void Patch(const std::string& path, std::uint64_t offset, const std::string& bytes) {
  std::fstream file(PathOf(path), std::ios::binary | std::ios::in | std::ios::out);
  file.seekp(static_cast<std::streamoff>(offset));
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file) throw std::runtime_error("Cannot change " + path);
}

std::string Read(const std::string& path, std::uint64_t offset, std::uint64_t bytes) {
  std::ifstream file(PathOf(path), std::ios::binary | std::ios::ate);
  if (!file) throw std::runtime_error("Cannot read " + path);
  const auto size = static_cast<std::uint64_t>(file.tellg());
  if (offset > size) return "";
  std::string content(static_cast<std::size_t>(std::min(bytes, size - offset)), '\0');
  file.seekg(static_cast<std::streamoff>(offset));
  file.read(content.data(), static_cast<std::streamsize>(content.size()));
  return content;
}

bool HoldsBlocks(const std::string& path, const std::string& source, int first, int last) {
  return Read(path) == Read(source, static_cast<std::uint64_t>(first - 1) * kBlock,
                            static_cast<std::uint64_t>(last - first + 1) * kBlock);
}

void CheckLater(const std::vector<std::string>& arguments) {
  std::ofstream checks("C:\\checks", std::ios::app | std::ios::binary);
  for (const std::string& argument : arguments) checks << argument << '\t';
  checks << '\n';
}

void RunOutside(const std::string& command) {
  const std::string line = "Z:\\bin\\sh -c \"cd \\\"$WINEPREFIX\\\" && " + command + "\"";
  if (WinExec(line.c_str(), SW_HIDE) <= 31) throw std::runtime_error("Cannot run " + command);
}

// Goes on without a picture in the end: it may be that of a place where one waited in vain.
void SaveScreenshot(const std::string& name) {
  constexpr int kMostPolls = 5000;
  RunOutside("drive_c/screenshot 'drive_c/pictures/" + name + "'");
  for (int polls = 0; polls < kMostPolls && !FileExists(kPictures + name + ".png"); ++polls)
    Sleep(2);
}

}  // namespace driver
