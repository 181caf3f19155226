#pragma once

#include <string>
#include <vector>

#include "platform/platform.h"

/// The disc in a CD drive, as what is to be cleared and written over.
class Disc {
 public:
  /// `drive`: letter and colon, such as "E:".
  Disc(platform::Platform& system, std::string drive);

  const std::string& drive() const { return drive_; }
  /// The player's folder on the disc.
  std::string PlayerFolder() const;
  /// Whether none of the files `kept` would be lost if the disc were cleared (when `clears`) and
  /// `written` were written. Files are told apart by their identity, whatever names lead to them; a
  /// file that cannot be told apart counts as lost.
  bool Spares(const std::vector<std::string>& kept, bool clears,
              const std::vector<std::string>& written);
  /// Deletes the player's folder and, on a disc that carries a player, every file in its root.
  /// False when something could not be deleted, or the drive is no CD drive.
  bool Clear() const;

 private:
  bool IsCdRom() const;
  bool CarriesPlayer() const;
  std::vector<std::string> WhatClearingDeletes() const;

  platform::Platform& system_;
  std::string drive_;
};
