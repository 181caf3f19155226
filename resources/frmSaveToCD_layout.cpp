#include <array>

#include "resources/layouts.h"
#include "resources/resource.h"
#include "resources/version.h"

namespace layout {
namespace {

constexpr Font kHeadingFont = {"Times New Roman", true, 113, true};

constexpr int kButtonTop = 2658;
constexpr int kButtonWidth = 988;
constexpr int kButtonHeight = 358;
constexpr int kNextLeft = 2640;
constexpr int kBackLeft = 1650;
constexpr int kCancelLeft = 3840;

// A page button; those of different pages share their places.
constexpr Row PageButton(int index, const char* caption, int left, std::uint32_t styles) {
  return {IDC_frmSaveToCD_cmdNext + index,
          Kind::kButton,
          0,
          caption,
          left,
          kButtonTop,
          kButtonWidth,
          kButtonHeight,
          styles};
}

constexpr auto kRows = std::to_array<Row>({
    {IDC_frmSaveToCD_Label2, Kind::kLabel, 0, "Welcome to CD Creator Wizard!", 360, 120, 4575, 300,
     kPlain, nullptr, nullptr, 0, 0, 0, &kHeadingFont},
    {IDC_frmSaveToCD_Combo1, Kind::kComboBox, 0, "", 1380, 600, 2655, 315, kHidden,
     "CD recorder drive"},
    {IDC_frmSaveToCD_Text1, Kind::kTextBox, 0, "", 780, 600, 3555, 285, kHidden, "File name"},
    {IDC_frmSaveToCD_Check1, Kind::kCheckBox, 0, "Add Tessaview Files", 900, 1200, 2700, 285,
     kHidden},
    {IDC_frmSaveToCD_Option1, Kind::kOptionButton, 0, "Save Selected File Only", 900, 600, 2700,
     285, kHidden | kGroup},
    {IDC_frmSaveToCD_Option2, Kind::kOptionButton, 0, "Add Tessaview Files", 900, 900, 2700, 285,
     kHidden},
    {IDC_frmSaveToCD_Label1, Kind::kLabel, 0, "", 480, 840, 4275, 1095},
    {IDC_frmSaveToCD_Animation1, Kind::kAnimation, 0, "", 360, 690, 4425, 930, kHidden, "Copying"},
    {IDC_frmSaveToCD_ProgressBar1, Kind::kProgressBar, 0, "", 360, 1785, 4425, 255, kHidden,
     "Progress"},
    {IDC_frmSaveToCD_Label3, Kind::kLabel, 0, "", 360, 2100, 4425, 240, kHidden | kCentered},
    {IDC_frmSaveToCD_Frame1, Kind::kLine, 0, "", 135, 2400, 4875, 25},
    PageButton(5, "< &Back", kBackLeft, kDisabled),
    PageButton(6, "< &Back", kBackLeft, kHidden),
    PageButton(7, "< &Back", kBackLeft, kHidden),
    PageButton(0, "&Next >", kNextLeft, kHidden | kDefault),
    PageButton(1, "&Next >", kNextLeft, kHidden),
    PageButton(2, "&Next >", kNextLeft, kHidden),
    PageButton(3, "&Next >", kNextLeft, kHidden),
    PageButton(4, "&Finish", kNextLeft, kHidden),
    {IDC_frmSaveToCD_cmdCancel, Kind::kButton, 0, "Cancel", kCancelLeft, kButtonTop, kButtonWidth,
     kButtonHeight, kCancel},
    {IDC_frmSaveToCD_Command1, Kind::kButton, 0, "", 120, kButtonTop, 255, kButtonHeight, kHidden},
    {IDC_frmSaveToCD_Command2, Kind::kButton, 0, "", 420, kButtonTop, 255, kButtonHeight, kHidden},
    {IDC_frmSaveToCD_Timer1, Kind::kTimer, 0, "", 0, 0, 0, 0, kDisabled, nullptr, nullptr, 0, 0,
     1000},
    {IDC_frmSaveToCD_Timer2, Kind::kTimer, 0, "", 0, 0, 0, 0, kDisabled, nullptr, nullptr, 0, 0,
     100},
});

}  // namespace

const Form kFrmSaveToCD = {"frmSaveToCD", TRIMBROOK_NAME_AND_VERSION, 5145, 3195, kRows, false,
                           IDI_TRIMBROOK};

}  // namespace layout
