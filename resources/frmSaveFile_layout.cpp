#include "resources/layout.h"
#include "resources/resource.h"
#include "resources/version.h"

namespace layout {
namespace {

constexpr int kStartMilliseconds = 388;
constexpr Font kStatusFont = {"Times New Roman", true, 120, false};

constexpr Row kRows[] = {
    Row(IDC_frmSaveFile_Timer1, Kind::kTimer, 0, "", {},
        {.styles = kDisabled, .interval = kStartMilliseconds}),
    Row(IDC_frmSaveFile_Frame1, Kind::kFrame, 0, "", {120, 45, 5400, 2235}),
    Row(IDC_frmSaveFile_Animation1, Kind::kAnimation, IDC_frmSaveFile_Frame1, "",
        {180, 255, 5040, 930}, {.styles = kHidden, .name = "Copying"}),
    Row(IDC_frmSaveFile_Label2, Kind::kLabel, IDC_frmSaveFile_Frame1, "File is being saved ...",
        {180, 1260, 5040, 330}, {.font = &kStatusFont}),
    Row(IDC_frmSaveFile_ProgressBar1, Kind::kProgressBar, IDC_frmSaveFile_Frame1, "",
        {180, 1695, 4380, 300}, {.styles = kHidden, .name = "Progress"}),
    Row(IDC_frmSaveFile_Label3, Kind::kLabel, IDC_frmSaveFile_Frame1, "", {4635, 1725, 585, 240},
        {.styles = kHidden | kRight}),
    Row(IDC_frmSaveFile_cmdOpen, Kind::kButton, 0, "Open", {120, 2430, 1590, 405}),
    Row(IDC_frmSaveFile_cmdOpenFolder, Kind::kButton, 0, "Open Folder", {1845, 2430, 1590, 405}),
    Row(IDC_frmSaveFile_cmdCancel, Kind::kButton, 0, "Cancel", {3930, 2430, 1590, 405},
        {.styles = kCancel}),
};

}  // namespace

const Form kFrmSaveFile = {"frmSaveFile", TRIMBROOK_NAME_AND_VERSION, 5640, 2985, kRows, true,
                           IDI_TRIMBROOK};

}  // namespace layout
