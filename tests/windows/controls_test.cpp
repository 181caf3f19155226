// What the kinds of controls do that Windows' own do not.
#include <algorithm>
#include <set>

#include "driver/window.h"
#include "tests/windows/forms_world.h"

namespace forms {
namespace {

/// The clip as it is built.
std::string ClipPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::string program = Utf8(path);
  return program.substr(0, program.rfind('\\')) + "\\..\\..\\..\\windows\\FILECOPY.avi";
}

/// The pixels of a part of a window, row by row.
std::vector<COLORREF> Pixels(HWND window, const RECT& part) {
  UpdateWindow(window);
  const HDC screen = GetDC(window);
  std::vector<COLORREF> colors;
  for (int y = part.top; y < part.bottom; ++y)
    for (int x = part.left; x < part.right; ++x) colors.push_back(GetPixel(screen, x, y));
  ReleaseDC(window, screen);
  return colors;
}

/// Pixels of a window that are not of its background.
auto Marked(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  const auto pixels = Pixels(window, {4, 4, client.right - 4, client.bottom - 4});
  return std::ranges::count_if(pixels, [&](COLORREF pixel) { return pixel != pixels.front(); });
}

// At twice the resolution with four times the pixels, and grey with more than one colour.
TEST_F(FormsTest, PicturesGrowWithTheirControlsAndGoPaleWithThem) {
  Form progress(layout::kFrmSaveFile);
  ASSERT_TRUE(progress.Load());
  auto& clip = dynamic_cast<Animation&>(progress.ControlById(IDC_frmSaveFile_Animation1));
  clip.SetVisible(true);
  ASSERT_TRUE(clip.Open(ClipPath()));
  progress.Show();
  const auto usual = Marked(clip.window());
  EXPECT_GT(usual, 100);
  ChangeDpi(progress, 192);
  EXPECT_GT(Marked(clip.window()), 3 * usual);

  const HWND button = form.ControlById(IDC_frmTrimbrook_Command1).window();
  const auto colors = [&] {
    const auto pixels = Pixels(button, {9, 5, 25, 21});
    return std::set(pixels.begin(), pixels.end()).size();
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

TEST_F(FormsTest, ShowsTheFocusOfABoxWithoutACaption) {
  const HWND box = form.Cameras(0).window();
  const RECT part = {0, 0, 15, 19};
  const auto before = Pixels(box, part);
  form.Cameras(0).SetFocus();
  EXPECT_NE(Pixels(box, part), before);
  form.Save.SetFocus();
  EXPECT_EQ(Pixels(box, part), before);
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
  // The button behind the boxes; not to the number before it.
  form.ControlById(IDC_frmTrimbrook_cmdSet).SetFocus();
  PostMessageW(GetFocus(), WM_KEYDOWN, VK_LEFT, 0);
  DoEvents();
  EXPECT_TRUE(GetWindowLongW(GetFocus(), GWL_STYLE) & WS_TABSTOP);
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

}  // namespace
}  // namespace forms
