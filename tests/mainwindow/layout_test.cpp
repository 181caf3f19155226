#include "resources/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cdwizard/wizard_page.h"
#include "resources/layouts.h"
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
  std::string name;
  int clientWidth;
  int clientHeight;
  std::vector<Control> rows;

  State(std::string stateName, const layout::Form& form)
      : name(std::move(stateName)), clientWidth(form.clientWidth), clientHeight(form.clientHeight) {
    for (const Row& row : form.rows) rows.push_back({row});
  }
  Control& ControlById(int id) { return *std::ranges::find(rows, id, &Row::id); }
  void Show(bool shown, std::initializer_list<int> ids) {
    for (const int id : ids) ControlById(id).SetVisible(shown);
  }
};

void PrintTo(const State& state, std::ostream* out) {
  *out << state.name;
}

State Progress() {
  State state("progress", layout::kFrmSaveFile);
  for (Control& control : state.rows) control.SetVisible(true);
  return state;
}

State MainWindow(const char* name, bool expanded, bool manyCameras, bool withCd = false) {
  State state(name, layout::kFrmTrimbrook);
  if (expanded) state.clientHeight += layout::kExpandedHeight - layout::kCompactHeight;
  layout::Apply(expanded ? layout::kExpanded : layout::kCompact, state);
  layout::Apply(manyCameras ? layout::kThirtyTwoCameras : layout::kSixteenCameras, state);
  layout::Apply(withCd ? layout::kWithCd : layout::kWithoutCd, state);
  return state;
}

/// A page of the CD wizard; the instructions of Drag-to-Disc stand lower.
State WizardPage(const char* name, Page page, bool dragToDisc = false) {
  State state(name, layout::kFrmSaveToCD);
  const PageLook look = LookOf(page, dragToDisc);
  Row& instructions = state.ControlById(IDC_frmSaveToCD_Label1);
  instructions.top = look.instructionsTop;
  instructions.height = look.instructionsHeight;
  state.Show(look.instructionsHeight > 0, {IDC_frmSaveToCD_Label1});
  state.Show(look.showsDrives, {IDC_frmSaveToCD_Combo1});
  state.Show(look.showsFileName, {IDC_frmSaveToCD_Text1, IDC_frmSaveToCD_Check1});
  state.Show(page == Page::kCopying,
             {IDC_frmSaveToCD_Animation1, IDC_frmSaveToCD_ProgressBar1, IDC_frmSaveToCD_Label3});
  for (int i = 0; i < kPageButtons; ++i)
    state.Show(look.buttons[static_cast<std::size_t>(i)].visible, {IDC_frmSaveToCD_cmdNext + i});
  return state;
}

/// A control where it stands in the window.
struct Placed {
  Row row;
  int left, top, right, bottom;

  bool Holds(const Placed& other) const {
    return left < other.left && other.right < right && top < other.top && other.bottom < bottom;
  }
  bool Overlaps(const Placed& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  bool TakesFocus() const {
    static const std::set<Kind> kPassive = {Kind::kLabel,  Kind::kFrame,       Kind::kLine,
                                            Kind::kUpDown, Kind::kProgressBar, Kind::kAnimation};
    return !kPassive.contains(row.kind) && (row.styles & layout::kNoTabStop) == 0;
  }
};

/// The controls that show, by row and behind their window, which has the id 0; a control in a
/// hidden frame does not show.
std::vector<Placed> ShownIn(const State& state) {
  std::vector<Placed> shown = {{{}, 0, 0, state.clientWidth, state.clientHeight}};
  for (const Row& row : state.rows) {
    const auto frame =
        std::ranges::find(shown, row.container, [](auto& each) { return each.row.id; });
    if (row.kind == Kind::kTimer || (row.styles & layout::kHidden) != 0 || frame == shown.end())
      continue;
    const int left = frame->left + row.left, top = frame->top + row.top;
    EXPECT_TRUE(frame->Holds({row, left, top, left + row.width, top + row.height})) << row.id;
    shown.push_back({row, left, top, left + row.width, top + row.height});
  }
  return shown;
}

class Layout : public testing::TestWithParam<State> {};

TEST_P(Layout, ControlsStandApartInsideWhatHoldsThemAndTabGoesOnToTheRightOrDown) {
  const std::vector<Placed> shown = ShownIn(GetParam());
  const Placed* before = nullptr;
  for (const Placed& control : shown) {
    for (const Placed& other : shown) {
      const bool isApart =
          &other < &control && other.row.id != 0 && control.row.container == other.row.container;
      EXPECT_FALSE(isApart && control.Overlaps(other)) << control.row.id << ", " << other.row.id;
    }
    if (control.row.id == 0 || !control.TakesFocus()) continue;
    if (before)
      EXPECT_TRUE(control.left >= before->right || control.top >= before->bottom)
          << before->row.id << " to " << control.row.id;
    before = &control;
  }
  EXPECT_NE(before, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Layout,
    testing::Values(MainWindow("compact16", false, false), MainWindow("compact32", false, true),
                    MainWindow("expanded16", true, false), MainWindow("expanded32", true, true),
                    MainWindow("withCd", false, false, true), Progress(),
                    WizardPage("welcome", Page::kWelcome), WizardPage("drive", Page::kDrive),
                    WizardPage("driveDragToDisc", Page::kDrive, true),
                    WizardPage("fileName", Page::kFileName), WizardPage("copying", Page::kCopying),
                    WizardPage("eject", Page::kEject), WizardPage("done", Page::kDone)),
    [](const auto& test) { return test.param.name; });

TEST(Table, HasSoundRows) {
  for (const layout::Form* form : {&layout::kFrmTrimbrook, &layout::kFrmSaveFile}) {
    std::set<int> frames = {0}, ids;
    std::set<std::string> names;
    const Row* before = nullptr;
    for (const Row& row : form->rows) {
      SCOPED_TRACE(row.id);
      EXPECT_TRUE(ids.insert(row.id).second);
      EXPECT_TRUE(frames.contains(row.container)) << "a frame comes before what it holds";
      const std::string name = row.name ? row.name : row.caption;
      if (row.kind == Kind::kFrame)
        frames.insert(row.id);
      else if (row.kind != Kind::kLabel && row.kind != Kind::kTimer)
        EXPECT_TRUE(!name.empty() && names.insert(name).second) << "a name of its own: " << name;
      if (row.kind == Kind::kUpDown) {
        ASSERT_EQ(before->id, row.buddy) << "the box stands right before it";
        EXPECT_EQ(before->left + before->width, row.left);
        EXPECT_EQ(std::pair(before->top, before->height), std::pair(row.top, row.height));
      }
      before = &row;
    }
  }
}

}  // namespace
