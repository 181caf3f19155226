#pragma once

#include <string>
#include <vector>

#include "cdwizard/cd_copy.h"
#include "cdwizard/wizard_page.h"
#include "platform/desktop.h"

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
  /// Shows the hourglass, or the usual pointer again, at once.
  virtual void ShowHourglass(bool on) = 0;
  /// The copy begins, or has ended: then its progress is hidden again.
  virtual void SetCopying(bool on) = 0;
  /// Throws away the mouse and key input that waits.
  virtual void DiscardInput() = 0;
  virtual void CloseWindow() = 0;
  /// The window as the owner of what the shell shows.
  virtual platform::WindowHandle Window() = 0;
};
