#include "cdwizard/disc.h"

#include <algorithm>
#include <optional>
#include <utility>

using platform::FileHandle;
using platform::FileIdentity;

namespace {

// Both behind the drive. A disc is known to carry a player by the file.
constexpr char kPlayerFolder[] = "\\Tessaview";
constexpr char kPlayerMark[] = "\\Tessaview Notes.txt";

std::optional<FileIdentity> IdentityOf(platform::Files& files, const std::string& path) {
  const FileHandle file = files.Open(path, platform::OpenMode::kReadExisting);
  if (file == FileHandle::kInvalid) return std::nullopt;
  auto identity = files.Identity(file);
  files.Close(file);
  return identity;
}

bool Contains(const auto& list, const auto& element) {
  return std::find(list.begin(), list.end(), element) != list.end();
}

void Append(std::vector<std::string>& list, const std::vector<std::string>& more) {
  list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

Disc::Disc(platform::Platform& system, std::string drive)
    : system_(system), drive_(std::move(drive)) {}

std::string Disc::PlayerFolder() const {
  return drive_ + kPlayerFolder;
}

bool Disc::Spares(const std::vector<std::string>& kept, bool clears,
                  const std::vector<std::string>& written) {
  std::vector<FileIdentity> keptIdentities;
  for (const std::string& path : kept) {
    const auto identity = IdentityOf(system_.files, path);
    if (!identity) return false;
    keptIdentities.push_back(*identity);
  }
  std::vector<std::string> lost = written;
  if (clears) Append(lost, WhatClearingDeletes());
  return std::none_of(lost.begin(), lost.end(), [&](const std::string& path) {
    if (!system_.fso.HasFile(path)) return false;
    const auto identity = IdentityOf(system_.files, path);
    return !identity || Contains(keptIdentities, *identity);
  });
}

bool Disc::Clear() const {
  if (!IsCdRom()) return false;
  if (system_.fso.HasFolder(PlayerFolder()) && !system_.fso.RemoveFolder(PlayerFolder()))
    return false;
  return !CarriesPlayer() || system_.fso.RemoveFilesIn(drive_ + "\\");
}

bool Disc::IsCdRom() const {
  return Contains(system_.fso.CdRomDrives(), drive_);
}

bool Disc::CarriesPlayer() const {
  return system_.fso.HasFile(drive_ + kPlayerMark);
}

std::vector<std::string> Disc::WhatClearingDeletes() const {
  std::vector<std::string> paths = system_.fso.FilesBelow(PlayerFolder());
  if (!CarriesPlayer()) return paths;
  const std::string root = drive_ + "\\";
  for (const std::string& path : system_.fso.FilesBelow(root))
    if (path.find('\\', root.size()) == std::string::npos) paths.push_back(path);
  return paths;
}
