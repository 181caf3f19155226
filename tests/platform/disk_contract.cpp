#include "tests/platform/disk_contract.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <limits>
#include <vector>

using platform::FileHandle;
using platform::OpenMode;

namespace {

constexpr std::array kModes = {OpenMode::kReadExisting, OpenMode::kWriteExisting,
                               OpenMode::kWriteNew};

using Paths = std::vector<std::string>;
using std::chrono::seconds;

}  // namespace

long long Aged(const std::filesystem::path& file, long long by) {
  const auto time = std::filesystem::last_write_time(file) - seconds(by);
  std::filesystem::last_write_time(file, time);
  return std::chrono::floor<seconds>(time.time_since_epoch()).count();
}

TEST_P(DiskContract, ReadsBackWhatWasWrittenWhereItWasWritten) {
  const std::string path = Make(Path("file"), "0123456789");
  FileHandle file = files.Open(path, OpenMode::kWriteExisting);
  EXPECT_TRUE(files.Seek(file, 12) && Write(file, "end") && files.Flush(file).get());
  EXPECT_TRUE(files.Seek(file, 1) && Write(file, "x") && !files.Seek(file, -1));
  EXPECT_EQ(files.Size(file), 15u);
  std::array<char, 8> bytes = {};
  std::uint32_t count = 1;
  EXPECT_FALSE(files.Read(file, bytes.data(), 1, count)) << "open for writing only";
  EXPECT_TRUE(files.Close(file));
  EXPECT_EQ(Read(path), std::string("0x23456789\0\0end", 15));

  file = files.Open(path, OpenMode::kReadExisting);
  EXPECT_FALSE(Write(file, "y"));
  EXPECT_TRUE(files.Seek(file, 12) && files.Read(file, bytes.data(), 8, count) && count == 3);
  EXPECT_TRUE(files.Seek(file, 99) && files.Read(file, bytes.data(), 8, count) && count == 0);
  files.Close(file);
  EXPECT_EQ(Read(Make(path, "new")), "new");
}

TEST_P(DiskContract, OpensOnlyFilesThatCanBe) {
  for (const OpenMode mode : kModes) {
    EXPECT_EQ(Opens(Path("file"), mode), mode == OpenMode::kWriteNew);
    names.Remove(Path("file"));
    EXPECT_FALSE(Opens(In(Path("no folder"), "file"), mode));
    EXPECT_FALSE(Opens(world.folder, mode)) << world.folder;
    EXPECT_FALSE(Opens("", mode));
  }
}

TEST_P(DiskContract, SharesAFileOnlyBetweenReaders) {
  for (const OpenMode first : kModes)
    for (const OpenMode second : kModes) {
      // Two that may rename a file bear each other on some systems.
      if (first == OpenMode::kWriteExisting && second == first) continue;
      const std::string path = Make(Path("file"));
      const FileHandle file = files.Open(path, first);
      EXPECT_EQ(Opens(path, second), first == OpenMode::kReadExisting && second == first)
          << static_cast<int>(first) << " then " << static_cast<int>(second);
      if (first != OpenMode::kWriteExisting) {
        EXPECT_FALSE(names.Remove(path)) << static_cast<int>(first);
      }
      files.Close(file);
      EXPECT_EQ(Read(path), first == OpenMode::kWriteNew ? "" : "abc");
    }
}

TEST_P(DiskContract, RenamesAnOpenFileOntoNothingElse) {
  const std::string from = Make(Path("from"), "one");
  const std::string taken = Make(Path("taken"), "other");
  const FileHandle file = files.Open(from, OpenMode::kWriteExisting);
  EXPECT_FALSE(files.Rename(file, from, taken));
  EXPECT_FALSE(files.Rename(file, from, world.folder));
  EXPECT_FALSE(files.Rename(file, from, In(Path("no folder"), "to")));
  if (!world.elsewhere.empty()) {
    EXPECT_FALSE(files.Rename(file, from, In(world.elsewhere, "to")));
  }
  EXPECT_TRUE(names.Find(from) && Write(file, "t"));
  EXPECT_TRUE(files.Rename(file, from, Path("to")));
  EXPECT_TRUE(Write(file, "w") && files.Flush(file).get() && files.Close(file));
  EXPECT_EQ(Read(Path("to")), "twe");
  EXPECT_EQ(Read(taken), "other");
  EXPECT_FALSE(names.Find(from));
}

