#include "cdwizard/wizard_flow.h"

using namespace page_button;

namespace {

struct Row {
  Page page;
  int pageButton;
  WizardStep step;
};

constexpr Row kRows[] = {
    {Page::kWelcome, kWelcomeNext, WizardStep::kFindPrograms},

    {Page::kDrive, kDriveBack, WizardStep::kShowWelcome},
    {Page::kDrive, kDriveNext, WizardStep::kStartBurning},

    {Page::kFileName, kFileNameBack, WizardStep::kShowDrives},
    {Page::kFileName, kFileNameNext, WizardStep::kWriteDisc},
    {Page::kFileName, kCopyingBack, WizardStep::kReselect},

    {Page::kCopying, kCopyingBack, WizardStep::kReselect},

    {Page::kReselect, kFileNameBack, WizardStep::kShowDrives},
    {Page::kReselect, kFileNameNext, WizardStep::kWriteDisc},

    {Page::kEject, kEjectNext, WizardStep::kEject},

    {Page::kDone, kFinish, WizardStep::kClose},
};

}  // namespace

WizardStep StepOf(Page page, int pageButton) {
  for (const Row& row : kRows)
    if (row.page == page && row.pageButton == pageButton) return row.step;
  return WizardStep::kNone;
}
