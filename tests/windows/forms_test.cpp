// The forms layer by windows of its own, in this process.
#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "forms/application.h"
#include "forms/controls.h"
#include "forms/dialogs.h"
#include "forms/form.h"

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
  kCancelId,
  kTimerId,
  kTickId,
  kLowId
};

constexpr auto kRows = std::to_array<layout::Row>({
    {kFrameId, Kind::kFrame, 0, "Frame", 150, 150, 4500, 1500},
    {kInnerId, Kind::kFrame, kFrameId, "Inner", 150, 300, 3000, 900},
    {kBoxId, Kind::kTextBox, kInnerId, "", 150, 300, 750, 300, layout::kNumber, "Hour"},
    {kUpDownId, Kind::kUpDown, kInnerId, "", 900, 300, 270, 300, layout::kNoTabStop, nullptr,
     nullptr, 0, kBoxId},
    {kSliderId, Kind::kSlider, 0, "", 150, 1800, 4500, 450, layout::kPlain, "Block"},
    {kOkId, Kind::kButton, 0, "OK", 150, 2400, 1500, 375, layout::kDefault},
    {kCancelId, Kind::kButton, 0, "Cancel", 1800, 2400, 1500, 375, layout::kCancel},
    {kTimerId, Kind::kTimer, 0, "", 0, 0, 0, 0, layout::kDisabled, nullptr, nullptr, 0, 0, 10},
    {kTickId, Kind::kCheckBox, 0, "", 3600, 2400, 225, 285},
    {kLowId, Kind::kButton, 0, "Low", 150, 59000, 1500, 375},
});
constexpr layout::Form kTable = {"frmTest", "Test window", 4800, 3000, kRows};

class TestForm : public Form {
 public:
  TestForm() : Form(kTable) {
    Bind({{Ok, Event::kClick, [this] { Run(onOk); }},
          {Cancel, Event::kClick, [this] { Unload(); }},
          {Timer1, Event::kTimer, [this] { Run(onTimer); }},
          {Slider1, Event::kScroll, [this] { Log("scroll"); }},
          {Slider1, Event::kChange, [this] { Log("change"); }}});
  }
  ~TestForm() override { DropQuit(); }

  static void Run(const std::function<void()>& work) {
    if (work) work();
  }
  void Log(const std::string& event) {
    log += event + std::to_string(Slider1.Value()) + " ";
    if (event == "scroll" && Slider1.Value() > limit) Slider1.SetValue(limit);
  }
  void Press(Control& control, WPARAM key) {
    PostMessageW(control.window(), WM_KEYDOWN, key, 0);
    DoEvents();
  }

  Frame Frame1{*this, kFrameId}, Inner{*this, kInnerId};
  TextBox Box{*this, kBoxId};
  UpDown Hour{*this, kUpDownId};
  Slider Slider1{*this, kSliderId};
  Button Ok{*this, kOkId}, Cancel{*this, kCancelId}, Low{*this, kLowId};
  Timer Timer1{*this, kTimerId};
  CheckBox Tick{*this, kTickId};
  std::function<void()> onOk, onTimer;
  std::string log;
  int limit = 1000;

 private:
  // A window without an owner tells the program to quit when it goes.
  static void DropQuit() {
    MSG message;
    PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  }
};

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

/// Waits for a box with this title, keeps its text and presses its default button.
class BoxCloser {
 public:
  explicit BoxCloser(const wchar_t* title) : thread_([this, title] { Close(title); }) {}
  std::wstring Text() {
    thread_.join();
    return text_;
  }

