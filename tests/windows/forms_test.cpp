// The forms layer by windows of its own, in this process.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "cdwizard/wizard_page.h"
#include "forms/application.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "forms/text.h"
#include "resources/layouts.h"
#include "resources/resource.h"

namespace forms {
namespace {

using layout::Kind;

enum Id {
  kFrameId = 1,
  kInnerId,
  kBoxId,
  kUpDownId,
  kSliderId,
  kOkId,
  kOtherId,
  kTickId,
  kNumberId,
  kCalendarId,
  kWalkedId = 100
};

constexpr layout::Row Walked(int index, int left, int top) {
  return {kWalkedId + index, Kind::kCheckBox, 0, "", left, top, 225, 285, layout::kArrows};
}

constexpr auto kRows = std::to_array<layout::Row>({
    {kFrameId, Kind::kFrame, 0, "Frame", 150, 150, 4500, 1500},
    {kInnerId, Kind::kFrame, kFrameId, "Inner", 150, 300, 3000, 900},
    {kBoxId, Kind::kTextBox, kInnerId, "", 150, 300, 750, 300, layout::kNumber, "Hour"},
    {kUpDownId, Kind::kUpDown, kInnerId, "", 900, 300, 270, 300, layout::kNoTabStop, nullptr,
     nullptr, 0, kBoxId},
    {kSliderId, Kind::kSlider, 0, "", 150, 1800, 4500, 450, layout::kPlain, "Block"},
    {kOkId, Kind::kButton, 0, "OK", 150, 2400, 1500, 375, layout::kDefault},
    {kOtherId, Kind::kButton, 0, "Other", 1800, 2400, 1500, 375},
    {kTickId, Kind::kCheckBox, 0, "", 3600, 2400, 225, 285},
    {kNumberId, Kind::kLabel, 0, "1", 3900, 2400, 225, 240, layout::kPlain, nullptr, nullptr, 0,
     kTickId},
    Walked(0, 150, 3000),
    Walked(1, 600, 3000),
    Walked(2, 150, 3450),
    Walked(3, 600, 3450),
    {kCalendarId, Kind::kMonthCalendar, 0, "", 1200, 3000, 3450, 2580},
});
constexpr layout::Form kTable = {"frmTest", "Test window", 4800, 6000, kRows};

class TestForm : public Form {
 public:
  TestForm() : Form(kTable) {}
  // A window without an owner tells the program to quit when it goes.
  ~TestForm() override {
    MSG message;
    PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  }

  Frame Frame1{*this, kFrameId}, Inner{*this, kInnerId};
  TextBox Box{*this, kBoxId};
  Slider Slider1{*this, kSliderId};
  Button Ok{*this, kOkId};
  Button Other{*this, kOtherId};
  CheckBox Tick{*this, kTickId};
  Label Number{*this, kNumberId};
  UpDown Counter{*this, kUpDownId};
  MonthCalendar Calendar{*this, kCalendarId};
  ControlArray<CheckBox> Boxes{*this, kWalkedId, 0, 3};
  std::string told;  ///< What the calendar has told, a letter each.

 private:
  void OnLoad() override {
    Bind({{Calendar, Event::kClick, [this] { told += 'c'; }},
          {Calendar, Event::kMonthChange, [this] { told += 'm'; }},
          {Calendar, Event::kYearChange, [this] { told += 'y'; }}});
  }
};

/// A window that is closed by its own handler.
class ModalForm : public Form {
 public:
  ModalForm() : Form(kTable) {
    Bind({{Ok, Event::kClick, [this] { CloseItself(); }}});
  }

  Button Ok{*this, kOkId};
  HWND inFront = nullptr;  ///< When it had hidden, before its handler has returned.
  bool ownerUsable = false;

