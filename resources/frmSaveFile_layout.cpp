#include "resources/layouts.h"
#include "resources/resource.h"
#include "resources/version.h"

namespace layout {
namespace {

constexpr int kStartMilliseconds = 388;
constexpr Font kStatusFont = {"Times New Roman", true, 120, false};

constexpr Row kRows[] = {
    {IDC_frmSaveFile_Timer1, Kind::kTimer, 0, "", 0, 0, 0, 0, kDisabled, nullptr, nullptr, 0, 0,
     kStartMilliseconds},
    {IDC_frmSaveFile_Frame1, Kind::kFrame, 0, "", 120, 45, 5400, 2235},
    {IDC_frmSaveFile_Animation1, Kind::kAnimation, IDC_frmSaveFile_Frame1, "", 180, 255, 5040, 930,
     kHidden, "Copying"},
    {IDC_frmSaveFile_Label2, Kind::kLabel, IDC_frmSaveFile_Frame1, "File is being saved ...", 180,
     1260, 5040, 330, kPlain, nullptr, nullptr, 0, 0, 0, &kStatusFont},
    {IDC_frmSaveFile_ProgressBar1, Kind::kProgressBar, IDC_frmSaveFile_Frame1, "", 180, 1695, 4380,
     300, kHidden, "Progress"},
    {IDC_frmSaveFile_Label3, Kind::kLabel, IDC_frmSaveFile_Frame1, "", 4635, 1725, 585, 240,
     kHidden | kRight},
    {IDC_frmSaveFile_cmdOpen, Kind::kButton, 0, "Open", 120, 2430, 1590, 405},
    {IDC_frmSaveFile_cmdOpenFolder, Kind::kButton, 0, "Open Folder", 1845, 2430, 1590, 405},
    {IDC_frmSaveFile_cmdCancel, Kind::kButton, 0, "Cancel", 3930, 2430, 1590, 405, kCancel},
};

}  // namespace

const Form kFrmSaveFile = {"frmSaveFile", TRIMBROOK_NAME_AND_VERSION, 5640, 2985, kRows, true,
                           IDI_TRIMBROOK};

}  // namespace layout
