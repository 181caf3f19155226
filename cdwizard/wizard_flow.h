#pragma once

#include "cdwizard/wizard_page.h"

/// What a click has the wizard do.
enum class WizardStep {
  kNone,
  kShowWelcome,
  kFindPrograms,
  kShowDrives,
  kStartBurning,
  kReselect,
  kWriteDisc,
  kEject,
  kClose,
};

/// What a click on a page button (by its index) means on a page; `kNone` where it means nothing.
/// The wizard itself clicks `page_button::kCopyingBack`, on the way back from a disc that is not
/// ready.
WizardStep StepOf(Page page, int pageButton);
