#include "cdwizard/player_files.h"

#include "save/last_file_part.h"

std::vector<std::string> PlayerFilePaths(const std::string& strPlayerRoot) {
  std::vector<std::string> paths;
  for (const char* relative :
       {"TessaviewCD\\Autorun.inf", "TessaviewCD\\Tessaview Notes.txt",
        "TessaviewCD\\WIN95.BAT.bat", "TessaviewCD\\Tessaview\\comdlg32.ocx",
        "TessaviewCD\\Tessaview\\pxcodec.dll", "TessaviewCD\\Tessaview\\msvbvm60.dll",
        "TessaviewCD\\Tessaview\\Oleaut32.dll", "TessaviewCD\\Tessaview\\Tessaview.exe",
        "TessaviewCD\\Tessaview\\kdu_v42R.dll", "TessaviewCD\\Tessaview\\tvjpeg.dll"})
    paths.push_back(strPlayerRoot + relative);
  return paths;
}

std::vector<std::string> PlayerFilesOnDisc(const std::string& drive,
                                           const std::vector<std::string>& paths) {
  std::vector<std::string> onDisc;
  for (const std::string& path : paths) {
    const bool inRoot = onDisc.size() < kPlayerFilesInRoot;
    onDisc.push_back(drive + (inRoot ? "" : kPlayerFolder) + "\\" + LastFilePart(path));
  }
  return onDisc;
}
