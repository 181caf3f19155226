#pragma once

#include <optional>
#include <string>

#include "forms/win32.h"

namespace forms {

inline constexpr const char* kApplicationTitle = "Trimbrook";
inline constexpr const char* kMessageTitle = "Message";

/// What a message is: a refusal or damage, or work that has failed.
enum class Tone { kWarning, kError };

/// A modal box with an OK button over `owner`, which may be null.
void ShowMessageBox(HWND owner, const std::string& text, Tone tone,
                    const char* title = kMessageTitle);
/// A modal question with the buttons of this style (MB_YESNO and the like); the id of the answer.
int AskBox(HWND owner, const std::string& text, UINT buttons);

/// What a file dialog is asked for.
struct FileQuestion {
  std::string title;
  std::string filter;  ///< "description|pattern|description|pattern".
  std::string initialFolder;
  /// Save only: the ending with its dot that the name always has. A name with another one gets it
  /// appended, before the question whether an existing file is to be replaced.
  std::string ending;
  int firstFilter = 1;  ///< Number, from 1, of the filter that is shown at first.
};

/// Asks for a file to open; none when the user cancelled. The current folder stays as it is.
std::optional<std::string> AskOpenFile(HWND owner, const FileQuestion& question);
/// Asks for a file to save to; none when the user cancelled.
std::optional<std::string> AskSaveFile(HWND owner, const FileQuestion& question);

}  // namespace forms
