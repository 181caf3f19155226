#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "forms/application.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "forms/win32.h"
#include "resources/layout.h"
#include "resources/resource.h"

/// The forms layer by the program's own tables, in the test's process.
namespace forms {

/// The main window's controls with the custom time range, and nothing behind them.
class TestForm : public Form {
 public:
  TestForm() : Form(layout::kFrmTrimbrook) {
    for (int i = 0; i <= Cameras.last(); ++i)
      Cameras(i).SetToolTipSource([this, i] {
        asked = i;
        return std::to_string(i);
      });
  }
  // A window without an owner tells the program to quit when it goes.
  ~TestForm() override {
    MSG message;
    PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  }

  Frame Range{*this, IDC_frmTrimbrook_Frame4}, RangeStart{*this, IDC_frmTrimbrook_Frame6};
  TextBox Hour{*this, IDC_frmTrimbrook_Text8};
  UpDown Counter{*this, IDC_frmTrimbrook_UpDownH};
  MonthCalendar Calendar{*this, IDC_frmTrimbrook_Calendar1};
  Slider Slider1{*this, IDC_frmTrimbrook_Slider1};
  ControlArray<CheckBox> Cameras{*this, IDC_frmTrimbrook_Check1, 0, 31};
  Label Number{*this, IDC_frmTrimbrook_Label5 + 1};
  Button Save{*this, IDC_frmTrimbrook_Command3}, Exit{*this, IDC_frmTrimbrook_Command4};
  std::string told;  ///< What the calendar has told, a letter each.
  int asked = -1;    ///< The camera whose tip was asked for last.

 private:
  void OnLoad() override {
    layout::Apply(layout::kExpanded, *this);
    layout::Apply(layout::kSixteenCameras, *this);
    Slider1.SetEnabled(true);
    Bind({{Calendar, Event::kClick, [this] { told += 'c'; }},
          {Calendar, Event::kMonthChange, [this] { told += 'm'; }},
          {Calendar, Event::kYearChange, [this] { told += 'y'; }}});
  }
};

/// Moves a form to a display of this resolution.
inline void ChangeDpi(const Form& form, int dpi) {
  const RECT suggested = {10, 10, 500, 500};
  SendMessageW(form.window(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
               reinterpret_cast<LPARAM>(&suggested));
}

using Controls = std::vector<const Control*>;

class FormsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { StartApplication(); }
  void SetUp() override { form.Show(); }

  bool WindowEnabled(const Control& control) { return IsWindowEnabled(control.window()); }
  bool WindowVisible(const Control& control) { return IsWindowVisible(control.window()); }

  TestForm form;
};

}  // namespace forms
