// The main window's source file: its choice, its checks, and what it fills the window with.

#include "capture/capture_time.h"
#include "capture/format.h"
#include "capture/mdlFileProcessing.h"
#include "capture/source_file.h"
#include "forms/application.h"
#include "forms/dialogs.h"
#include "mainwindow/file_kind.h"
#include "mainwindow/frmTrimbrook.h"
#include "platform/scoped_flag.h"
#include "save/camera_choice.h"
#include "save/save_messages.h"

using namespace mdlFileProcessing;

namespace {

constexpr char kNoSource[] = "Please select the source file first!";

}  // namespace

void frmTrimbrook::ChooseSource() {
  // Clearing the old source lets messages run, among them perhaps another click.
  if (choosingSource_) return;
  const ScopedFlag choosing(choosingSource_);
  CloseSource();
  if (IsClosed()) return;
  const auto path = forms::AskOpenFile(
      window(), {"Select Source File", file_kind::SourceFilter(), system_.programFolder, "",
                 file_kind::NumberOfFilter(last20D_)});
  if (!IsClosed() && path) OpenSource(*path);
}

void frmTrimbrook::OpenHandedFile(const std::string& path) {
  Dispatch([&] {
    if (choosingSource_) return;
    const ScopedFlag choosing(choosingSource_);
    CloseSource();
    if (!IsClosed()) OpenSource(path);
  });
}

void frmTrimbrook::CloseSource() {
  if (Text1.Text().empty()) return;
  for (forms::TextBox* box : {&Text1, &Text2, &Text3, &Text4, &Text5, &Text6, &Text7})
    box->SetText("");
  ResetRange();
  Slider1.SetEnabled(false);
  Slider2.SetEnabled(false);
  ShowAllowedTimes();
  forms::DoEvents();
}

void frmTrimbrook::OpenSource(const std::string& path) {
  Slider1.SetValue(Slider1.Min());
  Slider2.SetValue(Slider2.Max());
  if (path.empty()) return;
  bln20D = format::IsNameOf20D(path);
  if (!MeasureSource(path)) return;
  last20D_ = bln20D;
  if (!ReadSource(path)) return;
  ShowSource(path);
  ShowAvailability({1, lngBlockCount});
}

/// Whether the file ends as a recording does; says so when it does not.
bool frmTrimbrook::MeasureSource(const std::string& path) {
  const SourceFile source(system_.files, path);
  if (!source.IsOpen()) return AcceptReading({ReadEnd::kFailed, source.Reason()});
  return AcceptReading({source.IsRecording() ? ReadEnd::kDone : ReadEnd::kNotValid});
}

Reading frmTrimbrook::StartReading(int passes) {
  return Reading(*this, system_.clock, Text2,
                 {&Command1, &Frame2, &Frame3, &Command3, &Command7, &Command4}, passes);
}

/// Reads the source's index and cameras; false when there is none then.
bool frmTrimbrook::ReadSource(const std::string& path) {
  const auto read = [&] {
    Reading reading = StartReading(2);
    Pacer scan = reading.NextPass();
    ReadAnswer scanned = ScanSourceFile(system_.files, path, &scan);
    if (scanned.end != ReadEnd::kDone) return scanned;
    Pacer check = reading.NextPass();
    return mdlFileProcessing::CheckAvailability(system_.files, path, 1, lngBlockCount, &check);
  };
  return AcceptReading(read());
}

/// Whether a source was read as it should; tells why not, unless the user has stopped it.
bool frmTrimbrook::AcceptReading(const ReadAnswer& read) {
  if (read.end == ReadEnd::kNotValid) ShowMessage(save_text::kNotValid);
  if (read.end == ReadEnd::kFailed) ShowMessage(MessageOfReading(read.why), forms::Tone::kError);
  return read.end == ReadEnd::kDone;
}

void frmTrimbrook::ShowSource(const std::string& path) {
  Text1.SetText(path);
  start_.strTime = SecondsToDateText(system_.dates, lngBlockStart[1]);
  end_.strTime = SecondsToDateText(system_.dates, lngBlockEnd[lngBlockCount]);
  Text2.SetText(start_.strTime + "----" + end_.strTime);
  Text5.SetText(Text2.Text());
  ResetRange();
  ShowAllowedTimes();
  Text3.SetText(std::to_string(SizeMB({1, lngBlockCount})));
  Text4.SetText(Text3.Text());
  OpenSliders();
  Apply(lngCameraCount == 32 ? layout::kThirtyTwoCameras : layout::kSixteenCameras, *this);
  // What is left to choose in any case.
  Command2.SetFocus();
}

void frmTrimbrook::OpenSliders() {
  Slider1.SetEnabled(true);
  Slider1.SetMax(lngBlockCount);
  Slider2.SetEnabled(true);
  Slider2.SetMax(lngBlockCount);
  Slider2.SetValue(lngBlockCount);
  // A slider that stood at its place already has told no change, but its time is a new one.
  Slider_Change(start_);
  Slider_Change(end_);
}

/// Whether a source is open; asks for one when none is.
bool frmTrimbrook::RequireSource() {
  const bool isOpen = !Text1.Text().empty();
  if (!isOpen) ShowMessage(kNoSource);
  return isOpen;
}
