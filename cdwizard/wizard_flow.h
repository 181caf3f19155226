#pragma once

#include <optional>

#include "cdwizard/wizard_page.h"

/// What moves the wizard: the user's clicks, and what has come of an effect.
enum class WizardEvent {
  kWelcomeNext,  ///< A click on a page button; in the order of the buttons' indices.
  kDriveNext,
  kFileNameNext,
  kEjectNext,
  kFinish,
  kDriveBack,
  kFileNameBack,
  kCopyingBack,
  kCancel,
  kProgramFound,
  kProgramMissing,
  kNameMissing,
  kPlayerDeclined,  ///< The user does not want to go on without the player files.
  kRoomEnough,
  kTooBig,
  kDiscNotReady,  ///< No room can be told, or the copy failed.
  kCopied,
  kTryAgain,
  kGiveUp,
  kEjected,
};

/// What the wizard does after it has shown a page; most of it ends in another event.
enum class WizardEffect {
  kNone,
  kLookUpPrograms,
  kTellProgramMissing,
  kStartBurning,  ///< Has the outside program make the disc writable.
  kAskForName,
  kCheckRoom,
  kTellTooBig,
  kCopy,
  kAskTryAgain,
  kGoBackToDrive,
  kTellGivingUp,
  kEject,
  kShowEjectDialog,
  kClose,
};

/// Where an event leads.
struct WizardStep {
  Page page;
  WizardEffect effect;
};

/// The click on the page button with this index.
constexpr WizardEvent ClickOn(int pageButton) {
  return static_cast<WizardEvent>(pageButton);
}

/// Where an event leads from a page; none when it means nothing there.
std::optional<WizardStep> NextStep(Page page, WizardEvent event);
