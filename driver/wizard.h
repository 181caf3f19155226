#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "driver/trimbrook.h"

namespace driver {

inline constexpr const char* kDirectCd = "DirectCD";
inline constexpr const char* kDragToDisc = "DrgToDsc";
inline constexpr const char* kEjectDialog = "Drag-to-Disc   Eject Options";

inline constexpr const char* kWelcomePage = "Welcome to CD Creator Wizard!";
inline constexpr const char* kDrivePage = "Please Select CD Recorder Drive:";
inline constexpr const char* kNamePage = "Please Input File Name:";
inline constexpr const char* kEjectPage = "The Files have been saved to the CD!";
inline constexpr const char* kDonePage = "CD Creator Wizard Is Done!";

/// The page buttons.
enum Button { kStart, kChooseDrive, kCopy, kEject, kFinish, kToWelcome, kToDrive, kButtons = 8 };

/// The wizard, opened from the main window. The outside programs and the disc in drive E: are
/// cleared away with it.
class Wizard : public testing::Test {
 protected:
  Wizard() { Forget(); }
  ~Wizard() override { Forget(); }

  /// Registers a burning program, as its set-up does.
  void Register(const std::string& name);
  /// Waits for a burning program's window.
  void AwaitBurner(const char* title);

  /// The button that opens the wizard is hidden in this release; its handler is there.
  void OpenWizard();
  Window At(int id) { return window_->Control(id); }
  Window PageButton(int index) { return At(IDC_frmSaveToCD_cmdNext + index); }
  void Press(Button button) { PageButton(button).ClickAndGoOn(); }
  void AwaitPage(const std::string& heading);
  /// A page that was waited for is shown.
  virtual void Reached(const std::string& /*page*/) {}
  /// Goes from the main window to the file name page, in DirectCD mode.
  void GoToNamePage(const std::string& fileName);
  /// Copies from the file name page, and from the main window again if need be, until a copy is
  /// caught: it stands still in its midst. It takes a long recording.
  std::unique_ptr<Pause> CatchCopy();
  void ExpectWizardGone();

  Trimbrook program_;
  std::unique_ptr<Window> window_;

 private:
  void Forget();
};

}  // namespace driver
