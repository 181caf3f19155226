#pragma once

#include <array>
#include <string>

/// The wizard's pages. All share one window: a page is nothing but what the controls show.
enum class Page {
  kWelcome,
  kLookingUp,  ///< The welcome page while the outside programs are looked up.
  kDrive,
  kFileName,
  kCopying,
  kReselect,  ///< Passed through on the way back from a copy that failed.
  kEject,
  kDone,
};

/// Number of page buttons, the control array `cmdNext`.
inline constexpr int kPageButtons = 8;

/// The page buttons by their index.
namespace page_button {
inline constexpr int kWelcomeNext = 0;
inline constexpr int kDriveNext = 1;
inline constexpr int kFileNameNext = 2;
inline constexpr int kEjectNext = 3;
inline constexpr int kFinish = 4;
inline constexpr int kDriveBack = 5;
inline constexpr int kFileNameBack = 6;
inline constexpr int kCopyingBack = 7;
inline constexpr int kNone = -1;
}  // namespace page_button

/// What the controls show on a page.
struct PageLook {
  struct Button {
    bool visible = false;
    bool enabled = false;
    bool operator==(const Button&) const = default;
  };

  std::string heading;         ///< Caption of `Label2`.
  std::string instructions;    ///< Caption of `Label1`.
  int instructionsTop = 0;     ///< Twips.
  int instructionsHeight = 0;  ///< Twips; down to the line over the buttons.
  std::array<Button, kPageButtons> buttons;
  bool cancelEnabled = true;
  bool showsDrives = false;                ///< `Combo1`.
  bool showsFileName = false;              ///< `Text1` and `Check1`.
  int focus = page_button::kNone;          ///< Page button that gets the focus.
  bool focusesFileName = false;            ///< `Text1` gets the focus instead.
  int defaultButton = page_button::kNone;  ///< Page button that Enter presses.
};

/// The look of a page when the disc is written through Drag-to-Disc, or else through DirectCD.
PageLook LookOf(Page page, bool dragToDisc);
