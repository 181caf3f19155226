#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "resources/layout.h"
#include "resources/resource.h"
#include "resources/version.h"

namespace layout {
namespace {

// Lines of the two file frames, from the frame's top.
constexpr int kBoxHeight = 315;
constexpr int kButtonHeight = 405;
constexpr int kFrameWidth = 10755;

// Without the custom time range, with 16 cameras and without "Save To CD".
constexpr int kFrame3Height = 3195;
constexpr int kButtonsTop = 6300;
constexpr int kCameraFrameLeft = 2305;
constexpr int kCameraFrameWidth = 6150;
constexpr int kCameraButtonsLeft = 4130;
constexpr int kCheckButtonLeft = 4490;
constexpr int kSaveButtonLeft = 2800;
constexpr int kExitButtonLeft = 6515;

constexpr auto kFileRows = std::to_array({
    Row(IDC_frmTrimbrook_Frame1, Kind::kFrame, 0, "Source File", {120, 90, kFrameWidth, 1155}),
    Row(IDC_frmTrimbrook_Label1, Kind::kLabel, IDC_frmTrimbrook_Frame1,
        "File Name:", {165, 300, 1035, 240}),
    Row(IDC_frmTrimbrook_Text1, Kind::kTextBox, IDC_frmTrimbrook_Frame1, "",
        {1260, 270, 8745, kBoxHeight},
        {.styles = kReadOnly | kShowsEnd, .name = "Source file name"}),
    Row(IDC_frmTrimbrook_Command1, Kind::kPictureButton, IDC_frmTrimbrook_Frame1, "",
        {10095, 240, 495, 375},
        {.name = "Select source file",
         .toolTip = "Select Source File (Ctrl+O). F1 opens the guide.",
         .resource = IDI_OPEN}),
    Row(IDC_frmTrimbrook_Label2, Kind::kLabel, IDC_frmTrimbrook_Frame1,
        "Time Range:", {165, 720, 1080, 240}),
    Row(IDC_frmTrimbrook_Text2, Kind::kTextBox, IDC_frmTrimbrook_Frame1, "",
        {1260, 690, 5640, kBoxHeight}, {.styles = kReadOnly, .name = "Source time range"}),
    Row(IDC_frmTrimbrook_Label3, Kind::kLabel, IDC_frmTrimbrook_Frame1,
        "File Size:", {7155, 720, 870, 240}, {.styles = kRight}),
    Row(IDC_frmTrimbrook_Text3, Kind::kTextBox, IDC_frmTrimbrook_Frame1, "",
        {8085, 690, 1920, kBoxHeight},
        {.styles = kReadOnly, .name = "Source file size in megabytes"}),
    Row(IDC_frmTrimbrook_Label4, Kind::kLabel, IDC_frmTrimbrook_Frame1, "MB",
        {10095, 720, 495, 240}),

    Row(IDC_frmTrimbrook_Frame2, Kind::kFrame, 0, "Target File Info",
        {120, 1320, kFrameWidth, 1155}),
    Row(IDC_frmTrimbrook_Label8, Kind::kLabel, IDC_frmTrimbrook_Frame2,
        "File Name:", {165, 300, 1035, 240}),
    Row(IDC_frmTrimbrook_Text6, Kind::kTextBox, IDC_frmTrimbrook_Frame2, "",
        {1260, 270, 8745, kBoxHeight},
        {.styles = kReadOnly | kShowsEnd, .name = "Target file name"}),
    Row(IDC_frmTrimbrook_Command2, Kind::kPictureButton, IDC_frmTrimbrook_Frame2, "",
        {10095, 240, 495, 375},
        {.name = "Select target file",
         .toolTip = "Select Target File (Ctrl+T)",
         .resource = IDI_SAVE}),
    Row(IDC_frmTrimbrook_Label7, Kind::kLabel, IDC_frmTrimbrook_Frame2,
        "Time Range:", {165, 720, 1080, 240}),
    Row(IDC_frmTrimbrook_Text5, Kind::kTextBox, IDC_frmTrimbrook_Frame2, "",
        {1260, 690, 5640, kBoxHeight}, {.styles = kReadOnly, .name = "Target time range"}),
    Row(IDC_frmTrimbrook_Label6, Kind::kLabel, IDC_frmTrimbrook_Frame2,
        "File Size:", {7155, 720, 870, 240}, {.styles = kRight}),
    Row(IDC_frmTrimbrook_Text4, Kind::kTextBox, IDC_frmTrimbrook_Frame2, "",
        {8085, 690, 1920, kBoxHeight},
        {.styles = kReadOnly, .name = "Target file size in megabytes"}),
    Row(IDC_frmTrimbrook_Label5, Kind::kLabel, IDC_frmTrimbrook_Frame2, "MB",
        {10095, 720, 495, 240}),

    Row(IDC_frmTrimbrook_Label10, Kind::kLabel, 0, "Available Disk Space:", {6015, 2595, 2130, 240},
        {.styles = kRight}),
    Row(IDC_frmTrimbrook_Text7, Kind::kTextBox, 0, "", {8205, 2565, 1920, kBoxHeight},
        {.styles = kReadOnly, .name = "Available disk space in megabytes"}),
    Row(IDC_frmTrimbrook_Label9, Kind::kLabel, 0, "MB", {10215, 2595, 495, 240}),
});

constexpr auto kRangeRows = std::to_array({
    Row(IDC_frmTrimbrook_Frame3, Kind::kFrame, 0, "Target File Setup",
        {120, 2970, kFrameWidth, kFrame3Height}),
    Row(IDC_frmTrimbrook_Label12, Kind::kLabel, IDC_frmTrimbrook_Frame3,
        "Start Time:", {165, 345, 975, 240}),
    Row(IDC_frmTrimbrook_Slider1, Kind::kSlider, IDC_frmTrimbrook_Frame3, "",
        {1170, 270, 9450, 420}, {.styles = kDisabled, .name = "First block"}),
    Row(IDC_frmTrimbrook_Label11, Kind::kLabel, IDC_frmTrimbrook_Frame3,
        "End Time:", {165, 795, 975, 240}),
    Row(IDC_frmTrimbrook_Slider2, Kind::kSlider, IDC_frmTrimbrook_Frame3, "",
        {1170, 720, 9450, 420}, {.styles = kDisabled, .name = "Last block"}),
});

constexpr int kCameras = 32;
constexpr const char* kCameraNames[kCameras] = {
    "Camera 1",  "Camera 2",  "Camera 3",  "Camera 4",  "Camera 5",  "Camera 6",  "Camera 7",
    "Camera 8",  "Camera 9",  "Camera 10", "Camera 11", "Camera 12", "Camera 13", "Camera 14",
    "Camera 15", "Camera 16", "Camera 17", "Camera 18", "Camera 19", "Camera 20", "Camera 21",
    "Camera 22", "Camera 23", "Camera 24", "Camera 25", "Camera 26", "Camera 27", "Camera 28",
    "Camera 29", "Camera 30", "Camera 31", "Camera 32"};
constexpr int kNumberInName = 7;  // Where "Camera 17" has its number.

// Cameras stand in two rows of eight, each box before its number; the second sixteen cameras stand
// to the right of the first. Counted from 0.
constexpr int kTickWidth = 210;
constexpr int kCameraStep = 485;
constexpr int CameraLeft(int camera) {
  return 165 + camera % 8 * kCameraStep + camera / 16 * 3900;
}
constexpr int CameraTop(int camera) {
  return 330 + camera % 16 / 8 * 450;
}

constexpr Row CameraBox(int i) {
  return Row(IDC_frmTrimbrook_Check1 + i, Kind::kCheckBox, IDC_frmTrimbrook_Frame7, "",
             {CameraLeft(i), CameraTop(i), kTickWidth, 285},
             {.styles = kArrows, .name = kCameraNames[i]});
}

constexpr Row CameraNumber(int i) {
  return Row(IDC_frmTrimbrook_Label5 + 1 + i, Kind::kLabel, IDC_frmTrimbrook_Frame7,
             kCameraNames[i] + kNumberInName,
             {CameraLeft(i) + kTickWidth, CameraTop(i) + 30, 225, 240},
             {.buddy = IDC_frmTrimbrook_Check1 + i});
}

constexpr std::array<Row, std::size_t{2} * kCameras> CameraRows() {
  std::array<Row, std::size_t{2} * kCameras> rows{};
  auto row = rows.begin();
  for (int i = 0; i < kCameras; ++i) {
    *row++ = CameraBox(i);
    *row++ = CameraNumber(i);
  }
  return rows;
}
constexpr auto kCameraRows = CameraRows();

constexpr auto kCameraFrame = std::to_array({
    Row(IDC_frmTrimbrook_Frame7, Kind::kFrame, IDC_frmTrimbrook_Frame3, "Camera Setup",
        {kCameraFrameLeft, 1230, kCameraFrameWidth, 1275}),
});
constexpr auto kCameraButtons = std::to_array({
    Row(IDC_frmTrimbrook_cmdSet, Kind::kPictureButton, IDC_frmTrimbrook_Frame7, "",
        {kCameraButtonsLeft, 300, 300, 345},
        {.name = "Tick all cameras",
         .toolTip = "Tick All Cameras (Ctrl+A)",
         .resource = IDI_TICK_ALL}),
    Row(IDC_frmTrimbrook_cmdClear, Kind::kPictureButton, IDC_frmTrimbrook_Frame7, "",
        {kCameraButtonsLeft, 750, 300, 345},
        {.name = "Clear all cameras",
         .toolTip = "Clear All Cameras (Ctrl+Shift+A)",
         .resource = IDI_CLEAR_ALL}),
    Row(IDC_frmTrimbrook_Command8, Kind::kButton, IDC_frmTrimbrook_Frame7, "Check Availability",
        {kCheckButtonLeft, 300, 1545, 795}, {.toolTip = "Find the Cameras of the Time Range (F5)"}),
});

constexpr auto kCustomRangeRows = std::to_array({
    Row(IDC_frmTrimbrook_CheckCTRS, Kind::kCheckBox, IDC_frmTrimbrook_Frame3,
        "Set Custom Time Range", {165, 2670, 3000, 285},
        {.toolTip = "Type Start and End as Date and Time"}),
    Row(IDC_frmTrimbrook_Frame4, Kind::kFrame, IDC_frmTrimbrook_Frame3, "Custom Time Range Setup",
        {120, 3090, 10515, 3885}, {.styles = kHidden}),
});

// Hour, minute or second of an end of the custom range: a label, a box, and its arrows.
struct TimeField {
  const char* caption;
  int label;
  int box;
  const char* boxName;
  int arrows;
  const char* arrowsName;
};

// An end of the custom range: a day, and a time in three fields.
struct CustomEnd {
  const char* caption;
  int frame;
  int left;
  int calendar;
  const char* calendarName;
  std::array<TimeField, 3> fields;
};

constexpr std::array<Row, 11> CustomEndRows(const CustomEnd& end) {
  constexpr int kFirstFieldTop = 750;
  constexpr int kFieldStep = 555;
  std::array<Row, 11> rows{};
  auto row = rows.begin();
  *row++ = Row(end.frame, Kind::kFrame, IDC_frmTrimbrook_Frame4, end.caption,
               {end.left, 270, 5025, 2985});
  *row++ = Row(end.calendar, Kind::kMonthCalendar, end.frame, "", {150, 270, 3450, 2580},
               {.name = end.calendarName});
  int top = kFirstFieldTop;
  for (const TimeField& field : end.fields) {
    *row++ = Row(field.label, Kind::kLabel, end.frame, field.caption, {3780, top + 30, 255, 240});
    *row++ = Row(field.box, Kind::kTextBox, end.frame, "", {4050, top, 540, kBoxHeight},
                 {.styles = kNumber, .name = field.boxName});
    *row++ = Row(field.arrows, Kind::kUpDown, end.frame, "", {4590, top, 270, kBoxHeight},
                 {.styles = kNoTabStop, .name = field.arrowsName, .buddy = field.box});
    top += kFieldStep;
  }
  return rows;
}

constexpr auto kCustomStartRows =
    CustomEndRows({"Start Time",
                   IDC_frmTrimbrook_Frame6,
                   150,
                   IDC_frmTrimbrook_Calendar1,
                   "Start date",
                   {{{"H:", IDC_frmTrimbrook_Label13, IDC_frmTrimbrook_Text8, "Start hour",
                      IDC_frmTrimbrook_UpDownH, "Change start hour"},
                     {"M:", IDC_frmTrimbrook_Label14, IDC_frmTrimbrook_Text9, "Start minute",
                      IDC_frmTrimbrook_UpDownM, "Change start minute"},
                     {"S:", IDC_frmTrimbrook_Label15, IDC_frmTrimbrook_Text10, "Start second",
                      IDC_frmTrimbrook_UpDownS, "Change start second"}}}});
constexpr auto kCustomEndRows =
    CustomEndRows({"End Time",
                   IDC_frmTrimbrook_Frame5,
                   5340,
                   IDC_frmTrimbrook_Calendar2,
                   "End date",
                   {{{"H:", IDC_frmTrimbrook_Label16, IDC_frmTrimbrook_Text11, "End hour",
                      IDC_frmTrimbrook_UpDown1, "Change end hour"},
                     {"M:", IDC_frmTrimbrook_Label17, IDC_frmTrimbrook_Text12, "End minute",
                      IDC_frmTrimbrook_UpDown2, "Change end minute"},
                     {"S:", IDC_frmTrimbrook_Label18, IDC_frmTrimbrook_Text13, "End second",
                      IDC_frmTrimbrook_UpDown3, "Change end second"}}}});

constexpr auto kCustomButtons = std::to_array({
    Row(IDC_frmTrimbrook_Command5, Kind::kButton, IDC_frmTrimbrook_Frame4, "Confirm",
        {3420, 3360, 1680, 375}, {.toolTip = "Keep This Time Range (Enter)"}),
    Row(IDC_frmTrimbrook_Command6, Kind::kButton, IDC_frmTrimbrook_Frame4, "Reset",
        {5415, 3360, 1680, 375}, {.toolTip = "Back to the Whole Recording"}),
});

constexpr auto kButtonRows = std::to_array({
    Row(IDC_frmTrimbrook_Command3, Kind::kButton, 0, "Save File",
        {kSaveButtonLeft, kButtonsTop, 1680, kButtonHeight},
        {.toolTip = "Save the Chosen Part (Ctrl+S)"}),
    Row(IDC_frmTrimbrook_Command7, Kind::kButton, 0, "Save To CD",
        {4657, kButtonsTop, 1680, kButtonHeight}, {.styles = kHidden}),
    Row(IDC_frmTrimbrook_Command4, Kind::kButton, 0, "Exit",
        {kExitButtonLeft, kButtonsTop, 1680, kButtonHeight},
        {.toolTip = "Close the Program (Alt+F4)"}),
});

template <std::size_t... N>
constexpr auto Joined(const std::array<Row, N>&... parts) {
  std::array<Row, (N + ...)> all{};
  auto end = all.begin();
  ((end = std::copy(parts.begin(), parts.end(), end)), ...);
  return all;
}
constexpr auto kRows =
    Joined(kFileRows, kRangeRows, kCameraFrame, kCameraRows, kCameraButtons, kCustomRangeRows,
           kCustomStartRows, kCustomEndRows, kCustomButtons, kButtonRows);

constexpr auto CustomRange(bool shown, int frame3Height, int buttonsTop) {
  return std::to_array<Rearrangement>({
      {IDC_frmTrimbrook_Frame3, {.height = frame3Height}},
      {IDC_frmTrimbrook_Frame4, {}, shown},
      {IDC_frmTrimbrook_Command3, {.top = buttonsTop}},
      {IDC_frmTrimbrook_Command4, {.top = buttonsTop}},
      {IDC_frmTrimbrook_Command7, {.top = buttonsTop}},
  });
}
constexpr auto kCompactRows = CustomRange(false, kFrame3Height, kButtonsTop);
constexpr auto kExpandedRows = CustomRange(true, 7095, 10200);

constexpr std::size_t kCameraSetupRows = 4;

constexpr auto CameraSetup(bool many, int frameLeft, int frameWidth, int pictureButtonsLeft,
                           int checkButtonLeft) {
  std::array<Rearrangement, kCameraSetupRows + kCameras> rows = {{
      {IDC_frmTrimbrook_Frame7, {.left = frameLeft, .width = frameWidth}},
      {IDC_frmTrimbrook_cmdSet, {.left = pictureButtonsLeft}},
      {IDC_frmTrimbrook_cmdClear, {.left = pictureButtonsLeft}},
      {IDC_frmTrimbrook_Command8, {.left = checkButtonLeft}},
  }};
  auto row = rows.begin() + kCameraSetupRows;
  for (int i = kCameras / 2; i < kCameras; ++i) {
    *row++ = {IDC_frmTrimbrook_Check1 + i, {}, many};
    *row++ = {IDC_frmTrimbrook_Label5 + 1 + i, {}, many};
  }
  return rows;
}
constexpr auto kSixteenRows =
    CameraSetup(false, kCameraFrameLeft, kCameraFrameWidth, kCameraButtonsLeft, kCheckButtonLeft);
constexpr auto kThirtyTwoRows = CameraSetup(true, 390, 9975, 7980, 8340);

constexpr auto BottomButtons(bool withCd, int saveLeft, int exitLeft) {
  return std::to_array<Rearrangement>({
      {IDC_frmTrimbrook_Command3, {.left = saveLeft}},
      {IDC_frmTrimbrook_Command7, {}, withCd},
      {IDC_frmTrimbrook_Command4, {.left = exitLeft}},
  });
}
constexpr auto kWithoutCdRows = BottomButtons(false, kSaveButtonLeft, kExitButtonLeft);
constexpr auto kWithCdRows = BottomButtons(true, 2200, 7115);

}  // namespace

const std::span<const Rearrangement> kCompact = kCompactRows;
const std::span<const Rearrangement> kExpanded = kExpandedRows;
const std::span<const Rearrangement> kSixteenCameras = kSixteenRows;
const std::span<const Rearrangement> kThirtyTwoCameras = kThirtyTwoRows;
const std::span<const Rearrangement> kWithoutCd = kWithoutCdRows;
const std::span<const Rearrangement> kWithCd = kWithCdRows;

const Form kFrmTrimbrook = {"frmTrimbrook", TRIMBROOK_NAME_AND_VERSION, 10995, 6870, kRows, true,
                            IDI_TRIMBROOK};

}  // namespace layout
