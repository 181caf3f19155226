#pragma once

#include <cstdint>
#include <string>

#include "platform/platform.h"

/// The outside programs that make a disc writable as a drive, and close and eject it: DirectCD and
/// Drag-to-Disc. They offer no interface; they are started through the shell, found by the exact
/// titles of their windows, and driven by keystrokes. Nothing here waits for them unless it says
/// so, and nothing ever ends them.
class BurningSoftware {
 public:
  explicit BurningSoftware(platform::Platform& system) : system_(system) {}

  /// Looks up where both programs have registered themselves.
  void LookUp();
  bool HasDirectCD() const { return !strDirectCDPath.empty(); }
  /// Drag-to-Disc is used whenever it is registered.
  bool UsesDragToDisc() const { return !strDragToDiscPath.empty(); }

  /// Starts DirectCD with `owner` as the owner of any box of the shell's, and brings its window to
  /// the front if it is there already.
  void LaunchDirectCD(platform::WindowHandle owner);
  /// Starts Drag-to-Disc unless it runs, and types what makes it format the disc. Raises an
  /// invalid procedure call when it has no window yet.
  void FormatWithDragToDisc(platform::WindowHandle owner);
  /// Opens the door of a drive ("E:") and waits until it is open; the burning program then offers
  /// its eject options.
  void OpenDoor(const std::string& drive);
  /// Waits for Drag-to-Disc's eject dialog, for ever if need be, without letting messages run.
  platform::WindowHandle WaitForEjectDialog();

 private:
  platform::Platform& system_;
  std::string strDirectCDPath;
  std::string strDragToDiscPath;
};
