// The forms layer by windows of its own, in this process.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "forms/application.h"
#include "forms/controls.h"
#include "forms/form.h"

namespace forms {
namespace {

using layout::Kind;

enum Id { kFrameId = 1, kInnerId, kBoxId, kSliderId, kOkId, kTickId };

constexpr auto kRows = std::to_array<layout::Row>({
    {kFrameId, Kind::kFrame, 0, "Frame", 150, 150, 4500, 1500},
    {kInnerId, Kind::kFrame, kFrameId, "Inner", 150, 300, 3000, 900},
    {kBoxId, Kind::kTextBox, kInnerId, "", 150, 300, 750, 300, layout::kNumber, "Hour"},
    {kSliderId, Kind::kSlider, 0, "", 150, 1800, 4500, 450, layout::kPlain, "Block"},
    {kOkId, Kind::kButton, 0, "OK", 150, 2400, 1500, 375, layout::kDefault},
    {kTickId, Kind::kCheckBox, 0, "", 3600, 2400, 225, 285},
});
constexpr layout::Form kTable = {"frmTest", "Test window", 4800, 3000, kRows};

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
  CheckBox Tick{*this, kTickId};
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
