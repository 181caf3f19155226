#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cdwizard/wizard_view.h"
#include "platform/platform.h"
#include "save/main_window_view.h"

/// Writes the chosen part of the open recording onto a disc and, if wanted, the player's files.
class CdCopy {
 public:
  CdCopy(platform::Platform& system, MainWindowView& mainWindow, CopyView& view)
      : system_(system), mainWindow_(mainWindow), view_(view) {}

  /// Folder of the player distribution with its last backslash; where it is empty or relative, its
  /// files count as missing.
  void SetPlayerRoot(const std::string& strPlayerRoot) { strPlayerRoot_ = strPlayerRoot; }
  /// Megabytes to be written: the main window's estimate and, with `blnQW`, the player's files,
  /// each rounded up to 1024 bytes and their sum to a megabyte. When one is missing the user is
  /// asked whether to go on without them: the estimate alone, or 0 for No.
  std::int32_t FilesSize(bool blnQW);
  /// Writes to `drive` under `fileName`, which gets the ending of the source's kind. The player's
  /// files are copied with `blnQW` when the last `FilesSize` has counted them. True when all was
  /// written; otherwise nothing is left of the file that was being written.
  bool CopyFiles(bool blnQW, const std::string& drive, const std::string& fileName);

 private:
  bool HasPlayerFile(const std::string& path);
  std::uint64_t PlayerBytes(const std::string& path);
  bool MayGoOnWithout(const std::string& path);

  platform::Platform& system_;
  MainWindowView& mainWindow_;
  CopyView& view_;
  std::string strPlayerRoot_;
  std::vector<std::string> strPlayerFiles_;
  std::int32_t lngTotalMB_ = 0;  // What the last `FilesSize` has answered.
};
