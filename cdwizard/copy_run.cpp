#include "cdwizard/copy_run.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "cdwizard/player_files.h"
#include "save/camera_index.h"
#include "save/operations.h"
#include "save/save_run.h"
#include "save/save_state.h"

using mdlFileProcessing::bytRecord;

namespace {

constexpr std::int32_t kPlayerPercent = 16;
constexpr std::int32_t kClosingPercent = 3;

// Percentage of the whole copy when `base` of it are the player's files.
double Percent(std::int32_t done, std::int32_t total, std::int32_t base) {
  return static_cast<double>(done) / total * (100 - base) + base;
}

// Percentage when the player file with this index (from 0) is copied.
int PlayerPercent(int index) {
  return index < kPlayerFilesInRoot ? index + 1 : (index - 1) * 2;
}

/// Shows a chosen-camera save on the wizard's page. Nothing cancels it there, and what comes after
/// it is the wizard's own business.
class CameraProgress : public SaveProgress {
 public:
  CameraProgress(CopyView& view, std::int32_t base) : view_(view), base_(base) {}

  void ShowBlocksDone(std::int32_t done, std::int32_t total) override {
    view_.ShowPercent(std::max(Percent(done, total, base_) - kClosingPercent, 0.0));
  }
  // Of a disc that cannot be written the wizard itself tells after a copy that failed.
  void ShowMessage(const std::string& text) override {
    if (text != save_text::kWriteError) view_.ShowApplicationMessage(text);
  }
  void ShowHourglass(bool) override {}
  void ShowFinished() override { view_.ShowPercent(100); }
  void ShowFailed() override {}
  void LetMessagesRun() override { view_.LetMessagesRun(); }
  bool StillSaving() override { return true; }

 private:
  CopyView& view_;
  std::int32_t base_;
};

}  // namespace

CopyRun::CopyRun(platform::Platform& system, CopyView& view, CopyJob job)
    : system_(system), view_(view), job_(std::move(job)), disc_(system, job_.drive) {}

// The source stays open while the disc is cleared: Windows deletes no file that is open.
bool CopyRun::CopyAll() {
  std::optional<SourceFile> source(std::in_place, system_.files, job_.sourcePath);
  if (!source->IsOpen() || !HasBlocks(job_.firstBlock, job_.lastBlock)) return false;
  if (!SparesSources()) return false;
  const bool copiesPlayer = !job_.playerFiles.empty();
  if (copiesPlayer && !ClearDisc()) return false;
  view_.ShowProgress(true);
  view_.LetMessagesRun();
  if (copiesPlayer && !CopyPlayerFiles()) return false;
  if (!mdlSave::blnSomeCameras) return CopyBlocks();
  source.reset();  // The camera index and the save open it themselves.
  return CopyChosenCameras();
}

bool CopyRun::SparesSources() {
  std::vector<std::string> kept = job_.playerFiles;
  kept.push_back(job_.sourcePath);
  std::vector<std::string> written = PlayerFilesOnDisc(job_.drive, job_.playerFiles);
  written.push_back(job_.targetPath);
  return disc_.Spares(kept, !job_.playerFiles.empty(), written);
}

bool CopyRun::ClearDisc() {
  const bool isCleared = disc_.Clear();
  view_.LetMessagesRun();
  return isCleared && system_.drives.MakeFolder(disc_.PlayerFolder());
}

bool CopyRun::CopyPlayerFiles() {
  const std::vector<std::string> targets = PlayerFilesOnDisc(job_.drive, job_.playerFiles);
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (!CopyWholeFile(system_.files, system_.names, job_.playerFiles[i], targets[i])) return false;
    view_.ShowPercent(PlayerPercent(static_cast<int>(i)));
    view_.LetMessagesRun();
  }
  intProgressBase_ = kPlayerPercent;
  return true;
}

bool CopyRun::CopyBlocks() {
  WholeFile target(system_.files, system_.names, job_.targetPath);
  if (!target.IsOpen()) return false;
  if (!mdlFileProcessing::SeekBlock(system_.files, job_.firstBlock - 1, 0)) return false;
  const std::int32_t blocks = job_.lastBlock - job_.firstBlock + 1;
  bytRecord.Redimension(format::kBlockSize);
  for (std::int32_t i = 1; i <= blocks; ++i) {
    if (!CopyBlock(target)) return false;
    view_.ShowPercent(Percent(i, blocks, intProgressBase_));
    view_.LetMessagesRun();
  }
  return target.Finish();
}

// A block that the source does not hold whole is told and written all the same.
bool CopyRun::CopyBlock(WholeFile& target) {
  std::uint32_t lngBytesDone = 0;
  const bool isRead = system_.files.Read(mdlFileProcessing::hSourceFile, bytRecord.data(),
                                         format::kBlockSize, lngBytesDone);
  if (lngBytesDone != format::kBlockSize) view_.ShowApplicationMessage(save_text::kReadError);
  return isRead && target.Write(bytRecord.data(), format::kBlockSize);
}

bool CopyRun::CopyChosenCameras() {
  // What keeps the pass from its end is told by the save.
  IndexBlockRange(system_.files, job_.sourcePath, job_.firstBlock, job_.lastBlock);
  return SendDataToClassCD(job_.sourcePath, job_.targetPath, job_.firstBlock, job_.lastBlock);
}

bool CopyRun::SendDataToClassCD(const std::string& Filename, const std::string& TargetFilename,
                                std::int32_t SPoint, std::int32_t EPoint) {
  CameraProgress progress(view_, intProgressBase_);
  return SaveChosenCameras(system_, progress, Filename, TargetFilename, SPoint, EPoint) ==
         SaveOutcome::kSaved;
}
