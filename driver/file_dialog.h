#pragma once

#include <string>
#include <vector>

#include "driver/window.h"

namespace driver {

/// The system's dialog for a file to open or to save.
class FileDialog {
 public:
  explicit FileDialog(const Window& window) : window_(window) {}

  /// Whether a window is such a dialog, ready to be used.
  static bool Is(const Window& window);

  /// The kinds of files that it offers, as the user reads them.
  std::vector<std::string> Filters() const;
  /// The one of them that is chosen.
  std::string Filter() const;
  /// The name of the folder that it shows.
  std::string Folder() const;
  /// What stands in the name box.
  std::string Name() const { return NameBox().Text(); }
  /// Types a name and presses the dialog's own button. Does not wait for what follows.
  void Accept(const std::string& name) const;
  void Cancel() const;
  void AwaitGone() const;

 private:
  Window NameBox() const;

  Window window_;
};

}  // namespace driver