TEST_P(DiskContract, WorksOnFilesByName) {
  const std::string path = Make(Path("file"));
  EXPECT_TRUE(names.Find(path));
  EXPECT_TRUE(names.SetTemporary(path, true) && names.SetTemporary(path, false));
  EXPECT_TRUE(names.InheritPermissions(path));
  EXPECT_TRUE(Opens(path, OpenMode::kWriteExisting) && names.Remove(path));
  for (const std::string& missing : {path, In(path, "file"), std::string()}) {
    EXPECT_FALSE(names.Find(missing) || names.Remove(missing)) << missing;
    EXPECT_FALSE(names.SetTemporary(missing, true) || names.InheritPermissions(missing)) << missing;
    EXPECT_FALSE(names.OnSameVolume(world.folder, missing)) << missing;
  }
  EXPECT_FALSE(names.Find(world.folder) || names.Remove(world.folder));
}

TEST_P(DiskContract, MakesTemporaryFilesOfTheirOwn) {
  const std::string one = names.MakeTemporary(world.folder, "WAV");
  const std::string two = names.MakeTemporary(world.folder, "WAV");
  EXPECT_NE(one, two);
  for (const std::string& path : {one, two}) {
    EXPECT_EQ(path.substr(0, Path("WAV").size()), Path("WAV"));
    EXPECT_EQ(path.substr(path.size() - 4), ".tmp");
    EXPECT_EQ(Read(path), "");
  }
  EXPECT_EQ(names.MakeTemporary(Path("no folder"), "WAV"), "");
}

TEST_P(DiskContract, TellsVolumesApart) {
  const std::string path = Make(Path("file"));
  EXPECT_TRUE(names.OnSameVolume(world.folder, path));
  EXPECT_GE(names.LargestFile(world.folder), std::numeric_limits<std::uint32_t>::max());
  EXPECT_GT(names.FreeBytes(world.folder), 0u);
  if (!world.elsewhere.empty()) {
    EXPECT_FALSE(names.OnSameVolume(path, world.elsewhere));
  }
}

TEST_P(DiskContract, HandsOnWhenAFileWasWritten) {
  const std::string from = Make(Path("from")), to = Make(Path("to"));
  world.aged(from, 100000);
  EXPECT_TRUE(names.CopyTimes(from, to));
  EXPECT_FALSE(names.CopyTimes(from, Path("missing")) || names.CopyTimes(Path("missing"), to));
  EXPECT_EQ(world.aged(to, 0), world.aged(from, 0));
}

TEST_P(FolderContract, MakesAndRemovesFolders) {
  const std::string sub = Path("sub"), ended = sub + world.separator;
  const std::string file = Make(Path("file"));
  EXPECT_TRUE(drives.MakeFolder(ended) && drives.HasFolder(sub) && drives.HasFolder(ended));
  EXPECT_FALSE(drives.MakeFolder(sub) || drives.MakeFolder(file));
  EXPECT_FALSE(drives.MakeFolder(In(Path("missing"), "x")));
  EXPECT_FALSE(drives.HasFile(sub) || drives.HasFolder(file) || drives.HasFolder(""));
  EXPECT_EQ(drives.FileBytes(file), 3u);
  EXPECT_FALSE(drives.FileBytes(sub) || drives.FileBytes(Path("missing")));
  ASSERT_TRUE(drives.MakeFolder(In(sub, "deep")));
  Make(In(In(sub, "deep"), "file"));
  Make(In(sub, "gone"));
  EXPECT_TRUE(drives.RemoveFilesIn(ended));
  const Paths left = {In(In(sub, "deep"), "file")};
  // Whether it is named with its separator or not.
  EXPECT_EQ(drives.FilesBelow(sub), left);
  EXPECT_EQ(drives.FilesBelow(ended), left);
  EXPECT_EQ(drives.FilesBelow(world.folder).size(), 2u);
  EXPECT_EQ(drives.FilesBelow(Path("missing")), Paths());
  EXPECT_TRUE(drives.RemoveFolder(ended) && !drives.HasFolder(sub) && drives.HasFile(file));
  EXPECT_FALSE(drives.RemoveFolder(sub) || drives.RemoveFolder(file));
  EXPECT_FALSE(drives.RemoveFilesIn(sub) || drives.RemoveFilesIn(file));
}

TEST_P(FolderContract, StopsADeletionAtItsFirstFailure) {
  const std::string sub = Path("sub");
  ASSERT_TRUE(drives.MakeFolder(sub));
  for (const char* name : {"a", "b", "c"}) Make(In(sub, name));
  const Paths all = drives.FilesBelow(sub);
  ASSERT_EQ(all.size(), 3u);
  const FileHandle held = files.Open(all[0], OpenMode::kReadExisting);
  EXPECT_FALSE(drives.RemoveFilesIn(sub));
  EXPECT_EQ(drives.FilesBelow(sub), all);
  EXPECT_FALSE(drives.RemoveFolder(sub));
  EXPECT_EQ(drives.FilesBelow(sub), all);
  files.Close(held);
  EXPECT_TRUE(drives.RemoveFilesIn(sub));
  EXPECT_EQ(drives.FilesBelow(sub), Paths());
}
