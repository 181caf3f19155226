#pragma once

#include <string>
#include <vector>

#include "cdwizard/wizard_page.h"
#include "platform/desktop.h"

/// What copying to the disc shows of itself.
class CopyView {
 public:
  virtual ~CopyView() = default;

  /// Shows the clip, the bar and the percentage, or hides them again.
  virtual void ShowProgress(bool shown) = 0;
  /// Shows a percentage of 0 to 100.
  virtual void ShowPercent(double percent) = 0;
  /// Shows a message under the application's title and waits until it is answered.
  virtual void ShowApplicationMessage(const std::string& text) = 0;
  /// Asks a question; true for Yes.
  virtual bool AskYesNo(const std::string& text) = 0;
  /// Lets the messages that wait for the program's windows be handled. Raises a `RuntimeError` when
  /// the session has begun to end while progress is shown.
  virtual void LetMessagesRun() = 0;
};

/// What the user has entered.
struct WizardInput {
  std::string drive;         ///< Text of `Combo1`, such as "E:".
  std::string fileName;      ///< Text of `Text1`, trimmed.
  bool wantsPlayer = false;  ///< `Check1` is ticked.
};

/// The wizard's window, as far as its rules know it.
class WizardView : public CopyView {
 public:
  virtual void ShowPage(const PageLook& look) = 0;
  /// Fills `Combo1`; the last drive is chosen.
  virtual void ShowDrives(const std::vector<std::string>& drives) = 0;
  virtual WizardInput Input() = 0;
  virtual void SetFileName(const std::string& name) = 0;
  virtual void ShowMessage(const std::string& text) = 0;
  /// Shows the hourglass, or the usual pointer again, at once.
  virtual void ShowHourglass(bool on) = 0;
  /// Throws away the mouse and key input that waits.
  virtual void DiscardInput() = 0;
  virtual void CloseWindow() = 0;
  /// The window as the owner of what the shell shows.
  virtual platform::WindowHandle Window() = 0;
};
