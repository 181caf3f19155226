// Runs the program's own core on real files without its windows: scans a recording and saves it.
// Usage: save_part SOURCE TARGET FIRST LAST [CAMERA...]

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "capture/mdlFileProcessing.h"
#include "platform/posix/posix_disk.h"
#include "save/save_messages.h"
#include "tests/save/fake_progress.h"
#include "tests/support/fake_platform.h"
#include "tools/recording_reader.h"

namespace {

bool Save(PosixDisk& disk, const SaveJob& job) {
  const std::string folder = std::filesystem::absolute(job.targetPath).parent_path();
  FakePlatform outside;
  platform::Core system{disk, disk, outside.disk, outside.dates, outside.clock, folder};
  FakeProgress progress;
  const SaveResult result = RunSave(system, progress, job);
  for (const SaveMessage& message : MessagesOf(result)) progress.messages.push_back(message.text);
  for (const std::string& message : progress.messages)
    std::printf("message: %s\n", message.c_str());
  return result.end == SaveEnd::kSaved;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) return 2;
  std::uint32_t cameras = 0;
  for (int i = 5; i < argc; ++i) cameras |= 1U << (std::atoi(argv[i]) - 1);
  const SaveJob job = {
      .sourcePath = argv[1],
      .targetPath = argv[2],
      .firstBlock = std::atoi(argv[3]),
      .lastBlock = std::atoi(argv[4]),
      .mode = argc > 5 ? SaveJob::Mode::kChosenCameras : SaveJob::Mode::kWholeBlocks,
      .cameras = cameras};
  PosixDisk disk;
  FakeDates dates;
  mdlFileProcessing::bln20D = tools::IsNameOf20D(job.sourcePath);
  const auto end = mdlFileProcessing::ScanSourceFile(disk, dates, job.sourcePath);
  return end == mdlFileProcessing::ReadEnd::kDone && Save(disk, job) ? 0 : 1;
}
