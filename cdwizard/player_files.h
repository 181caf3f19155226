#pragma once

#include <string>
#include <vector>

/// The player distribution that can be copied beside a recording, so that the disc can be viewed on
/// any computer.

/// Folder of the player on the disc, behind the drive.
inline constexpr char kPlayerFolder[] = "\\Tessaview";
/// The file in a disc's root by which a disc that carries a player is known, behind the drive.
inline constexpr char kPlayerMark[] = "\\Tessaview Notes.txt";
/// The first player files go to the disc's root, the others into the player's folder.
inline constexpr int kPlayerFilesInRoot = 3;

/// Paths of the player files in the distribution. `strPlayerRoot` is put before them as it stands,
/// so it ends in a backslash.
std::vector<std::string> PlayerFilePaths(const std::string& strPlayerRoot);

/// Where each of these files lands on the disc in a drive ("E:").
std::vector<std::string> PlayerFilesOnDisc(const std::string& drive,
                                           const std::vector<std::string>& paths);
