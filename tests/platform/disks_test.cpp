// The disk in memory and that of this system, held to what every disk keeps to.
#include <cstdlib>
#include <filesystem>

#include "platform/posix/factories.h"
#include "tests/platform/disk_contract.h"
#include "tests/support/memory_disk.h"

namespace {

auto MemoryWorld(const std::string& folder) {
  return [folder] {
    const auto disk = std::make_shared<MemoryDisk>();
    const std::string elsewhere = "E:\\mounted";
    disk->MakeFolder(folder);
    disk->MakeFolder(elsewhere);
    disk->mounts[elsewhere] = "F:";
    const auto aged = [disk](const std::string& path, long long seconds) {
      return disk->At(path)->written -= seconds;
    };
    const auto protect = [disk](const std::string& path, bool on) {
      disk->At(path)->readOnly = on;
    };
    return DiskWorld{*disk, *disk, disk.get(), folder, elsewhere, aged, protect};
  };
}

/// Folders of this system, which go with it.
struct PosixPlace {
  ~PosixPlace() {
    for (const std::string& each : {folder, elsewhere})
      if (!each.empty()) std::filesystem::remove_all(each);
  }
  static std::string NewFolder(std::string in) {
    in += "/disk.XXXXXX";
    return mkdtemp(in.data()) ? in : "";
  }

  const std::unique_ptr<platform::Files> files = platform::MakePosixFiles();
  const std::unique_ptr<platform::FileNames> names = platform::MakePosixFileNames();
  std::string folder = NewFolder(std::filesystem::temp_directory_path());
  std::string elsewhere = NewFolder("/dev/shm");
};

DiskWorld PosixWorld() {
  const auto place = std::make_shared<PosixPlace>();
  const auto aged = [place](const std::string& path, long long by) { return Aged(path, by); };
  return {*place->files,    *place->names, nullptr, place->folder,
          place->elsewhere, aged,          Protect, '/'};
}

const auto kMemory = testing::Values(MemoryWorld("C:\\Folder"), MemoryWorld("E:\\"));
INSTANTIATE_TEST_SUITE_P(Memory, DiskContract, kMemory);
INSTANTIATE_TEST_SUITE_P(Memory, FolderContract, kMemory);
INSTANTIATE_TEST_SUITE_P(Posix, DiskContract, testing::Values(PosixWorld));

}  // namespace
