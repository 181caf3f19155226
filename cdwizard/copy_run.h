#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cdwizard/disc.h"
#include "cdwizard/whole_file.h"
#include "cdwizard/wizard_view.h"
#include "platform/platform.h"

/// What one copy to a disc works on.
struct CopyJob {
  std::string sourcePath;
  std::int32_t firstBlock;  ///< From 1, like the last.
  std::int32_t lastBlock;
  std::vector<std::string> playerFiles;  ///< Empty when they are not copied.
  std::string drive;                     ///< Letter and colon, such as "E:".
  std::string targetPath;                ///< Of the recording on the disc.
};

/// One copy to a disc, step by step. Each step answers false when it failed, which ends the copy.
class CopyRun {
 public:
  CopyRun(platform::Platform& system, CopyView& view, CopyJob job);

  /// Clears the disc if the player's files are copied, copies them, and writes the recording.
  /// Nothing is deleted when the source cannot be opened, or when it or a player file would be lost
  /// by the copy.
  bool CopyAll();

 private:
  bool SparesSources();
  bool ClearDisc();
  bool CopyPlayerFiles();
  bool CopyBlocks();
  bool CopyBlock(WholeFile& target);
  bool CopyChosenCameras();
  bool SendDataToClassCD(const std::string& Filename, const std::string& TargetFilename,
                         std::int32_t SPoint, std::int32_t EPoint);

  platform::Platform& system_;
  CopyView& view_;
  CopyJob job_;
  Disc disc_;
  std::int32_t intProgressBase_ = 0;  // Percent that the player's files have taken.
};
