// The main window's cameras: which there are, and which are kept.

#include "capture/mdlFileProcessing.h"
#include "mainwindow/camera_choice.h"
#include "mainwindow/frmTrimbrook.h"
#include "mainwindow/messages.h"
#include "mainwindow/shown_hourglass.h"

void frmTrimbrook::cmdSet_Click() {
  TickAll(true);
}

void frmTrimbrook::cmdClear_Click() {
  TickAll(false);
}

void frmTrimbrook::TickAll(bool ticked) {
  for (int i = Check1.first(); i <= Check1.last(); ++i) Check1(i).SetValue(ticked);
}

void frmTrimbrook::Command8_Click() {
  if (Text1.Text().empty()) {
    ShowMessage(main_text::kNoSource);
    return;
  }
  const ShownHourglass hourglass(*this);
  checkedRange_ = {Slider1.Value(), Slider2.Value()};
  mdlFileProcessing::CheckAvailability(system_.files, SourcePath(), checkedRange_.first,
                                       checkedRange_.last);
  const std::uint32_t available = AvailableCameras();
  for (int i = 0; i < CameraCount(); ++i) Check1(i).SetEnabled((available >> i & 1U) != 0);
}

/// Cameras are looked up for a range once; a range that was widened since then may have more.
void frmTrimbrook::EnsureAvailabilityChecked() {
  if (Slider1.Value() < checkedRange_.first || Slider2.Value() > checkedRange_.last)
    Command8_Click();
}

std::int16_t frmTrimbrook::GetCameraSelection() {
  std::uint32_t enabled = 0;
  std::uint32_t ticked = 0;
  for (int i = Check1.first(); i <= Check1.last(); ++i) {
    const std::uint32_t camera = 1U << i;
    if (Check1(i).Enabled()) enabled |= camera;
    if (Check1(i).Value()) ticked |= camera;
  }
  return ChooseCameras(enabled, ticked);
}

void frmTrimbrook::ArrangeCameras(const layout::CameraArrangement& arrangement, int cameras) {
  Frame7.SetLeft(arrangement.frame7Left);
  Frame7.SetWidth(arrangement.frame7Width);
  for (int i = Check1.first(); i <= Check1.last(); ++i) {
    Check1(i).SetVisible(i < cameras);
    Label5(i + 1).SetVisible(i < cameras);
  }
  cmdClear.SetLeft(arrangement.pictureButtonsLeft);
  cmdSet.SetLeft(arrangement.pictureButtonsLeft);
  Command8.SetLeft(arrangement.command8Left);
}
