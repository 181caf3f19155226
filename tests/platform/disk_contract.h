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
class DiskWorld {
 public:
  virtual ~DiskWorld() = default;

  virtual platform::Files& files() = 0;
  virtual platform::FileNames& names() = 0;
  /// Null on a disk that has none.
  virtual platform::Drives* drives() = 0;
  /// The folder as a caller may give it: a drive's root ends in a separator.
  virtual std::string folder() const = 0;
  /// A folder on another volume; empty where there is none.
  virtual std::string elsewhere() const = 0;
  virtual char separator() const { return '\\'; }
  /// A path as the system takes it.
  virtual std::filesystem::path SystemPath(const std::string& path);
  /// When a file was last written, in whole seconds of some scale, and how to pretend it: by the
  /// system's own means, unless the disk is none of the system's.
  virtual long long Written(const std::string& path);
  virtual void SetWritten(const std::string& path, long long when);
};

/// What every disk keeps to, whether it is a system's or a test's own. A program that has disks
/// instantiates it with what makes their worlds.
class DiskContract : public testing::TestWithParam<std::function<std::unique_ptr<DiskWorld>()>> {
 protected:
  /// A path below the world's folder, or below another.
  std::string Path(const std::string& name) const { return In(world->folder(), name); }
  std::string In(const std::string& folder, const std::string& name) const;
  /// Makes a file and answers its path.
  std::string Make(const std::string& path, const std::string& bytes = "abc");
  bool Write(platform::FileHandle file, const std::string& bytes);
  /// A file's bytes, or what hindered reading them.
  std::string Read(const std::string& path);
  /// Whether a file can be opened so; it is closed at once.
  bool Opens(const std::string& path, platform::OpenMode mode);

  std::unique_ptr<DiskWorld> world = GetParam()();
  platform::Files& files = world->files();
  platform::FileNames& names = world->names();
};

/// The contract of the disks that know folders.
class FolderContract : public DiskContract {
 protected:
  platform::Drives& drives = *world->drives();
};