 private:
  void Close(const wchar_t* title) {
    constexpr int kStaticText = 0xFFFF;
    HWND box = nullptr;
    while (!(box = FindWindowW(L"#32770", title)) || !IsWindowVisible(box)) Sleep(5);
    wchar_t text[200] = {};
    GetDlgItemTextW(box, kStaticText, text, 200);
    text_ = text;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  }
  std::wstring text_;
  std::thread thread_;
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

TEST_F(FormsTest, TellsEveryChangeOfASlider) {
  form.Slider1.SetMax(70'000);
  form.Slider1.SetValue(70'000);
  form.Slider1.SetValue(70'000);
  form.Slider1.SetMax(60'000);
  form.Slider1.SetMin(60'000);
  EXPECT_EQ(form.log, "change70000 change60000 ");
}

TEST_F(FormsTest, TellsTheUsersMovesOfASliderAndTakesARefusal) {
  form.Slider1.SetValue(8);
  form.limit = 9;
  form.log.clear();
  form.Press(form.Slider1, VK_RIGHT);
  form.Press(form.Slider1, VK_RIGHT);
  EXPECT_EQ(form.log, "scroll9 change9 scroll10 change9 ");
  EXPECT_EQ(SendMessageW(form.Slider1.window(), TBM_GETPOS, 0, 0), 9);
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

TEST_F(FormsTest, BringsTypedNumbersIntoRange) {
  form.Hour.SetRange(0, 23);
  const struct {
    const wchar_t* typed;
    int value;
    const char* shown;
  } cases[] = {{L"7", 7, "7"}, {L"99", 23, "23"}, {L"", 0, "0"}, {L"008", 8, "8"}};
  for (const auto& [typed, value, shown] : cases) {
    SetWindowTextW(form.Box.window(), typed);
    EXPECT_EQ(form.Hour.Value(), value);
    EXPECT_EQ(form.Box.Text(), shown);
    EXPECT_EQ(SendMessageW(form.Hour.window(), UDM_GETPOS32, 0, 0), value);
  }
  form.Box.SetFocus();
  SetWindowTextW(form.Box.window(), L"50");
  form.Ok.SetFocus();
  EXPECT_EQ(form.Box.Text(), "23");
}

TEST_F(FormsTest, PressesTheDefaultAndTheCancelButtonByKey) {
  bool pressed = false;
  form.onOk = [&] { pressed = true; };
  form.Press(form.Box, VK_RETURN);
  EXPECT_TRUE(pressed);
  form.Cancel.SetEnabled(false);
  form.Press(form.Box, VK_ESCAPE);
  EXPECT_FALSE(form.IsClosed());
  form.Cancel.SetEnabled(true);
  form.Press(form.Box, VK_ESCAPE);
  EXPECT_TRUE(form.IsClosed());
}

TEST_F(FormsTest, ShowsAHandlersFaultAndGoesOn) {
  form.onOk = [] { throw RuntimeError::SubscriptOutOfRange("test"); };
  BoxCloser closer(L"Trimbrook");
  SendMessageW(form.Ok.window(), BM_CLICK, 0, 0);
  EXPECT_EQ(closer.Text(), L"Subscript out of range");
  EXPECT_FALSE(form.IsClosed());
  EXPECT_TRUE(IsWindowEnabled(form.window()));
}

TEST_F(FormsTest, FreesAModalWindowWhenItsOwnHandlerHasReturned) {
  TestForm modal;
  bool reachedEnd = false;
  modal.onTimer = [&] {
    EXPECT_TRUE(IsWindowVisible(modal.window())) << "no tick before the window shows";
    modal.Timer1.SetEnabled(false);
    PostMessageW(form.window(), WM_CLOSE, 0, 0);
    PostMessageW(form.Cancel.window(), BM_CLICK, 0, 0);
    PostMessageW(modal.window(), WM_CLOSE, 0, 0);
    DoEvents();
    EXPECT_TRUE(modal.IsClosed() && !form.IsClosed());
    EXPECT_FALSE(IsWindowVisible(modal.window()) || IsWindowEnabled(form.window()));
    modal.Box.SetText("harmless");
    reachedEnd = true;
  };
  modal.Timer1.SetEnabled(true);
  modal.ShowModal(form);
  EXPECT_TRUE(reachedEnd);
  EXPECT_FALSE(modal.window());
  EXPECT_TRUE(IsWindowEnabled(form.window()));
}

TEST_F(FormsTest, ScrollsAFormThatDoesNotFitTheWorkArea) {
  constexpr int kTall = 60'000;
  form.SetHeight(kTall);
  RECT window = {}, area = {}, client = {};
  GetWindowRect(form.window(), &window);
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  EXPECT_EQ(form.Height(), kTall);
  EXPECT_LE(window.bottom - window.top, area.bottom - area.top);
  GetClientRect(form.window(), &client);
  EXPECT_GT(PlaceOf(form.Low).top, client.bottom);
  form.Low.SetFocus();
  EXPECT_LE(PlaceOf(form.Low).bottom, client.bottom);
  form.Box.SetFocus();
  EXPECT_GE(PlaceOf(form.Box).top, 0);
}

TEST_F(FormsTest, MovesItsTitleBarNeverOffTheWorkArea) {
  EXPECT_EQ(form.MoveBy(-150), -150);
  const int moved = form.MoveBy(-100'000);
  EXPECT_GT(moved, -100'000);
  EXPECT_GE(form.Top(), 0);
}

}  // namespace
}  // namespace forms
