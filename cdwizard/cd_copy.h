#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cdwizard/disc.h"
#include "platform/platform.h"
#include "save/main_window_view.h"
#include "save/operations.h"

/// What copying to the disc shows of itself.
class CopyView {
 public:
  virtual ~CopyView() = default;

  /// Shows the clip, the bar and the percentage.
  virtual void ShowProgress() = 0;
  /// Shows a percentage of 0 to 100.
  virtual void ShowPercent(double percent) = 0;
  /// Shows a message under the application's title and waits until it is answered.
  virtual void ShowApplicationMessage(const std::string& text) = 0;
  virtual void ShowMessage(const std::string& text) = 0;
  /// Asks a question; true for Yes.
  virtual bool AskYesNo(const std::string& text) = 0;
  /// Lets the messages that wait for the program's windows be handled; whether to go on. False once
  /// the Windows session ends: nothing is to be begun then, either.
  virtual bool GoOn() = 0;
};

/// How a copy to a disc has ended. Anything but `kCopied` leaves nothing of the file that was being
/// written.
enum class CopyEnd {
  kCopied,
  kNotReady,  ///< Something could not be read or written.
  kOver,      ///< Another try would end no better, or there is no time for one.
};

/// Paths of the files of the player distribution, which can be copied beside a recording so that
/// the disc can be viewed on any computer. `strPlayerRoot` is put before them as it stands, so it
/// ends in a backslash.
std::vector<std::string> PlayerFilePaths(const std::string& strPlayerRoot);

/// Writes the chosen part of the open recording onto a disc and, if wanted, the player's files.
class CdCopy {
 public:
  CdCopy(platform::Platform& system, MainWindowView& mainWindow, CopyView& view)
      : system_(system), mainWindow_(mainWindow), view_(view) {}

  /// Folder of the player distribution; where it is empty or relative, its files count as missing.
  void SetPlayerRoot(const std::string& root) { strPlayerRoot = root; }
  /// Megabytes to be written: the main window's estimate and, with `blnQW`, the player's files,
  /// each rounded up to 1024 bytes and their sum to a megabyte. When one is missing the user is
  /// asked whether to go on without them: the estimate alone, or 0 for No.
  std::int32_t FilesSize(bool blnQW);
  /// Writes to `drive` ("E:") under `fileName`, which gets the ending of the source's kind. The
  /// player's files are copied with `blnQW` when the last `FilesSize` has counted them. Nothing is
  /// deleted when the source cannot be opened, or when it or a player file would be lost.
  CopyEnd CopyFiles(bool blnQW, const std::string& drive, const std::string& fileName);

 private:
  /// Where one copy goes, and whether the player's files go with it.
  struct Job {
    Disc disc;
    bool withPlayer;
    std::string targetPath;
  };

  /// What is saved of the open recording.
  SaveJob RecordingJob(const std::string& targetPath);
  bool HasPlayerFile(const std::string& path);
  std::int32_t PlayerBytes(const std::string& path);
  bool MayGoOnWithout(const std::string& path);

  // The steps of a copy; each answers false when the copy is to end.
  bool CopyAll(Job& job);
  bool SparesSources(Job& job);
  bool ClearDisc(Disc& disc);
  bool CopyPlayerFiles(const Disc& disc);
  bool CopyPlayerFile(const std::string& from, const std::string& to);
  bool SendDataToClassCD(const SaveJob& job);
  void TellEnd(SaveResult result);
  bool GoOn();

  platform::Platform& system_;
  MainWindowView& mainWindow_;
  CopyView& view_;
  std::string strPlayerRoot;
  std::vector<std::string> strPlayerFiles;
  std::vector<std::int32_t> lngPlayerFileSizes;  // Bytes, whole multiples of 1024.
  std::int32_t lngFilesSize = 0;                 // What the last `FilesSize` has answered.
  std::int32_t intProgressBase = 0;              // Percent that the player's files have taken.
  bool isOver_ = false;                          // Another try would end no better.
};
