#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/drives.h"
#include "platform/file_names.h"
#include "platform/files.h"

/// A disk under test, with an empty folder of its own that goes with it.
struct DiskWorld {
  platform::Files& files;
  platform::FileNames& names;
  platform::Drives* drives;  ///< Null on a disk that has none.
  /// The folder as a caller may give it: a drive's root ends in a separator.
  std::string folder;
  /// A folder on another volume; empty where there is none.
  std::string elsewhere;
  /// Makes a file older by whole seconds and answers when it was last written then, in seconds of
  /// some scale. Holds what goes with the world.
  std::function<long long(const std::string& path, long long seconds)> aged;
  /// Marks a file as one that may not be written, or takes that back.
  std::function<void(const std::string& path, bool on)> protect;
  char separator = '\\';
};

/// The same for a file of the system's, by the system's own means.
long long Aged(const std::filesystem::path& file, long long seconds);
void Protect(const std::filesystem::path& file, bool on);

/// What every disk keeps to, whether it is a system's or a test's own. A program that has disks
/// instantiates it with what makes their worlds.
class DiskContract : public testing::TestWithParam<std::function<DiskWorld()>> {
 protected:
  /// A path below the world's folder, or below another.
  std::string Path(const std::string& name) const { return In(world.folder, name); }
  std::string In(const std::string& folder, const std::string& name) const {
    return folder.back() == world.separator ? folder + name : folder + world.separator + name;
  }
  /// Makes a file and answers its path.
  std::string Make(const std::string& path, const std::string& bytes = "abc") {
    const platform::FileHandle file = files.Open(path, platform::OpenMode::kWriteNew);
    EXPECT_TRUE(Write(file, bytes) && files.Close(file)) << path;
    return path;
  }
  bool Write(platform::FileHandle file, const std::string& bytes) {
    const auto count = static_cast<std::uint32_t>(bytes.size());
    std::uint32_t written = 0;
    return files.Write(file, bytes.data(), count, written) && written == count;
  }
  /// A file's bytes, or what hindered reading them.
  std::string Read(const std::string& path) {
    const platform::FileHandle file = files.Open(path, platform::OpenMode::kReadExisting);
    std::string bytes(100, '\0');
    std::uint32_t count = 0;
    const bool ok = files.Read(file, bytes.data(), 100, count) && files.Close(file);
    return ok ? bytes.substr(0, count) : "does not read";
  }
  /// Whether a file can be opened so; it is closed at once.
  bool Opens(const std::string& path, platform::OpenMode mode) {
    const platform::FileHandle file = files.Open(path, mode);
    return file != platform::FileHandle::kInvalid && files.Close(file);
  }

  DiskWorld world = GetParam()();
  platform::Files& files = world.files;
  platform::FileNames& names = world.names;
};

/// The contract of the disks that know folders.
class FolderContract : public DiskContract {
 protected:
  platform::Drives& drives = *world.drives;
};
