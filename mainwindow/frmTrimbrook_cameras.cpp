// The main window's cameras: which there are, and which are kept.

#include "capture/mdlFileProcessing.h"
#include "mainwindow/frmTrimbrook.h"
#include "save/camera_choice.h"

void frmTrimbrook::TickAll(bool ticked) {
  for (int i = Check1.first(); i <= Check1.last(); ++i) Check1(i).SetValue(ticked);
}

/// False when the source cannot be read, which is told, or the user has stopped it: the boxes are
/// as they were.
bool frmTrimbrook::CheckAvailability() {
  if (!RequireSource()) return false;
  const BlockRange range = {Slider1.Value(), Slider2.Value()};
  const auto read = [&] {
    Reading reading = StartReading(1);
    Pacer pass = reading.NextPass();
    return mdlFileProcessing::CheckAvailability(system_.files, SourcePath(), range.first,
                                                range.last, &pass);
  };
  if (!AcceptReading(read())) return false;
  ShowAvailability(range);
  return true;
}

void frmTrimbrook::ShowAvailability(BlockRange range) {
  checkedRange_ = range;
  titles_.clear();
  const std::uint32_t available = AvailableCameras();
  for (int i = 0; i < mdlFileProcessing::lngCameraCount; ++i)
    Check1(i).SetEnabled((available >> i & 1U) != 0);
}

/// What a camera's first image in the checked range is titled.
std::string frmTrimbrook::CameraTip(int camera) {
  std::string name = "Camera " + std::to_string(camera + 1);
  if (Text1.Text().empty()) return name;
  if (!Check1(camera).Enabled()) return "No images in the time range checked";
  const auto [title, isNew] = titles_.try_emplace(camera);
  if (isNew) title->second = FirstTitle(system_.files, SourcePath(), checkedRange_.first, camera);
  const bool says = !title->second.empty() && title->second != name;
  return says ? name + ": " + title->second : name;
}

/// Cameras are looked up for a range once; a range that was widened since then may have more.
bool frmTrimbrook::EnsureAvailabilityChecked() {
  const bool isWider =
      Slider1.Value() < checkedRange_.first || Slider2.Value() > checkedRange_.last;
  return !isWider || CheckAvailability();
}

SelectionMode frmTrimbrook::GetCameraSelection() {
  std::uint32_t enabled = 0;
  std::uint32_t ticked = 0;
  for (int i = Check1.first(); i <= Check1.last(); ++i) {
    const std::uint32_t camera = 1U << i;
    if (Check1(i).Enabled()) enabled |= camera;
    if (Check1(i).Value()) ticked |= camera;
  }
  return ChooseCameras(enabled, ticked);
}
