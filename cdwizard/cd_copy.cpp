#include "cdwizard/cd_copy.h"

#include <algorithm>
#include <exception>

#include "capture/mdlFileProcessing.h"
#include "cdwizard/copy_run.h"
#include "cdwizard/player_files.h"

namespace {

constexpr std::uint64_t kMegabyte = 1048576;
constexpr std::uint64_t kClusterBytes = 1024;
constexpr std::uint64_t kMostBytes = 2147483647;

std::uint64_t RoundedUp(std::uint64_t bytes, std::uint64_t unit) {
  return (bytes + unit - 1) / unit * unit;
}

bool IsAbsolute(const std::string& path) {
  return path.starts_with("\\\\") || path.find(":\\") == 1;
}

// The comparison regards letter case: a name that ends in ".60d" gets ".60D" behind it.
std::string WithEnding(const std::string& fileName, bool is20D) {
  const std::string ending = is20D ? ".20D" : ".60D";
  return fileName.ends_with(ending) ? fileName : fileName + ending;
}

// Behind a colon stands the name of a hidden stream: the file itself would show no bytes.
bool NamesWholeFile(const std::string& fileName) {
  return fileName.find(':') == std::string::npos;
}

}  // namespace

std::int32_t CdCopy::FilesSize(bool blnQW) {
  lngTotalMB_ = 0;
  strPlayerFiles_ = blnQW ? PlayerFilePaths(strPlayerRoot_) : std::vector<std::string>();
  std::uint64_t bytes = 0;
  for (const std::string& path : strPlayerFiles_) {
    if (!HasPlayerFile(path)) {
      if (!MayGoOnWithout(path)) return 0;
      bytes = 0;
      break;
    }
    bytes = std::min(bytes + PlayerBytes(path), kMostBytes);
    if (bytes == kMostBytes) break;
  }
  const std::uint64_t megabytes = RoundedUp(bytes, kMegabyte) / kMegabyte;
  lngTotalMB_ = static_cast<std::int32_t>(megabytes) + mainWindow_.SizeEstimateMB();
  return lngTotalMB_;
}

bool CdCopy::HasPlayerFile(const std::string& path) {
  return IsAbsolute(strPlayerRoot_) && system_.drives.HasFile(path);
}

std::uint64_t CdCopy::PlayerBytes(const std::string& path) {
  const std::uint64_t bytes = system_.drives.FileBytes(path).value_or(0);
  return RoundedUp(std::min(bytes, kMostBytes), kClusterBytes);
}

bool CdCopy::MayGoOnWithout(const std::string& path) {
  return view_.AskYesNo("The file (" + path +
                        ") can not be found! \r\n"
                        "You can only save the selected file but not the Tessaview files. "
                        "Do you want to continue?");
}

bool CdCopy::CopyFiles(bool blnQW, const std::string& drive, const std::string& fileName) {
  const bool copiesPlayer = blnQW && lngTotalMB_ > mainWindow_.SizeEstimateMB();
  const std::string folder = copiesPlayer ? drive + kPlayerFolder : drive;
  CopyRun run(system_, view_,
              {.sourcePath = mainWindow_.SourcePath(),
               .firstBlock = mainWindow_.FirstBlock(),
               .lastBlock = mainWindow_.LastBlock(),
               .playerFiles = copiesPlayer ? strPlayerFiles_ : std::vector<std::string>(),
               .drive = drive,
               .targetPath = folder + "\\" + WithEnding(fileName, mdlFileProcessing::bln20D)});
  bool isCopied = false;
  try {
    isCopied = NamesWholeFile(fileName) && run.CopyAll();
  } catch (const std::exception&) {
    // No memory, for one. It must not pass: the window cannot be closed while a copy is on.
    isCopied = false;
  }
  view_.ShowProgress(false);
  return isCopied;
}
