// The main window's source file: its choice, its checks, and what it fills the window with.

#include <algorithm>
#include <cmath>

#include "capture/capture_time.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "forms/application.h"
#include "forms/dialogs.h"
#include "mainwindow/camera_choice.h"
#include "mainwindow/file_kind.h"
#include "mainwindow/frmTrimbrook.h"
#include "mainwindow/shown_hourglass.h"
#include "save/operations.h"

using namespace mdlFileProcessing;

namespace {

constexpr std::int32_t kFewestBlocks = 2;

/// Sets a flag while it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
};

}  // namespace

void frmTrimbrook::Command1_Click() {
  // Clearing the old source lets messages run, among them perhaps another click.
  if (choosingSource_) return;
  const Raised running(choosingSource_);
  ChooseSource();
}

void frmTrimbrook::ChooseSource() {
  if (!Text1.Text().empty()) {
    ClearSource();
    forms::DoEvents();
    if (IsClosed()) return;
  }
  const auto path = forms::AskOpenFile(
      window(), {"Select Source File", file_kind::SourceFilter(), system_.programFolder, ""});
  if (IsClosed() || !path) return;
  Slider1.SetValue(Slider1.Min());
  Slider2.SetValue(Slider2.Max());
  if (path->empty() || !MeasureSource(*path)) return;
  bln20D = file_kind::IsNameOf20D(*path);
  if (!ScanSource(*path)) {
    ShowMessage(save_text::kNotValid);
    return;
  }
  ShowSource(*path);
  Command8_Click();
}

void frmTrimbrook::ClearSource() {
  for (forms::TextBox* box : {&Text1, &Text2, &Text3, &Text4, &Text5, &Text6, &Text7})
    box->SetText("");
  Command6_Click();
  Slider1.SetEnabled(false);
  Slider2.SetEnabled(false);
}

/// Whether the file is a whole number of blocks, and enough of them; says so when it is not.
bool frmTrimbrook::MeasureSource(const std::string& path) {
  const SourceFile source(system_.files, path);
  const double size = FileSize64(system_.files, hSourceFile);
  lngBlockCount =
      static_cast<std::int32_t>(std::min<double>(size / format::kBlockSize, kMostBlocks));
  const double lngBlockRemainder =
      std::round(size - static_cast<double>(lngBlockCount) * format::kBlockSize);
  const bool valid = lngBlockRemainder == 0 && lngBlockCount >= kFewestBlocks;
  if (!valid) ShowMessage(save_text::kNotValid);
  return valid;
}

bool frmTrimbrook::ScanSource(const std::string& path) {
  const ShownHourglass hourglass(*this);
  return ScanSourceFile(system_.files, system_.dates, path) != 0;
}

void frmTrimbrook::ShowSource(const std::string& path) {
  Text1.SetText(path);
  strStartTime = system_.dates.Format(dtBlockStart[1]);
  strEndTime = system_.dates.Format(dtBlockEnd[dtBlockEnd.UpperBound()]);
  Text2.SetText(strStartTime + "----" + strEndTime);
  Text5.SetText(Text2.Text());
  Command6_Click();
  Text3.SetText(std::to_string(SizeMB({1, lngBlockCount})));
  Text4.SetText(Text3.Text());
  OpenSliders();
  const bool many = CameraCount() == 32;
  ArrangeCameras(many ? layout::kThirtyTwoCameras : layout::kSixteenCameras, CameraCount());
}

void frmTrimbrook::OpenSliders() {
  Slider1.SetEnabled(true);
  Slider1.SetMax(lngBlockCount);
  Slider2.SetEnabled(true);
  Slider2.SetMax(lngBlockCount);
  Slider2.SetValue(lngBlockCount);
  // A slider that stood at its place already has told no change, but its time is a new one.
  Slider1_Change();
  Slider2_Change();
}
