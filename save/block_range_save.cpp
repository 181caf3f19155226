#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "save/operations.h"
#include "save/save_messages.h"
#include "save/target.h"

using mdlFileProcessing::bytRecord;
using mdlFileProcessing::hSourceFile;
using mdlFileProcessing::lngBytesRead;

namespace {

constexpr std::int32_t lngBlockSize = format::kBlockSize;

/// Shows the hourglass while it lives.
class Hourglass {
 public:
  explicit Hourglass(SaveProgress& progress) : progress_(progress) { progress.ShowHourglass(true); }
  ~Hourglass() { progress_.ShowHourglass(false); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  SaveProgress& progress_;
};

/// Reads block `block` (from 0) into the copy buffer. A block that the source does not hold whole
/// is told and leaves the rest of the buffer as it was.
bool ReadBlock(platform::Files& files, SaveProgress& progress, std::int32_t block) {
  if (!mdlFileProcessing::SeekBlock(files, block, 0)) return false;
  std::uint32_t read = 0;
  const bool ok = files.Read(hSourceFile, bytRecord.data(), lngBlockSize, read);
  lngBytesRead = static_cast<std::int32_t>(read);
  if (ok && lngBytesRead != lngBlockSize) progress.ShowBlockMessage(save_text::kReadError);
  return ok;
}

SaveEnd CopyBlocks(platform::Files& files, SaveProgress& progress, const SaveJob& job,
                   NewFile& file) {
  bytRecord.Redimension(lngBlockSize);
  for (std::int32_t i = 1; i <= job.BlockCount(); ++i) {
    if (!progress.StillSaving()) return SaveEnd::kCancelled;
    if (!ReadBlock(files, progress, job.firstBlock - 1 + i - 1)) return SaveEnd::kNotRead;
    if (!file.Append(bytRecord.data(), lngBlockSize))
      return EndOfWriting(progress, file, false).end;
    progress.ShowBlocksDone(i, job.BlockCount());
    progress.LetMessagesRun();
  }
  return SaveEnd::kSaved;
}

}  // namespace

SaveResult SaveBlockRange(platform::Platform& system, SaveProgress& progress, const SaveJob& job) {
  if (!job.HasBlocks()) return {.end = SaveEnd::kNotRead};
  const SourceFile source(system.files, job.sourcePath);
  if (!source.IsOpen()) return {.end = SaveEnd::kNotRead};
  mdlFileProcessing::lngBlockCount =
      mdlFileProcessing::BlocksInFile(mdlFileProcessing::FileSize64(system.files, hSourceFile));

  NewFile file(system, job.place, MessagesOf(progress));
  if (!ClearTarget(system, progress, job.targetPath) || !file.Create(job.targetPath))
    return {.end = SaveEnd::kNotWritten};
  const SaveEnd end = CopyBlocks(system.files, progress, job, file);
  if (end != SaveEnd::kSaved) return {.end = end};
  const Hourglass hourglass(progress);
  return EndOfWriting(progress, file, file.Finish());
}
