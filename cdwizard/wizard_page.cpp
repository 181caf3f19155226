#include "cdwizard/wizard_page.h"

namespace {

using namespace page_button;

constexpr int kLineTop = 2400;  // Twips; the buttons stand below it.

struct Words {
  const char* heading;
  int top;
  const char* directCd;
  const char* dragToDisc;
};

constexpr char kWelcomeText[] =
    "This wizard only supports the DirectCD® software Version 3.0 or later."
    "   If you are sure that DirectCD® was already installed on your computer,  please click the "
    "'Next' button,  otherwise click the 'Cancel' button!";
constexpr char kDriveDirectCdText[] =
    "After selecting the CD recorder drive, please click the 'Next' button. "
    "  The DirectCD® program will be launched.  Please insert a blank CD and click the 'format CD' "
    "button! "
    "  When you get the CD Ready dialog box, please click OK and then close the DirectCD® program!";
constexpr char kDriveDragToDiscText[] =
    "After selecting the CD recorder drive, please insert a recordable CD and then click the "
    "'Next' button. ";
constexpr char kFileNameText[] = "After entering a file name,  please click the 'Next' button. ";
constexpr char kReselectText[] =
    "After selecting capture file(s), please click the 'Next' button. ";
constexpr char kEjectDirectCdText[] =
    "After clicking the 'Next' button,  the Eject options dialog box will appear. "
    " Please select the option 'Close to Read on Any Computer',  then click the OK button!";
constexpr char kEjectDragToDiscText[] =
    "After clicking the 'Next' button,  the Drag-to-Disc Eject options dialog box will appear. "
    " Please select the option 'Make this disc readable on any CD or DVD drive',  then click the "
    "Eject button!";
constexpr char kDoneText[] = "To close this wizard,  click the 'Finish' button.";

constexpr int kDriveTopDirectCd = 1120;
constexpr int kDriveTopDragToDisc = 1320;

Words WordsOf(Page page, bool dragToDisc) {
  switch (page) {
    case Page::kWelcome:
    case Page::kLookingUp:
      return {"Welcome to CD Creator Wizard!", 840, kWelcomeText, kWelcomeText};
    case Page::kDrive:
      return {
          "Please Select CD Recorder Drive:", dragToDisc ? kDriveTopDragToDisc : kDriveTopDirectCd,
          kDriveDirectCdText, kDriveDragToDiscText};
    case Page::kFileName:
      return {"Please Input File Name:", 1830, kFileNameText, kFileNameText};
    case Page::kCopying:
      return {"The File is being saved to the CD ...", 1830, "", ""};
    case Page::kReselect:
      return {"Please Select Capture File(s):", 1830, kReselectText, kReselectText};
    case Page::kEject:
      return {"The Files have been saved to the CD!", 880, kEjectDirectCdText,
              kEjectDragToDiscText};
    case Page::kDone:
      break;
  }
  return {"CD Creator Wizard Is Done!", 1680, kDoneText, kDoneText};
}

PageLook WithWords(Page page, bool dragToDisc) {
  const Words words = WordsOf(page, dragToDisc);
  PageLook look;
  look.heading = words.heading;
  look.instructions = dragToDisc ? words.dragToDisc : words.directCd;
  look.instructionsTop = words.top;
  // As much as there is, for the user's font may be large. An empty label would still paint over
  // what stands in its place.
  if (!look.instructions.empty()) look.instructionsHeight = kLineTop - words.top;
  return look;
}

constexpr PageLook::Button kUsable = {true, true};
constexpr PageLook::Button kGreyed = {true, false};

// The button that leads on: it has the focus, and Enter presses it.
void LeadOn(PageLook& look, int button) {
  look.buttons[static_cast<std::size_t>(button)] = kUsable;
  look.focus = button;
  look.defaultButton = button;
}

}  // namespace

PageLook LookOf(Page page, bool dragToDisc) {
  PageLook look = WithWords(page, dragToDisc);
  switch (page) {
    case Page::kWelcome:
      LeadOn(look, kWelcomeNext);
      look.buttons[kDriveBack] = kGreyed;
      break;
    case Page::kLookingUp:
      look.buttons[kDriveNext] = kGreyed;
      look.buttons[kDriveBack] = kGreyed;
      look.cancelEnabled = false;
      break;
    case Page::kDrive:
      LeadOn(look, kDriveNext);
      look.buttons[kDriveBack] = kUsable;
      look.showsDrives = true;
      break;
    case Page::kFileName:
      LeadOn(look, kFileNameNext);
      look.buttons[kFileNameBack] = kUsable;
      look.showsFileName = true;
      look.focus = kNone;
      look.focusesFileName = true;
      break;
    case Page::kCopying:
      look.buttons[kEjectNext] = kGreyed;
      look.buttons[kCopyingBack] = kGreyed;
      look.cancelEnabled = false;
      look.defaultButton = kEjectNext;
      break;
    case Page::kReselect:
      LeadOn(look, kFileNameNext);
      look.buttons[kFileNameBack] = kUsable;
      break;
    case Page::kEject:
      LeadOn(look, kEjectNext);
      look.buttons[kCopyingBack] = kGreyed;
      break;
    case Page::kDone:
      LeadOn(look, kFinish);
      look.buttons[kCopyingBack] = kGreyed;
      look.cancelEnabled = false;
      break;
  }
  return look;
}
