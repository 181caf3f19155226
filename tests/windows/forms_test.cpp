// The forms layer by the program's own tables, in this process.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <vector>

#include "cdwizard/wizard_page.h"
#include "driver/window.h"
#include "forms/application.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "forms/win32.h"
#include "resources/layout.h"
#include "resources/resource.h"

namespace forms {
namespace {

using layout::Kind;

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

/// A window that is closed by its own handler.
class ModalForm : public Form {
 public:
  ModalForm() : Form(layout::kFrmSaveFile) {
    Bind({{Close, Event::kClick, [this] {
             Unload();
             inFront = GetActiveWindow();
             ownerUsable = IsWindowEnabled(inFront) != FALSE;
           }}});
  }

  Button Close{*this, IDC_frmSaveFile_cmdCancel};
  HWND inFront = nullptr;  ///< When it had hidden, before its handler has returned.
  bool ownerUsable = false;

 private:
  void OnLoad() override { PostMessageW(Close.window(), BM_CLICK, 0, 0); }
};

using Controls = std::vector<const Control*>;

class FormsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { StartApplication(); }
  void SetUp() override { form.Show(); }

  bool WindowEnabled(const Control& control) { return IsWindowEnabled(control.window()); }
  bool WindowVisible(const Control& control) { return IsWindowVisible(control.window()); }

