#include "tests/platform/disk_contract.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <limits>
#include <vector>

using platform::Failure;
using platform::FileHandle;
using platform::IfTaken;
using platform::OpenMode;

namespace {

constexpr std::array kModes = {OpenMode::kReadExisting, OpenMode::kWriteNew};

using Paths = std::vector<std::string>;
using std::chrono::seconds;

}  // namespace

void Protect(const std::filesystem::path& file, bool on) {
  std::filesystem::permissions(file, std::filesystem::perms(on ? 0444 : 0644));
}

long long Aged(const std::filesystem::path& file, long long by) {
  const auto time = std::filesystem::last_write_time(file) - seconds(by);
  std::filesystem::last_write_time(file, time);
  return std::chrono::floor<seconds>(time.time_since_epoch()).count();
}

TEST_P(DiskContract, ReadsBackWhatWasWrittenWhereItWasWritten) {
  const std::string path = Path("file");
  FileHandle file = files.Open(path, OpenMode::kWriteNew);
  EXPECT_TRUE(Write(file, "0123456789") && files.Flush(file).get().done);
  EXPECT_TRUE(files.Seek(file, 12) && Write(file, "end") && files.Flush(file).get().done);
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
      const std::string path = Make(Path("file"));
      const FileHandle file = files.Open(path, first);
      const bool shares = first == OpenMode::kReadExisting && second == first;
      EXPECT_EQ(Opens(path, second), shares)
          << static_cast<int>(first) << " then " << static_cast<int>(second);
      if (!shares) {
        EXPECT_EQ(files.LastFailure().kind, Failure::Kind::kInUse);
      }
      EXPECT_FALSE(names.Remove(path)) << static_cast<int>(first);
      files.Close(file);
      EXPECT_EQ(Read(path), first == OpenMode::kWriteNew ? "" : "abc");
    }
}

// The old file is there until the new one takes its place in one step.
TEST_P(DiskContract, GivesAKeptFileANameThatItMayHave) {
  const std::string old = Make(Path("old"), "old"), sub = Path("sub");
  const auto [file, from] = files.MakeTemporary(world.folder, "WAV");
  EXPECT_FALSE(Opens(from, OpenMode::kReadExisting));
  EXPECT_TRUE(Write(file, "one") && files.Flush(file).get().done && files.Keep(file, from));
  EXPECT_FALSE(files.Rename(file, from, old, IfTaken::kRefuse));
  for (const IfTaken ifTaken : {IfTaken::kReplace, IfTaken::kRefuse}) {
    EXPECT_FALSE(files.Rename(file, from, world.folder, ifTaken));
    EXPECT_FALSE(files.Rename(file, from, In(Path("no folder"), "to"), ifTaken));
    if (!world.elsewhere.empty()) {
      EXPECT_FALSE(files.Rename(file, from, In(world.elsewhere, "to"), ifTaken));
    }
  }
  const FileHandle reader = files.Open(old, OpenMode::kReadExisting);
  EXPECT_FALSE(files.Rename(file, from, old, IfTaken::kReplace)) << "held";
  files.Close(reader);
  EXPECT_EQ(Read(old), "old");
  EXPECT_TRUE(files.Rename(file, from, old, IfTaken::kReplace));
  EXPECT_FALSE(names.LookAt(old).hindrance) << "may be replaced from now on";
  EXPECT_TRUE(files.Flush(file).get().done && Write(file, "more"));
  EXPECT_TRUE(files.Rename(file, old, Path("new"), IfTaken::kRefuse));
  EXPECT_TRUE(files.Flush(file).get().done && files.Close(file));
  EXPECT_EQ(Read(Path("new")), "onemore");
  EXPECT_FALSE(names.LookAt(old).isTaken || names.LookAt(from).isTaken);
}

TEST_P(DiskContract, MakesTemporaryFilesOfTheirOwnThatGoUnlessTheyAreKept) {
  const auto one = files.MakeTemporary(world.folder, "WAV");
  const auto two = files.MakeTemporary(world.folder, "WAV");
  EXPECT_NE(one.path, two.path);
  for (const auto& [file, path] : {one, two}) {
    EXPECT_EQ(path.substr(0, Path("WAV").size()), Path("WAV"));
    EXPECT_EQ(path.substr(path.size() - 4), ".tmp");
    EXPECT_TRUE(Write(file, "abc") && files.Flush(file).get().done);
  }
  EXPECT_TRUE(files.Keep(one.file, one.path) && files.Close(one.file));
  EXPECT_EQ(Read(one.path), "abc");
  EXPECT_TRUE(names.Remove(one.path) && files.Close(two.file));
  EXPECT_FALSE(names.LookAt(two.path).isTaken);
  EXPECT_EQ(files.MakeTemporary(Path("no folder"), "WAV").file, FileHandle::kInvalid);
}

TEST_P(DiskContract, TellsWhatStandsWhereAFileIsWanted) {
  const std::string path = Make(Path("file"));
  const auto hindrance = [this](const std::string& wanted) {
    return names.LookAt(wanted).hindrance.value_or(Failure{.text = "none"});
  };
  EXPECT_FALSE(names.LookAt(Path("free")).isTaken);
  EXPECT_EQ(hindrance(Path("free")).text, "none");
  EXPECT_TRUE(names.LookAt(path).isTaken);
  EXPECT_EQ(hindrance(path).text, "none");
  EXPECT_EQ(hindrance(In(Path("no folder"), "file")).kind, Failure::Kind::kMissing);
  EXPECT_NE(hindrance("").text, "none");
  EXPECT_EQ(hindrance(world.folder).kind, Failure::Kind::kFolder);
  const FileHandle reader = files.Open(path, OpenMode::kReadExisting);
  EXPECT_EQ(hindrance(path).kind, Failure::Kind::kInUse);
  files.Close(reader);
  world.protect(path, true);
  EXPECT_EQ(hindrance(path).kind, Failure::Kind::kFileProtected);
  world.protect(path, false);
}

TEST_P(DiskContract, WorksOnFilesByName) {
  const std::string path = Make(Path("file"));
  EXPECT_TRUE(names.InheritPermissions(path));
  EXPECT_TRUE(Opens(path, OpenMode::kReadExisting) && names.Remove(path));
  for (const std::string& missing : {path, In(path, "file"), std::string()}) {
    EXPECT_FALSE(names.Remove(missing) || names.InheritPermissions(missing)) << missing;
    EXPECT_FALSE(names.OnSameVolume(world.folder, missing)) << missing;
  }
  EXPECT_FALSE(names.Remove(world.folder));
  EXPECT_FALSE(Opens(path, OpenMode::kReadExisting));
  EXPECT_EQ(files.LastFailure().kind, Failure::Kind::kMissing);
}

TEST_P(DiskContract, TakesPathsApartAtItsOwnSeparators) {
  EXPECT_EQ(names.FolderOf(Path("file")), world.folder);
  EXPECT_EQ(names.FolderOf("a/b"), "a");
  EXPECT_EQ(names.FolderOf("/b"), "/");
  const bool hasDrives = world.separator == '\\';
  EXPECT_EQ(names.FolderOf("a\\b"), hasDrives ? "a" : ".");
  EXPECT_EQ(names.FolderOf("c:b"), hasDrives ? "c:." : ".");
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
