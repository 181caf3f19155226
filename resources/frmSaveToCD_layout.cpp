#include <array>

#include "resources/layout.h"
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
  return Row(IDC_frmSaveToCD_cmdNext + index, Kind::kButton, 0, caption,
             {left, kButtonTop, kButtonWidth, kButtonHeight}, {.styles = styles});
}

constexpr auto kRows = std::to_array({
    Row(IDC_frmSaveToCD_Label2, Kind::kLabel, 0, "Welcome to CD Creator Wizard!",
        {360, 120, 4575, 300}, {.font = &kHeadingFont}),
    Row(IDC_frmSaveToCD_Combo1, Kind::kComboBox, 0, "", {1380, 600, 2655, 315},
        {.styles = kHidden, .name = "CD recorder drive"}),
    Row(IDC_frmSaveToCD_Text1, Kind::kTextBox, 0, "", {780, 600, 3555, 285},
        {.styles = kHidden, .name = "File name"}),
    Row(IDC_frmSaveToCD_Check1, Kind::kCheckBox, 0, "Add Tessaview Files", {900, 1200, 2700, 285},
        {.styles = kHidden}),
    Row(IDC_frmSaveToCD_Option1, Kind::kOptionButton, 0, "Save Selected File Only",
        {900, 600, 2700, 285}, {.styles = kHidden | kGroup}),
    Row(IDC_frmSaveToCD_Option2, Kind::kOptionButton, 0, "Add Tessaview Files",
        {900, 900, 2700, 285}, {.styles = kHidden}),
    Row(IDC_frmSaveToCD_Label1, Kind::kLabel, 0, "", {480, 840, 4275, 1095}),
    Row(IDC_frmSaveToCD_Animation1, Kind::kAnimation, 0, "", {360, 690, 4425, 930},
        {.styles = kHidden, .name = "Copying"}),
    Row(IDC_frmSaveToCD_ProgressBar1, Kind::kProgressBar, 0, "", {360, 1785, 4425, 255},
        {.styles = kHidden, .name = "Progress"}),
    Row(IDC_frmSaveToCD_Label3, Kind::kLabel, 0, "", {360, 2100, 4425, 240},
        {.styles = kHidden | kCentered}),
    Row(IDC_frmSaveToCD_Frame1, Kind::kLine, 0, "", {135, 2400, 4875, 25}),
    PageButton(5, "< &Back", kBackLeft, kDisabled),
    PageButton(6, "< &Back", kBackLeft, kHidden),
    PageButton(7, "< &Back", kBackLeft, kHidden),
    PageButton(0, "&Next >", kNextLeft, kHidden | kDefault),
    PageButton(1, "&Next >", kNextLeft, kHidden),
    PageButton(2, "&Next >", kNextLeft, kHidden),
    PageButton(3, "&Next >", kNextLeft, kHidden),
    PageButton(4, "&Finish", kNextLeft, kHidden),
    Row(IDC_frmSaveToCD_cmdCancel, Kind::kButton, 0, "Cancel",
        {kCancelLeft, kButtonTop, kButtonWidth, kButtonHeight}, {.styles = kCancel}),
    Row(IDC_frmSaveToCD_Command1, Kind::kButton, 0, "", {120, kButtonTop, 255, kButtonHeight},
        {.styles = kHidden}),
    Row(IDC_frmSaveToCD_Command2, Kind::kButton, 0, "", {420, kButtonTop, 255, kButtonHeight},
        {.styles = kHidden}),
    Row(IDC_frmSaveToCD_Timer1, Kind::kTimer, 0, "", {}, {.styles = kDisabled, .interval = 1000}),
    Row(IDC_frmSaveToCD_Timer2, Kind::kTimer, 0, "", {}, {.styles = kDisabled, .interval = 100}),
});

}  // namespace

const Form kFrmSaveToCD = {"frmSaveToCD", TRIMBROOK_NAME_AND_VERSION, 5145, 3195, kRows, false,
                           IDI_TRIMBROOK};

}  // namespace layout