  TestForm form;
};

TEST_F(FormsTest, PlacesControlsRelativeToTheirFramesAtAnyDpi) {
  for (const int dpi : {96, 144, 192}) {
    const RECT suggested = {10, 10, 500, 500};
    SendMessageW(form.window(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                 reinterpret_cast<LPARAM>(&suggested));
    RECT place = {};
    GetWindowRect(form.Hour.window(), &place);
    MapWindowPoints(nullptr, form.window(), reinterpret_cast<POINT*>(&place), 2);
    // In the three frames that hold it, of a window that is too high for the screen at last.
    EXPECT_EQ(place.left, MulDiv(120 + 120 + 150 + 4050, dpi, kTwipsPerInch));
    EXPECT_NEAR(place.top + place.bottom,
                MulDiv(2 * (2970 + 3090 + 270 + 750) + 315, dpi, kTwipsPerInch), 2);
    EXPECT_EQ(place.right - place.left, MulDiv(540, dpi, kTwipsPerInch));
    // Its text is in the middle of it, and a calendar's page is not cut.
    RECT text = {};
    form.Hour.SetText("8");
    const LRESULT first = SendMessageW(form.Hour.window(), EM_POSFROMCHAR, 0, 0);
    GetClientRect(form.Hour.window(), &text);
    EXPECT_LE(text.bottom - form.place().LineHeight() - 2 * HIWORD(first), 2) << dpi;
    for (const int width : {3450, 2300}) {
      form.Calendar.SetWidth(width);
      SendMessageW(form.window(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                   reinterpret_cast<LPARAM>(&suggested));
      RECT least = {}, room = {};
      SendMessageW(form.Calendar.window(), MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least));
      GetClientRect(form.Calendar.window(), &room);
      EXPECT_TRUE(least.right <= room.right && least.bottom <= room.bottom) << dpi << ", " << width;
    }
  }
}

/// The clip as it is built.
std::string ClipPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::string program = Utf8(path);
  return program.substr(0, program.rfind('\\')) + "\\..\\..\\..\\windows\\FILECOPY.avi";
}

/// Pixels of a window that are not of its background.
int Marked(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  UpdateWindow(window);
  const HDC screen = GetDC(window);
  const COLORREF ground = GetPixel(screen, 4, 4);
  int marked = 0;
  for (int y = 4; y < client.bottom - 4; ++y)
    for (int x = 4; x < client.right - 4; ++x) marked += GetPixel(screen, x, y) != ground;
  ReleaseDC(window, screen);
  return marked;
}

// At twice the resolution with four times the pixels, and grey with more than one colour.
TEST_F(FormsTest, PicturesGrowWithTheirControlsAndGoPaleWithThem) {
  Form progress(layout::kFrmSaveFile);
  ASSERT_TRUE(progress.Load());
  auto& clip = dynamic_cast<Animation&>(progress.ControlById(IDC_frmSaveFile_Animation1));
  clip.SetVisible(true);
  ASSERT_TRUE(clip.Open(ClipPath()));
  progress.Show();
  const int usual = Marked(clip.window());
  EXPECT_GT(usual, 100);
  const RECT suggested = {10, 10, 500, 500};
  SendMessageW(progress.window(), WM_DPICHANGED, MAKELONG(192, 192),
               reinterpret_cast<LPARAM>(&suggested));
  EXPECT_GT(Marked(clip.window()), 3 * usual);

  const HWND button = form.ControlById(IDC_frmTrimbrook_Command1).window();
  const auto colors = [&] {
    UpdateWindow(button);
    std::set<COLORREF> seen;
    const HDC screen = GetDC(button);
    for (int i = 0; i < 16 * 16; ++i) seen.insert(GetPixel(screen, 9 + i % 16, 5 + i / 16));
    ReleaseDC(button, screen);
    return seen.size();
  };
  EXPECT_GT(colors(), 5u);
  form.ControlById(IDC_frmTrimbrook_Command1).SetEnabled(false);
  EXPECT_GT(colors(), 5u);
}

// Where the mouse rests, of a box that is disabled, too, and of its number.
TEST_F(FormsTest, AsksForTheTextOfATipWhenItIsToShow) {
  driver::BringToFront(driver::Window(form.window()));
  for (const Control* control : Controls{&form.Cameras(0), &form.Number, &form.Cameras(1)}) {
    form.asked = -1;
    form.Cameras(1).SetEnabled(false);
    RECT place = {};
    GetWindowRect(control->window(), &place);
    SetCursorPos(place.left - 40, place.top - 40);
    DoEvents();
    SetCursorPos(place.left + 3, place.top + 5);
    driver::Await("question", [&] {
      DoEvents();
      return form.asked == (control == &form.Cameras(1) ? 1 : 0);
    });
  }
}

const auto kWarning = reinterpret_cast<LONG_PTR>(IDI_WARNING);
const auto kError = reinterpret_cast<LONG_PTR>(IDI_ERROR);
const auto kQuestion = reinterpret_cast<LONG_PTR>(IDI_QUESTION);

TEST_F(FormsTest, ABoxHasTheIconThatFits) {
  static LONG_PTR icon;
  const auto answer = [](HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = FindWindowW(L"#32770", nullptr);
    if (!box) return;
    KillTimer(nullptr, timer);
    LRESULT shown = 0;
    for (HWND text = nullptr; !shown && (text = FindWindowExW(box, text, L"Static", nullptr));)
      shown = SendMessageW(text, STM_GETICON, 0, 0);
    for (const LONG_PTR known : {kWarning, kError, kQuestion})
      if (reinterpret_cast<LRESULT>(LoadIconW(nullptr, MAKEINTRESOURCEW(known))) == shown)
        icon = known;
    PostMessageW(box, WM_COMMAND, GetDlgItem(box, IDNO) ? IDNO : IDCANCEL, 0);
  };
  const auto iconOf = [&](const auto& show) {
    icon = 0;
    SetTimer(nullptr, 0, 20, answer);
    show();
    return icon;
  };
  EXPECT_EQ(iconOf([&] { form.ShowMessage("refused"); }), kWarning);
  EXPECT_EQ(iconOf([&] { form.ShowMessage("failed", Tone::kError); }), kError);
  EXPECT_EQ(iconOf([&] { form.ShowApplicationMessage("failed"); }), kError);
  EXPECT_EQ(iconOf([&] { form.AskYesNo("sure?"); }), kQuestion);
  EXPECT_EQ(iconOf([&] { form.AskYesNoCancel("sure?"); }), kQuestion);
}

TEST_F(FormsTest, ShowsAndEnablesAControlOnlyWhileItsFramesAre) {
  form.Range.SetVisible(false);
  EXPECT_FALSE(WindowVisible(form.Hour) || WindowEnabled(form.Hour));
  EXPECT_TRUE(form.Hour.Enabled());
  form.RangeStart.SetVisible(false);
  form.Range.SetVisible(true);
  EXPECT_FALSE(WindowVisible(form.Hour) || WindowEnabled(form.Hour));
  form.RangeStart.SetVisible(true);
  EXPECT_TRUE(WindowVisible(form.Hour) && WindowEnabled(form.Hour));
  form.Range.SetEnabled(false);
  EXPECT_TRUE(WindowVisible(form.Hour) && !WindowEnabled(form.Hour));
}

TEST_F(FormsTest, LeavesTheFocusOnNothingThatGoes) {
  form.Hour.SetFocus();
  form.Range.SetVisible(false);
  EXPECT_TRUE(form.Save.HasFocus());
  form.Save.SetEnabled(false);
  EXPECT_TRUE(form.Exit.HasFocus());
}

TEST_F(FormsTest, ShowsTheFocusOfABoxWithoutACaption) {
  const HWND box = form.Cameras(0).window();
  const auto pixels = [&] {
    UpdateWindow(box);
    const HDC screen = GetDC(box);
    std::array<COLORREF, 15 * 19> colors;
    for (int i = 0; i < 15 * 19; ++i)
      colors[static_cast<std::size_t>(i)] = GetPixel(screen, i % 15, i / 15);
    ReleaseDC(box, screen);
    return colors;
  };
  const auto before = pixels();
  form.Cameras(0).SetFocus();
  EXPECT_NE(pixels(), before);
  form.Save.SetFocus();
  EXPECT_EQ(pixels(), before);
}

TEST_F(FormsTest, ALabelIsPartOfItsBox) {
  SendMessageW(form.Number.window(), WM_LBUTTONDOWN, 0, 0);
  SendMessageW(form.Number.window(), WM_LBUTTONUP, 0, 0);
  EXPECT_TRUE(form.Cameras(0).Value() && form.Cameras(0).HasFocus());
  form.Cameras(0).SetEnabled(false);
  EXPECT_FALSE(WindowEnabled(form.Number));
  EXPECT_TRUE(WindowVisible(form.Number));
}

TEST_F(FormsTest, ArrowsWalkBoxesThatTabPassesAsOne) {
  const auto stops = [&] {
    std::string indices;
    for (int i = 0; i <= form.Cameras.last(); ++i)
      if (GetWindowLongW(form.Cameras(i).window(), GWL_STYLE) & WS_TABSTOP)
        indices += std::to_string(i);
    return indices;
  };
  EXPECT_EQ(stops(), "0");
  form.Cameras(8).SetEnabled(false);
  form.Cameras(0).SetFocus();
  // Two rows of eight boxes.
  const struct {
    WPARAM key;
    int focused;
  } cases[] = {{VK_RIGHT, 1}, {VK_DOWN, 9}, {VK_DOWN, 9},  {VK_LEFT, 7},  {VK_RIGHT, 9}, {VK_UP, 1},
               {VK_UP, 1},    {VK_LEFT, 0}, {VK_LEFT, 15}, {VK_RIGHT, 0}, {VK_DOWN, 9}};
  for (const auto& [key, focused] : cases) {
    PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
    DoEvents();
    EXPECT_TRUE(form.Cameras(focused).HasFocus()) << key;
    EXPECT_EQ(stops(), std::to_string(focused));
  }
  form.Cameras(9).SetEnabled(false);
  EXPECT_EQ(stops(), "0");
}

TEST_F(FormsTest, OnlyTheFocusedButtonLooksLikeTheDefaultOne) {
  form.Save.SetDefault();
  // As the system does when a dialog has gone, or the mouse has pressed.
  for (const Control* focused : Controls{&form.Save, &form.Exit, &form.Hour}) {
    SetFocus(focused->window());
    for (const Button* button : {&form.Save, &form.Exit})
      EXPECT_EQ((GetWindowLongW(button->window(), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON,
                button == focused || (focused == &form.Hour && button == &form.Save));
  }
}

TEST_F(FormsTest, TheWheelMovesNothingThatHasNotTheFocus) {
  form.Counter.SetValue(7);
  form.Slider1.SetValue(50);
  const Day day = form.Calendar.Value();
  form.Save.SetFocus();
  for (const Control* control : Controls{&form.Slider1, &form.Hour, &form.Calendar}) {
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
    notice.nmhdr = {form.Calendar.window(), IDC_frmTrimbrook_Calendar1, code};
    SendMessageW(form.window(), WM_NOTIFY, IDC_frmTrimbrook_Calendar1,
                 reinterpret_cast<LPARAM>(&notice));
  };
  const struct {
    WORD year, month, day;
    UINT notice;
    const char* told;
  } cases[] = {{2003, 1, 31, MCN_SELCHANGE, ""},  {2003, 1, 31, MCN_SELECT, ""},
               {2003, 1, 12, MCN_SELCHANGE, "c"}, {2003, 2, 12, MCN_SELCHANGE, "m"},
               {2003, 3, 1, MCN_SELECT, "c"},     {2013, 3, 1, MCN_SELCHANGE, "y"}};
  form.Calendar.SetValue(std::chrono::year(2003) / 1 / 31);
  for (const auto& [year, month, day, notice, told] : cases) {
    form.told.clear();
    SYSTEMTIME time = {};
    time.wYear = year;
    time.wMonth = month;
    time.wDay = day;
    SendMessageW(form.Calendar.window(), MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
    EXPECT_EQ(form.Calendar.Value(), std::chrono::year(year) / month / day);
    for (int repeated = 0; repeated < 2; ++repeated) notify(notice);
    EXPECT_EQ(form.told, told) << day;
  }
  // The middle of the page is never the first of a month.
  RECT page = {};
  GetClientRect(form.Calendar.window(), &page);
  form.told.clear();
  for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP})
    SendMessageW(form.Calendar.window(), message, MK_LBUTTON,
                 MAKELPARAM(page.right / 2, page.bottom / 2));
  EXPECT_EQ(form.told, "c");
  EXPECT_NE(form.Calendar.Value().day(), std::chrono::day(1));
}

TEST_F(FormsTest, DoesNotStandExactlyOverAnother) {
  TestForm second;
  ASSERT_TRUE(second.Load());
  RECT places[2] = {};
  GetWindowRect(form.window(), &places[0]);
  GetWindowRect(second.window(), &places[1]);
  EXPECT_TRUE(places[0].left != places[1].left && places[0].top != places[1].top);
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

/// The program's windows with the system's text at a size in percent.
class TextSizes : public testing::TestWithParam<int> {
 protected:
  TextSizes() {
    StartApplication();
    former_.cbSize = sizeof former_;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof former_, &former_, 0);
    NONCLIENTMETRICSW larger = former_;
    larger.lfMessageFont.lfHeight = MulDiv(former_.lfMessageFont.lfHeight, GetParam(), 100);
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof larger, &larger, 0);
  }
  ~TextSizes() override {
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof former_, &former_, 0);
  }
  /// Expects a text to fit into a control in its font: in one line, or in as many as it takes.
  static void ExpectRoom(const Control& control, const std::string& text, UINT lines, LONG margin) {
    RECT client = {};
    GetClientRect(control.window(), &client);
    RECT room = client;
    const HDC screen = GetDC(control.window());
    SelectObject(screen, reinterpret_cast<HFONT>(SendMessageW(control.window(), WM_GETFONT, 0, 0)));
    DrawTextW(screen, Wide(text).c_str(), -1, &room, DT_CALCRECT | DT_NOPREFIX | lines);
    ReleaseDC(control.window(), screen);
    EXPECT_LE(room.right + margin, client.right) << text;
    EXPECT_LE(room.bottom, client.bottom + (lines == DT_SINGLELINE ? 1 : 0)) << text;
  }

