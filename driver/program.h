#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "driver/window.h"

namespace driver {

/// The window class of message boxes and file dialogs.
inline constexpr const char* kDialogClass = "#32770";

/// What a message box said.
struct Message {
  std::string title;
  std::string text;
  bool operator==(const Message&) const = default;
};

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

/// The top-level windows of a process, hidden ones too, from the front to the back.
std::vector<Window> WindowsOf(DWORD process);

/// Has the program of a window stand still as long as the answer lives. What is posted meanwhile is
/// there when it goes on.
std::shared_ptr<void> Pause(const Window& window);
/// A started program whose windows are worked from outside. It is ended with this object, if it
/// still runs then.
class Program {
 public:
  explicit Program(const std::string& commandLine);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  /// The program's shown top-level window of this class, if there is one.
  std::optional<Window> FindShown(const std::string& className) const;
  /// The same, waiting for it.
  Window AwaitShown(const std::string& className) const;
  /// Waits for a message box, answers it with the button of this id, and waits until it is gone.
  Message AnswerMessage(int button = IDOK) const;
  /// Waits for a file dialog with this title.
  FileDialog AwaitFileDialog(const std::string& title) const;
  /// Whether a message box or a file dialog is shown.
  bool ShowsDialog() const { return FindShown(kDialogClass).has_value(); }
  /// Waits for the program's end; its exit code.
  DWORD AwaitEnd() const;
  /// Ends the program wherever it is.
  void Kill() const;
  bool Runs() const { return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }
  HANDLE process() const { return process_.hProcess; }

 private:
  PROCESS_INFORMATION process_ = {};
};

}  // namespace driver
