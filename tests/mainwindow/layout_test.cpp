#include "resources/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cdwizard/wizard_page.h"
#include "resources/resource.h"

namespace {

using layout::Kind;
using layout::Row;

/// A row as the program rearranges its control.
struct Control : Row {
  void SetLeft(int twips) { left = twips; }
  void SetTop(int twips) { top = twips; }
  void SetWidth(int twips) { width = twips; }
  void SetHeight(int twips) { height = twips; }
  void SetVisible(bool visible) {
    styles = visible ? styles & ~layout::kHidden : styles | layout::kHidden;
  }
};

/// A form in one of its states: the rows as they stand then.
struct State {
  explicit State(const layout::Form& form)
      : clientWidth(form.clientWidth), clientHeight(form.clientHeight) {
    for (const Row& row : form.rows) rows.push_back({row});
  }
  Control& ControlById(int id) { return *std::ranges::find(rows, id, &Row::id); }

  int clientWidth;
  int clientHeight;
  std::vector<Control> rows;
};

State MainWindow(bool expanded, bool manyCameras, bool withCd) {
  State state(layout::kFrmTrimbrook);
  if (expanded) state.clientHeight += layout::kExpandedHeight - layout::kCompactHeight;
  layout::Apply(expanded ? layout::kExpanded : layout::kCompact, state);
  layout::Apply(manyCameras ? layout::kThirtyTwoCameras : layout::kSixteenCameras, state);
  layout::Apply(withCd ? layout::kWithCd : layout::kWithoutCd, state);
  return state;
}

/// A page of the CD wizard; the instructions of Drag-to-Disc stand lower.
State WizardPage(Page page, bool dragToDisc) {
  State state(layout::kFrmSaveToCD);
  const PageLook look = LookOf(page, dragToDisc);
  const auto show = [&](bool shown, std::initializer_list<int> ids) {
    for (const int id : ids) state.ControlById(id).SetVisible(shown);
  };
  Row& instructions = state.ControlById(IDC_frmSaveToCD_Label1);
  instructions.top = look.instructionsTop;
  instructions.height = look.instructionsHeight;
  show(look.instructionsHeight > 0, {IDC_frmSaveToCD_Label1});
  show(look.showsDrives, {IDC_frmSaveToCD_Combo1});
  show(look.showsFileName, {IDC_frmSaveToCD_Text1, IDC_frmSaveToCD_Check1});
  show(page == Page::kCopying,
       {IDC_frmSaveToCD_Animation1, IDC_frmSaveToCD_ProgressBar1, IDC_frmSaveToCD_Label3});
  for (int i = 0; i < kPageButtons; ++i)
    show(look.buttons[static_cast<std::size_t>(i)].visible, {IDC_frmSaveToCD_cmdNext + i});
  return state;
}

int Right(const Row& row) {
  return row.left + row.width;
}
int Bottom(const Row& row) {
  return row.top + row.height;
}
bool StandsBefore(const Row& a, const Row& b) {
  return Right(a) <= b.left || Bottom(a) <= b.top;
}
bool TakesFocus(const Row& row) {
  static const std::set<Kind> kPassive = {Kind::kLabel,  Kind::kFrame,       Kind::kLine,
                                          Kind::kUpDown, Kind::kProgressBar, Kind::kAnimation};
  return !kPassive.contains(row.kind) && (row.styles & layout::kNoTabStop) == 0;
}

/// The controls that show, where they stand in their window; those of a hidden frame do not show.
/// Before them the window itself, which has the id 0.
std::vector<Row> ShownIn(const State& state) {
  std::vector<Row> shown = {
      Row(0, Kind::kFrame, -1, "", {0, 0, state.clientWidth, state.clientHeight})};
  for (Row row : state.rows) {
    const auto frame = std::ranges::find(shown, row.container, &Row::id);
    if (row.kind == Kind::kTimer || (row.styles & layout::kHidden) != 0 || frame == shown.end())
      continue;
    row.left += frame->left;
    row.top += frame->top;
    EXPECT_TRUE(frame->left < row.left && Right(row) < Right(*frame) && frame->top < row.top &&
                Bottom(row) < Bottom(*frame))
        << row.id;
    shown.push_back(row);
  }
  return shown;
}

/// Controls stand apart inside what holds them, and Tab goes on to the right or down.
void ExpectOrder(const State& state) {
  const std::vector<Row> shown = ShownIn(state);
  const Row* before = nullptr;
  for (const Row& control : shown) {
    for (const Row* other = shown.data(); other != &control; ++other)
      EXPECT_TRUE(other->container != control.container || StandsBefore(*other, control) ||
                  StandsBefore(control, *other))
          << control.id << ", " << other->id;
    if (!TakesFocus(control)) continue;
    EXPECT_TRUE(!before || StandsBefore(*before, control)) << before->id << " to " << control.id;
    before = &control;
  }
  EXPECT_NE(before, nullptr);
}

TEST(Layout, HasOrderInEveryState) {
  State progress(layout::kFrmSaveFile);
  for (Control& control : progress.rows) control.SetVisible(true);
  ExpectOrder(progress);
  for (const bool a : {false, true})
    for (const bool b : {false, true})
      for (const bool c : {false, true}) {
        SCOPED_TRACE(testing::Message()
                     << "expanded " << a << ", 32 cameras " << b << ", CD " << c);
        ExpectOrder(MainWindow(a, b, c));
      }
  for (const Page page :
       {Page::kWelcome, Page::kDrive, Page::kFileName, Page::kCopying, Page::kEject, Page::kDone})
    for (const bool dragToDisc : {false, true}) {
      SCOPED_TRACE(LookOf(page, dragToDisc).heading);
      ExpectOrder(WizardPage(page, dragToDisc));
    }
}

// Of the room between a box's tick and the next box most lies behind the number.
TEST(Cameras, StandPlainlyBesideTheirNumbers) {
  constexpr int kTick = 13 * 15;
  constexpr int kTwoDigits = 14 * 15;
  State state(layout::kFrmTrimbrook);
  for (const int camera : {1, 9, 16, 24, 25}) {
    const Row& box = state.ControlById(IDC_frmTrimbrook_Check1 + camera - 1);
    const Row& number = state.ControlById(IDC_frmTrimbrook_Label5 + camera);
    const Row& next = state.ControlById(IDC_frmTrimbrook_Check1 + camera);
    const int before = number.left - (box.left + kTick);
    const int behind = next.left - (number.left + kTwoDigits);
    EXPECT_TRUE(next.top != box.top || behind >= 3 * before) << camera << ": " << before;
  }
}

TEST(Table, HasSoundRows) {
  for (const layout::Form* form : {&layout::kFrmTrimbrook, &layout::kFrmSaveFile}) {
    std::set<std::string> names;
    const Row* before = nullptr;
    for (const Row& row : form->rows) {
      SCOPED_TRACE(row.id);
      const std::string name = row.name ? row.name : row.caption;
      if (row.kind != Kind::kFrame && row.kind != Kind::kLabel && row.kind != Kind::kTimer)
        EXPECT_TRUE(!name.empty() && names.insert(name).second) << "a name of its own: " << name;
      if (row.kind == Kind::kUpDown) {
        ASSERT_EQ(before->id, row.buddy) << "the box stands right before it";
        EXPECT_EQ(std::tuple(Right(*before), before->top, before->height),
                  std::tuple(row.left, row.top, row.height));
      }
      before = &row;
    }
  }
}

}  // namespace