 private:
  NONCLIENTMETRICSW former_ = {};
};

INSTANTIATE_TEST_SUITE_P(Percent, TextSizes, testing::Values(100, 150, 225));

TEST_P(TextSizes, NoCaptionIsCutNorTheWizardsInstructions) {
  constexpr LONG kTick = 18;  // Pixels that a box takes before its caption.
  for (const layout::Form* table :
       {&layout::kFrmTrimbrook, &layout::kFrmSaveFile, &layout::kFrmSaveToCD}) {
    Form form(*table);
    ASSERT_TRUE(form.Load());
    for (const layout::Row& row : table->rows)
      if (row.kind == Kind::kLabel || row.kind == Kind::kButton || row.kind == Kind::kCheckBox)
        ExpectRoom(form.ControlById(row.id), row.caption, DT_SINGLELINE,
                   row.kind == Kind::kCheckBox && *row.caption ? kTick : 0);
    // One that is larger than the display begins at its left top, wherever the focus is.
    form.Show();
    EXPECT_EQ(GetScrollPos(form.window(), SB_HORZ) + GetScrollPos(form.window(), SB_VERT), 0);
  }
  Form form(layout::kFrmSaveToCD);
  ASSERT_TRUE(form.Load());
  Control& label = form.ControlById(IDC_frmSaveToCD_Label1);
  for (const bool dragToDisc : {false, true})
    for (const Page page : {Page::kWelcome, Page::kLookingUp, Page::kDrive, Page::kFileName,
                            Page::kCopying, Page::kReselect, Page::kEject, Page::kDone}) {
      const PageLook look = LookOf(page, dragToDisc);
      label.SetHeight(look.instructionsHeight);
      ExpectRoom(label, look.instructions, DT_WORDBREAK, 0);
    }
}

}  // namespace
}  // namespace forms
