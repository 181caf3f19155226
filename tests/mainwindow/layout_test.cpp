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

/// A form in one of its states: the rows as they stand then.
struct State {
  const char* name;
  int clientWidth;
  int clientHeight;
  std::vector<Row> rows;
};

void PrintTo(const State& state, std::ostream* out) {
  *out << state.name;
}

Row& RowOf(State& state, int id) {
  return *std::find_if(state.rows.begin(), state.rows.end(),
                       [id](const Row& row) { return row.id == id; });
}

State TableOf(const char* name, const layout::Form& form) {
  return {name, form.clientWidth, form.clientHeight, {form.rows.begin(), form.rows.end()}};
}

void ShowAll(State& state) {
  for (Row& row : state.rows) row.styles &= ~layout::kHidden;
}

State MainWindow(const char* name, const layout::WindowHeight& height,
                 const layout::CameraArrangement& cameras, bool withCd = false) {
  State state = TableOf(name, layout::kFrmTrimbrook);
  state.clientHeight += height.window - layout::kCompact.window;
  ShowAll(state);
  const bool expanded = height.window == layout::kExpanded.window;
  const bool many = cameras.frame7Width == layout::kThirtyTwoCameras.frame7Width;
  if (!expanded) RowOf(state, IDC_frmTrimbrook_Frame4).styles |= layout::kHidden;
  if (!withCd) RowOf(state, IDC_frmTrimbrook_Command7).styles |= layout::kHidden;
  for (int i = 16; i < 32 && !many; ++i) {
    RowOf(state, IDC_frmTrimbrook_Check1 + i).styles |= layout::kHidden;
    RowOf(state, IDC_frmTrimbrook_Label5 + 1 + i).styles |= layout::kHidden;
  }
  RowOf(state, IDC_frmTrimbrook_Frame3).height = height.frame3;
  RowOf(state, IDC_frmTrimbrook_Frame7).left = cameras.frame7Left;
  RowOf(state, IDC_frmTrimbrook_Frame7).width = cameras.frame7Width;
  RowOf(state, IDC_frmTrimbrook_cmdSet).left = cameras.pictureButtonsLeft;
  RowOf(state, IDC_frmTrimbrook_cmdClear).left = cameras.pictureButtonsLeft;
  RowOf(state, IDC_frmTrimbrook_Command8).left = cameras.command8Left;
  const layout::ButtonArrangement& buttons = withCd ? layout::kWithCd : layout::kWithoutCd;
  RowOf(state, IDC_frmTrimbrook_Command3).left = buttons.command3Left;
  RowOf(state, IDC_frmTrimbrook_Command4).left = buttons.command4Left;
  for (const int id :
       {IDC_frmTrimbrook_Command3, IDC_frmTrimbrook_Command4, IDC_frmTrimbrook_Command7})
    RowOf(state, id).top = height.buttonsTop;
  return state;
}

State ProgressWindow() {
  State state = TableOf("progress", layout::kFrmSaveFile);
  ShowAll(state);
  return state;
}

/// A page of the CD wizard; the instructions of Drag-to-Disc stand lower.
State WizardPage(const char* name, Page page, bool dragToDisc = false) {
  State state = TableOf(name, layout::kFrmSaveToCD);
  const PageLook look = LookOf(page, dragToDisc);
  const auto show = [&](int id, bool shown) {
    std::uint32_t& styles = RowOf(state, id).styles;
    styles = shown ? styles & ~layout::kHidden : styles | layout::kHidden;
  };
  Row& instructions = RowOf(state, IDC_frmSaveToCD_Label1);
  instructions.top = look.instructionsTop;
  instructions.height = look.instructionsHeight;
  show(IDC_frmSaveToCD_Label1, look.instructionsHeight > 0);
  show(IDC_frmSaveToCD_Combo1, look.showsDrives);
  for (const int id : {IDC_frmSaveToCD_Text1, IDC_frmSaveToCD_Check1}) show(id, look.showsFileName);
  for (const int id :
       {IDC_frmSaveToCD_Animation1, IDC_frmSaveToCD_ProgressBar1, IDC_frmSaveToCD_Label3})
    show(id, page == Page::kCopying);
  for (int i = 0; i < kPageButtons; ++i)
    show(IDC_frmSaveToCD_cmdNext + i, look.buttons[static_cast<std::size_t>(i)].visible);
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
    return row.kind != Kind::kLabel && row.kind != Kind::kFrame && row.kind != Kind::kLine &&
           row.kind != Kind::kUpDown && row.kind != Kind::kProgressBar &&
           row.kind != Kind::kAnimation && (row.styles & layout::kNoTabStop) == 0;
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
    testing::Values(MainWindow("compact16", layout::kCompact, layout::kSixteenCameras),
                    MainWindow("compact32", layout::kCompact, layout::kThirtyTwoCameras),
                    MainWindow("expanded16", layout::kExpanded, layout::kSixteenCameras),
                    MainWindow("expanded32", layout::kExpanded, layout::kThirtyTwoCameras),
                    MainWindow("withCd", layout::kCompact, layout::kSixteenCameras, true),
                    ProgressWindow(), WizardPage("welcome", Page::kWelcome),
                    WizardPage("drive", Page::kDrive),
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
