#include "cdwizard/wizard_flow.h"

namespace {

struct Row {
  Page page;
  WizardEvent event;
  WizardStep step;
};

using P = Page;
using E = WizardEvent;
using F = WizardEffect;

// clang-format off
constexpr Row kRows[] = {
    {P::kWelcome, E::kWelcomeNext, {P::kLookingUp, F::kLookUpPrograms}},
    {P::kWelcome, E::kCancel, {P::kWelcome, F::kClose}},

    {P::kLookingUp, E::kProgramFound, {P::kDrive, F::kNone}},
    {P::kLookingUp, E::kProgramMissing, {P::kLookingUp, F::kTellProgramMissing}},

    {P::kDrive, E::kDriveBack, {P::kWelcome, F::kNone}},
    {P::kDrive, E::kDriveNext, {P::kFileName, F::kStartBurning}},
    {P::kDrive, E::kCancel, {P::kDrive, F::kClose}},

    {P::kFileName, E::kFileNameBack, {P::kDrive, F::kNone}},
    {P::kFileName, E::kFileNameNext, {P::kFileName, F::kCheckRoom}},
    {P::kFileName, E::kCancel, {P::kFileName, F::kClose}},
    {P::kFileName, E::kNameMissing, {P::kFileName, F::kAskForName}},
    {P::kFileName, E::kPlayerDeclined, {P::kFileName, F::kClose}},
    {P::kFileName, E::kTooBig, {P::kFileName, F::kTellTooBig}},
    {P::kFileName, E::kRoomEnough, {P::kCopying, F::kCopy}},
    {P::kFileName, E::kDiscNotReady, {P::kFileName, F::kAskTryAgain}},
    {P::kFileName, E::kTryAgain, {P::kFileName, F::kGoBackToDrive}},
    {P::kFileName, E::kGiveUp, {P::kFileName, F::kTellGivingUp}},
    {P::kFileName, E::kCopyingBack, {P::kReselect, F::kNone}},

    {P::kCopying, E::kCopied, {P::kEject, F::kNone}},
    {P::kCopying, E::kDiscNotReady, {P::kCopying, F::kAskTryAgain}},
    {P::kCopying, E::kTryAgain, {P::kCopying, F::kGoBackToDrive}},
    {P::kCopying, E::kGiveUp, {P::kCopying, F::kTellGivingUp}},
    {P::kCopying, E::kCopyingBack, {P::kReselect, F::kNone}},

    {P::kReselect, E::kFileNameBack, {P::kDrive, F::kNone}},

    {P::kEject, E::kEjectNext, {P::kEject, F::kEject}},
    {P::kEject, E::kEjected, {P::kDone, F::kShowEjectDialog}},
    {P::kEject, E::kCancel, {P::kEject, F::kClose}},

    {P::kDone, E::kFinish, {P::kDone, F::kClose}},
};
// clang-format on

}  // namespace

std::optional<WizardStep> NextStep(Page page, WizardEvent event) {
  for (const Row& row : kRows)
    if (row.page == page && row.event == event) return row.step;
  return std::nullopt;
}
