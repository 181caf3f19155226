// Forms as a whole: where their controls stand, what shows, what has the focus, and their boxes.
#include "tests/windows/forms_world.h"

#include <winternl.h>

#include <algorithm>
#include <array>

#include "cdwizard/wizard_page.h"

namespace forms {
namespace {

using layout::Kind;

TEST_F(FormsTest, PlacesControlsRelativeToTheirFramesAtAnyDpi) {
  for (const int dpi : {96, 144, 192}) {
    ChangeDpi(form, dpi);
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
      ChangeDpi(form, dpi);
      RECT least = {}, room = {};
      SendMessageW(form.Calendar.window(), MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least));
      GetClientRect(form.Calendar.window(), &room);
      EXPECT_TRUE(least.right <= room.right && least.bottom <= room.bottom) << dpi << ", " << width;
    }
  }
}

TEST_F(FormsTest, ABoxHasTheIconThatFits) {
  static LRESULT shown;
  const auto answer = [](HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = FindWindowW(L"#32770", nullptr);
    if (!box) return;
    KillTimer(nullptr, timer);
    for (HWND text = nullptr; !shown && (text = FindWindowExW(box, text, L"Static", nullptr));)
      shown = SendMessageW(text, STM_GETICON, 0, 0);
    PostMessageW(box, WM_COMMAND, GetDlgItem(box, IDNO) ? IDNO : IDCANCEL, 0);
  };
  const auto expect = [&](LPCWSTR icon, const auto& show) {
    shown = 0;
    SetTimer(nullptr, 0, 20, answer);
    show();
    EXPECT_EQ(shown, reinterpret_cast<LRESULT>(LoadIconW(nullptr, icon)));
  };
  expect(IDI_WARNING, [&] { form.ShowMessage("refused"); });
  expect(IDI_ERROR, [&] { form.ShowMessage("failed", Tone::kError); });
  expect(IDI_ERROR, [&] { form.ShowApplicationMessage("failed"); });
  expect(IDI_QUESTION, [&] { form.AskYesNo("sure?"); });
  expect(IDI_QUESTION, [&] { form.AskYesNoCancel("sure?"); });
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

TEST_F(FormsTest, DoesNotStandExactlyOverAnother) {
  TestForm second;
  ASSERT_TRUE(second.Load());
  RECT places[2] = {};
  GetWindowRect(form.window(), &places[0]);
  GetWindowRect(second.window(), &places[1]);
  EXPECT_TRUE(places[0].left != places[1].left && places[0].top != places[1].top);
}

/// Entries in use of the table of this process's drawing objects: Wine answers the usual function
/// with 0. The process's block tells the place. An entry is twelve words; the type of a free one is
/// 0.
auto DrawingObjects() {
  constexpr std::ptrdiff_t kTableInProcessBlock = 0xF8, kEntries = 65536;
  using Entry = std::array<std::uint16_t, 12>;
  const auto* block = reinterpret_cast<const char*>(NtCurrentTeb()->ProcessEnvironmentBlock);
  const auto* table = *reinterpret_cast<Entry* const*>(block + kTableInProcessBlock);
  return std::count_if(table, table + kEntries, [](const Entry& entry) { return entry[6] != 0; });
}

// A session has 10,000 of them, and a window is painted again and again.
TEST_F(FormsTest, PaintingLeavesNoDrawingObjectsBehind) {
  form.ControlById(IDC_frmTrimbrook_Command1).SetEnabled(false);
  const auto paint = [this] {
    RedrawWindow(form.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
  };
  paint();
  const auto before = DrawingObjects();
  for (int paints = 0; paints < 50; ++paints) paint();
  EXPECT_GT(before, 0);
  EXPECT_LT(DrawingObjects() - before, 10);
}

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

TEST_F(FormsTest, AModalWindowLeavesItsOwnerInFront) {
  form.Slider1.SetFocus();
  ModalForm modal;
  modal.ShowModal(form);
  EXPECT_EQ(modal.inFront, form.window());
  EXPECT_FALSE(modal.ownerUsable);
  EXPECT_TRUE(IsWindowEnabled(form.window()));
  EXPECT_TRUE(form.Slider1.HasFocus());
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