 private:
  void OnLoad() override { PostMessageW(Ok.window(), BM_CLICK, 0, 0); }
  void CloseItself() {
    const HWND owner = GetWindow(window(), GW_OWNER);
    Unload();
    inFront = GetActiveWindow();
    ownerUsable = IsWindowEnabled(owner) != FALSE;
  }
};

/// Gives the system's text another size while it lives.
class TextSize {
 public:
  explicit TextSize(int percent) {
    former_.cbSize = sizeof former_;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof former_, &former_, 0);
    NONCLIENTMETRICSW larger = former_;
    larger.lfMessageFont.lfHeight = MulDiv(former_.lfMessageFont.lfHeight, percent, 100);
    Set(larger);
  }
  ~TextSize() { Set(former_); }
  TextSize(const TextSize&) = delete;
  TextSize& operator=(const TextSize&) = delete;

 private:
  static void Set(NONCLIENTMETRICSW& metrics) {
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  }
  NONCLIENTMETRICSW former_ = {};
};

using Controls = std::vector<const Control*>;

class FormsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { StartApplication(); }
  void SetUp() override { form.Show(); }

  RECT PlaceOf(const Control& control) {
    RECT place = {};
    GetWindowRect(control.window(), &place);
    MapWindowPoints(nullptr, form.window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }
  bool WindowEnabled(const Control& control) { return IsWindowEnabled(control.window()); }
  bool WindowVisible(const Control& control) { return IsWindowVisible(control.window()); }

  TestForm form;
};

TEST_F(FormsTest, PlacesControlsRelativeToTheirFramesAtAnyDpi) {
  const struct {
    UINT dpi;
    RECT box;  // (150 + 150 + 150, 150 + 300 + 300) twips, 750 x 300.
  } cases[] = {{96, {30, 50, 80, 70}}, {144, {45, 75, 120, 105}}, {192, {60, 100, 160, 140}}};
  for (const auto& [dpi, expected] : cases) {
    const RECT suggested = {10, 10, 500, 500};
    SendMessageW(form.window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                 reinterpret_cast<LPARAM>(&suggested));
    const RECT place = PlaceOf(form.Box);
    EXPECT_TRUE(EqualRect(&place, &expected)) << dpi;
    RECT client = {};
    GetClientRect(form.window(), &client);
    EXPECT_GE(client.bottom, MulDiv(3000, static_cast<int>(dpi), 1440));
  }
}

TEST_F(FormsTest, ShowsAndEnablesAControlOnlyWhileItsFramesAre) {
  form.Frame1.SetVisible(false);
  EXPECT_FALSE(WindowVisible(form.Box) || WindowEnabled(form.Box));
  EXPECT_TRUE(form.Box.Visible() && form.Box.Enabled());
  form.Inner.SetVisible(false);
  form.Frame1.SetVisible(true);
  EXPECT_FALSE(WindowVisible(form.Box) || WindowEnabled(form.Box));
  form.Inner.SetVisible(true);
  EXPECT_TRUE(WindowVisible(form.Box) && WindowEnabled(form.Box));
  form.Frame1.SetEnabled(false);
  EXPECT_TRUE(WindowVisible(form.Box) && !WindowEnabled(form.Box));
}

TEST_F(FormsTest, LeavesTheFocusOnNothingThatGoes) {
  form.Box.SetFocus();
  form.Frame1.SetVisible(false);
  EXPECT_TRUE(form.Slider1.HasFocus());
  form.Slider1.SetEnabled(false);
  EXPECT_TRUE(form.Ok.HasFocus());
}

TEST_F(FormsTest, ShowsTheFocusOfABoxWithoutACaption) {
  const auto pixels = [&] {
    UpdateWindow(form.Tick.window());
    const HDC screen = GetDC(form.Tick.window());
    std::vector<COLORREF> colors;
    for (int i = 0; i < 15 * 19; ++i) colors.push_back(GetPixel(screen, i % 15, i / 15));
    ReleaseDC(form.Tick.window(), screen);
    return colors;
  };
  const auto before = pixels();
  form.Tick.SetFocus();
  EXPECT_NE(pixels(), before);
  form.Ok.SetFocus();
  EXPECT_EQ(pixels(), before);
}

TEST_F(FormsTest, ALabelIsPartOfItsBox) {
  SendMessageW(form.Number.window(), WM_LBUTTONDOWN, 0, 0);
  SendMessageW(form.Number.window(), WM_LBUTTONUP, 0, 0);
  EXPECT_TRUE(form.Tick.Value() && form.Tick.HasFocus());
  form.Tick.SetEnabled(false);
  EXPECT_FALSE(WindowEnabled(form.Number));
  EXPECT_TRUE(WindowVisible(form.Number));
}

TEST_F(FormsTest, ArrowsWalkBoxesThatTabPassesAsOne) {
  const auto stops = [&] {
    std::string indices;
    for (int i = 0; i <= form.Boxes.last(); ++i)
      if (GetWindowLongW(form.Boxes(i).window(), GWL_STYLE) & WS_TABSTOP)
        indices += std::to_string(i);
    return indices;
  };
  EXPECT_EQ(stops(), "0");
  form.Boxes(2).SetEnabled(false);
  form.Boxes(0).SetFocus();
  const struct {
    WPARAM key;
    int focused;
  } cases[] = {{VK_RIGHT, 1}, {VK_DOWN, 3},  {VK_DOWN, 3}, {VK_LEFT, 1}, {VK_LEFT, 0},
               {VK_DOWN, 3},  {VK_RIGHT, 0}, {VK_LEFT, 3}, {VK_UP, 1},   {VK_UP, 1}};
  for (const auto& [key, focused] : cases) {
    PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
    DoEvents();
    EXPECT_TRUE(form.Boxes(focused).HasFocus()) << key;
    EXPECT_EQ(stops(), std::to_string(focused));
  }
  form.Boxes(1).SetEnabled(false);
  EXPECT_EQ(stops(), "0");
}

TEST_F(FormsTest, OnlyTheFocusedButtonLooksLikeTheDefaultOne) {
  form.Other.SetFocus();
  // As the system does when a dialog has gone, or the mouse has pressed.
  for (const Control* focused : Controls{&form.Ok, &form.Other, &form.Slider1}) {
    SetFocus(focused->window());
    for (const Button* button : {&form.Ok, &form.Other})
      EXPECT_EQ((GetWindowLongW(button->window(), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON,
                button == focused || (focused == &form.Slider1 && button == &form.Ok));
  }
}

TEST_F(FormsTest, TheWheelMovesNothingThatHasNotTheFocus) {
  form.Counter.SetValue(7);
  form.Slider1.SetValue(50);
  const Day day = form.Calendar.Value();
  form.Ok.SetFocus();
  for (const Control* control : Controls{&form.Slider1, &form.Box, &form.Calendar}) {
    RECT place = {};
    GetWindowRect(control->window(), &place);
    PostMessageW(control->window(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA),
                 MAKELPARAM(place.left + 5, place.top + 5));
    DoEvents();
  }
  EXPECT_EQ(form.Counter.Value(), 7);
  EXPECT_EQ(form.Slider1.Value(), 50);
  EXPECT_EQ(form.Calendar.Value(), day);
}

TEST_F(FormsTest, ACalendarTellsADayOnceAndAlwaysHasTheOneItShows) {
  const auto notify = [&](UINT code) {
    NMSELCHANGE notice = {};
    notice.nmhdr = {form.Calendar.window(), kCalendarId, code};
    SendMessageW(form.window(), WM_NOTIFY, kCalendarId, reinterpret_cast<LPARAM>(&notice));
  };
  const struct {
    Day shown;
    UINT notice;
    const char* told;
  } cases[] = {{{2003, 1, 31}, MCN_SELCHANGE, ""},  {{2003, 1, 31}, MCN_SELECT, ""},
               {{2003, 1, 12}, MCN_SELCHANGE, "c"}, {{2003, 2, 12}, MCN_SELCHANGE, "m"},
               {{2003, 3, 1}, MCN_SELECT, "c"},     {{2013, 3, 1}, MCN_SELCHANGE, "y"}};
  form.Calendar.SetValue({2003, 1, 31});
  for (const auto& [shown, notice, told] : cases) {
    form.told.clear();
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(shown.year);
    time.wMonth = static_cast<WORD>(shown.month);
    time.wDay = static_cast<WORD>(shown.day);
    SendMessageW(form.Calendar.window(), MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
    EXPECT_EQ(form.Calendar.Value(), shown);
    for (int repeated = 0; repeated < 2; ++repeated) notify(notice);
    EXPECT_EQ(form.told, told) << shown.day;
  }
}

TEST_F(FormsTest, AModalWindowLeavesItsOwnerInFront) {
  form.Slider1.SetFocus();
  ModalForm modal;
  modal.ShowModal(form);
  EXPECT_EQ(modal.inFront, form.window());
  EXPECT_FALSE(modal.ownerUsable);
  EXPECT_TRUE(IsWindowEnabled(form.window()));
  EXPECT_TRUE(form.Slider1.HasFocus());
}

/// Room that a control's own font takes for a text in one line, or in lines of a width.
SIZE RoomFor(const Control& control, const std::string& text, int width = 0) {
  RECT room = {0, 0, width, 0};
  const HDC screen = GetDC(control.window());
  SelectObject(screen, reinterpret_cast<HFONT>(SendMessageW(control.window(), WM_GETFONT, 0, 0)));
  DrawTextW(screen, Wide(text).c_str(), -1, &room,
            static_cast<UINT>(DT_CALCRECT | DT_NOPREFIX | (width ? DT_WORDBREAK : DT_SINGLELINE)));
  ReleaseDC(control.window(), screen);
  return {room.right, room.bottom};
}

class TextSizes : public testing::TestWithParam<int> {
 protected:
  static void SetUpTestSuite() { StartApplication(); }
  const TextSize size_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Percent, TextSizes, testing::Values(100, 150, 225));

TEST_P(TextSizes, NoCaptionIsCut) {
  constexpr LONG kTick = 18;  // Pixels that a box takes before its caption.
  for (const layout::Form* table :
       {&layout::kFrmTrimbrook, &layout::kFrmSaveFile, &layout::kFrmSaveToCD}) {
    Form form(*table);
    ASSERT_TRUE(form.Load());
    for (const layout::Row& row : table->rows) {
      if (row.kind != Kind::kLabel && row.kind != Kind::kButton && row.kind != Kind::kCheckBox)
        continue;
      const Control& control = form.ControlById(row.id);
      RECT client = {};
      GetClientRect(control.window(), &client);
      SIZE room = RoomFor(control, row.caption);
      if (row.kind == Kind::kCheckBox && *row.caption) room.cx += kTick;
      EXPECT_TRUE(room.cx <= client.right && room.cy <= client.bottom + 1) << row.caption;
    }
  }
}

TEST_P(TextSizes, NoInstructionsOfTheWizardAreCut) {
  Form form(layout::kFrmSaveToCD);
  ASSERT_TRUE(form.Load());
  Control& label = form.ControlById(IDC_frmSaveToCD_Label1);
  for (const bool dragToDisc : {false, true})
    for (const Page page : {Page::kWelcome, Page::kLookingUp, Page::kDrive, Page::kFileName,
                            Page::kCopying, Page::kReselect, Page::kEject, Page::kDone}) {
      const PageLook look = LookOf(page, dragToDisc);
      label.SetHeight(look.instructionsHeight);
      RECT client = {};
      GetClientRect(label.window(), &client);
      EXPECT_LE(RoomFor(label, look.instructions, client.right).cy, client.bottom)
          << look.instructions;
    }
}

TEST_F(FormsTest, GivesATipToolItsNewestText) {
  form.Slider1.SetToolTip("first");
  form.Slider1.SetToolTip("second");
  wchar_t text[100] = {};
  TTTOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.hwnd = form.window();
  tool.uId = reinterpret_cast<UINT_PTR>(form.Slider1.window());
  tool.lpszText = text;
  HWND tips = nullptr;
  while (*text == 0 && (tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)))
    if (GetWindowThreadProcessId(tips, nullptr) == GetCurrentThreadId())
      SendMessageW(tips, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
  EXPECT_STREQ(text, L"second");
}

}  // namespace
}  // namespace forms
