#include "resources/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <set>
#include <string>
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
};

/// The controls that show, by row; a control in a hidden frame does not.
class Layout : public testing::TestWithParam<State> {
 protected:
  void SetUp() override {
    for (const Row& row : GetParam().rows) Place(row);
  }

  void Place(const Row& row) {
    const bool framed = row.container != 0;
    if (row.kind == Kind::kTimer || (row.styles & layout::kHidden) != 0) return;
    if (framed && !byId_.contains(row.container)) return;
    const int left = row.left + (framed ? shown_[byId_[row.container]].left : 0);
    const int top = row.top + (framed ? shown_[byId_[row.container]].top : 0);
    byId_[row.id] = shown_.size();
    shown_.push_back({row, left, top, left + row.width, top + row.height});
  }

  static bool TakesFocus(const Row& row) {
    static const std::set<Kind> kPassive = {Kind::kLabel,  Kind::kFrame,       Kind::kLine,
                                            Kind::kUpDown, Kind::kProgressBar, Kind::kAnimation};
    return !kPassive.contains(row.kind) && (row.styles & layout::kNoTabStop) == 0;
  }

  std::vector<Placed> shown_;
  std::map<int, std::size_t> byId_;
};

TEST_P(Layout, ControlsStandInsideWhatHoldsThem) {
  const Placed window = {{}, 0, 0, GetParam().clientWidth, GetParam().clientHeight};
  for (const Placed& control : shown_) {
    const int container = control.row.container;
    EXPECT_TRUE((container ? shown_[byId_[container]] : window).Holds(control)) << control.row.id;
  }
}

TEST_P(Layout, NothingOverlaps) {
  for (const Placed& a : shown_)
    for (const Placed& b : shown_) {
      const bool apart = a.row.id != b.row.id && a.row.container == b.row.container;
      EXPECT_FALSE(apart && a.Overlaps(b)) << a.row.id << " and " << b.row.id;
    }
}

TEST_P(Layout, TabGoesOnToTheRightOrDown) {
  const Placed* before = nullptr;
  for (const Placed& control : shown_) {
    if (!TakesFocus(control.row)) continue;
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

class Table : public testing::TestWithParam<const layout::Form*> {};

TEST_P(Table, IdsAreUniqueAndFramesComeBeforeWhatTheyHold) {
  std::set<int> frames = {0};
  std::set<int> ids;
  for (const Row& row : GetParam()->rows) {
    EXPECT_TRUE(ids.insert(row.id).second) << row.id;
    EXPECT_TRUE(frames.contains(row.container)) << row.id;
    if (row.kind == Kind::kFrame) frames.insert(row.id);
  }
}

TEST_P(Table, EveryControlHasANameOfItsOwn) {
  std::set<std::string> names;
  for (const Row& row : GetParam()->rows) {
    if (row.kind == Kind::kLabel || row.kind == Kind::kFrame || row.kind == Kind::kTimer) continue;
    const std::string name = row.name ? row.name : row.caption;
    EXPECT_FALSE(name.empty()) << row.id;
    EXPECT_TRUE(names.insert(name).second) << name;
  }
}

TEST_P(Table, AnUpDownStandsBesideTheBoxRightBeforeIt) {
  const Row* before = nullptr;
  for (const Row& row : GetParam()->rows) {
    if (row.kind == Kind::kUpDown) {
      ASSERT_EQ(before->id, row.buddy);
      EXPECT_EQ(before->left + before->width, row.left);
      EXPECT_EQ(before->top, row.top);
      EXPECT_EQ(before->height, row.height);
    }
    before = &row;
  }
}

INSTANTIATE_TEST_SUITE_P(Forms, Table,
                         testing::Values(&layout::kFrmTrimbrook, &layout::kFrmSaveFile),
                         [](const auto& test) { return std::string(test.param->name); });

}  // namespace
