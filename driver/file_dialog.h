#pragma once

#include <string>

#include "driver/window.h"

namespace driver {

/// The system's dialog for a file to open or to save.
class FileDialog {
 public:
  explicit FileDialog(const Window& window) : window_(window) {}

  /// Whether a window is such a dialog, ready to be used.
  static bool Is(const Window& window);

  /// What it shows: "FOLDER, NAME, KIND OF FILES of HOW MANY", the folder without those around it.
  std::string Look() const;
  /// Types a name and presses the dialog's own button. Does not wait for what follows.
  void Accept(const std::string& name) const;
  void Cancel() const;
  /// Waits until it is gone.
  void AwaitGone() const;

 private:
  Window window_;
};

}  // namespace driver
