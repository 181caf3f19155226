// The disk in memory and that of this system, held to what every disk keeps to.
#include <cstdlib>
#include <filesystem>

#include "platform/posix/posix_disk.h"
#include "tests/platform/disk_contract.h"
#include "tests/support/memory_disk.h"

namespace {

class MemoryWorld : public DiskWorld {
 public:
  explicit MemoryWorld(std::string folder) : folder_(std::move(folder)) {
    disk_.MakeFolder(folder_);
    disk_.MakeFolder(elsewhere());
    disk_.mounts[elsewhere()] = "F:";
  }

  platform::Files& files() override { return disk_; }
  platform::FileNames& names() override { return disk_; }
  platform::Drives* drives() override { return &disk_; }
  std::string folder() const override { return folder_; }
  std::string elsewhere() const override { return "E:\\mounted"; }
  long long Written(const std::string& path) override { return disk_.At(path)->written; }
  void SetWritten(const std::string& path, long long when) override {
    disk_.At(path)->written = when;
  }

 private:
  MemoryDisk disk_;
  std::string folder_;
};

std::string NewFolder(std::string in) {
  in += "/disk.XXXXXX";
  return mkdtemp(in.data()) ? in : "";
}

class PosixWorld : public DiskWorld {
 public:
  ~PosixWorld() override {
    std::filesystem::remove_all(folder_);
    if (!elsewhere_.empty()) std::filesystem::remove_all(elsewhere_);
  }

  platform::Files& files() override { return disk_; }
  platform::FileNames& names() override { return disk_; }
  platform::Drives* drives() override { return nullptr; }
  std::string folder() const override { return folder_; }
  std::string elsewhere() const override { return elsewhere_; }
  char separator() const override { return '/'; }

 private:
  PosixDisk disk_;
  std::string folder_ = NewFolder(std::filesystem::temp_directory_path());
  std::string elsewhere_ = NewFolder("/dev/shm");
};

template <typename World, typename... Arguments>
auto Maker(Arguments... arguments) {
  return [=] { return std::make_unique<World>(arguments...); };
}

INSTANTIATE_TEST_SUITE_P(Memory, DiskContract,
                         testing::Values(Maker<MemoryWorld>("C:\\Folder"),
                                         Maker<MemoryWorld>("E:\\")));
INSTANTIATE_TEST_SUITE_P(Memory, FolderContract,
                         testing::Values(Maker<MemoryWorld>("C:\\Folder"),
                                         Maker<MemoryWorld>("E:\\")));
INSTANTIATE_TEST_SUITE_P(Posix, DiskContract, testing::Values(Maker<PosixWorld>()));

}  // namespace
