#include <gmock/gmock.h>

#include <algorithm>

#include "driver/files.h"
#include "driver/trimbrook.h"

namespace driver {
namespace {

using testing::ElementsAre;

// When the blocks of "day.60D" start and end.
constexpr const char* kStarts[] = {"1/31/2003 3:04:05 PM", "1/31/2003 3:05:31 PM",
                                   "1/31/2003 3:07:01 PM"};
constexpr const char* kEnds[] = {"1/31/2003 3:05:30 PM", "1/31/2003 3:07:00 PM",
                                 "1/31/2003 3:08:26 PM"};

/// Where a slider at its left has its thumb, in pixels across and down.
constexpr int kInThumb = 12;

/// Moves the mouse with its button held over a slider, from the left to the right.
void DragAcross(const Window& slider) {
  constexpr int kStep = 20;
  const RECT place = slider.Place();
  for (int x = kInThumb; x < place.right - place.left; x += kStep)
    PostMessageW(slider.handle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, kInThumb));
}

class Range : public testing::Test {
 protected:
  void ExpectBlocks(int first, int last) {
    EXPECT_EQ(program_.First(), first);
    EXPECT_EQ(program_.Last(), last);
    EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text4), std::to_string((last - first + 1) * 2));
    EXPECT_EQ(program_.Text(IDC_frmTrimbrook_Text5),
              std::string(kStarts[first - 1]) + "----" + kEnds[last - 1]);
  }
  /// What stands in these boxes.
  std::vector<std::string> TimeFrom(int firstBox) {
    return program_.Texts({firstBox, firstBox + 3, firstBox + 6});
  }

  Trimbrook program_;
  const std::string path_ = Recording("day.60D");
};

TEST_F(Range, SlidersChooseBlocksAndCannotPassEachOther) {
  program_.OpenSource(path_);
  program_.At(IDC_frmTrimbrook_Slider1).Press(VK_RIGHT);
  ExpectBlocks(2, 3);
  program_.At(IDC_frmTrimbrook_Slider2).PressAndGoOn(VK_HOME);
  EXPECT_EQ(program_.AnswerMessage(), Refusal("The End Time should be later than the Start Time!"));
  ExpectBlocks(2, 2);
  program_.At(IDC_frmTrimbrook_Slider1).PressAndGoOn(VK_END);
  EXPECT_EQ(program_.AnswerMessage(),
            Refusal("The Start Time should be earlier than the Ending Time!"));
  ExpectBlocks(2, 2);

  // Nor by the mouse, and that is told once.
  program_.ChooseBlocks(1, 2);
  const Window slider = program_.At(IDC_frmTrimbrook_Slider1);
  PostMessageW(slider.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(kInThumb, kInThumb));
  DragAcross(slider);
  EXPECT_EQ(program_.AnswerMessage(),
            Refusal("The Start Time should be earlier than the Ending Time!"));
  DragAcross(slider);
  program_.Settle();
  EXPECT_FALSE(program_.ShowsDialog());
  ExpectBlocks(2, 2);
}

TEST_F(Range, TheCustomRangeUnfoldsTheWindowUpwards) {
  RECT area = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  // 15 twips are a pixel here.
  constexpr LONG kRise = 1950 / 15;
  constexpr LONG kHeight = 11205 / 15;
  for (const LONG top : {area.top + 300, area.bottom - 500}) {
    SetWindowPos(program_.main().handle(), nullptr, 100, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const RECT before = program_.main().Place();
    EXPECT_FALSE(program_.At(IDC_frmTrimbrook_Frame4).IsShown());
    program_.At(IDC_frmTrimbrook_CheckCTRS).Click();
    const RECT unfolded = program_.main().Place();
    EXPECT_TRUE(program_.At(IDC_frmTrimbrook_Frame4).IsShown());
    EXPECT_EQ(unfolded.top, std::min(before.top - kRise, area.bottom - kHeight));
    EXPECT_EQ(unfolded.bottom - unfolded.top, kHeight);
    program_.At(IDC_frmTrimbrook_CheckCTRS).Click();
    EXPECT_EQ(program_.main().Place().top, before.top);
    EXPECT_EQ(program_.main().Place().bottom, before.bottom);
  }
}

// What was typed is brought into range when its box is left.
TEST_F(Range, ConfirmTakesWhatTheCustomRangeShows) {
  program_.OpenSource(path_);
  program_.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program_.TypeTime(IDC_frmTrimbrook_Text8, {"99", "", "60"});
  program_.Focus(IDC_frmTrimbrook_Text11);
  EXPECT_THAT(TimeFrom(IDC_frmTrimbrook_Text8), ElementsAre("23", "0", "59"));
  program_.TypeTime(IDC_frmTrimbrook_Text8, {"15", "5", "32"});
  program_.TypeTime(IDC_frmTrimbrook_Text11, {"15", "7", "0"});
  program_.At(IDC_frmTrimbrook_Command5).Click();
  EXPECT_FALSE(program_.ShowsDialog());
  ExpectBlocks(2, 2);
  program_.At(IDC_frmTrimbrook_Command6).Click();
  ExpectBlocks(1, 3);

  program_.TypeTime(IDC_frmTrimbrook_Text11, {"16", "7", "5"});
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command5),
            Refusal("The End Time you selected falls outside the time range of the sorce file. "
                    "Please select a new time!"));
  EXPECT_THAT(TimeFrom(IDC_frmTrimbrook_Text11), ElementsAre("15", "8", "26"));
}

// Nothing is asked about what is not seen, and nothing twice.
TEST_F(Range, ASaveAsksAboutTimesThatWereNotConfirmed) {
  const Message question = Refusal(
      "The custom time range has been changed but not confirmed. Do you want to confirm it now?");
  const std::string target = InWork("typed.60D");
  program_.OpenSource(path_);
  program_.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program_.TypeTime(IDC_frmTrimbrook_Text8, {"15", "5", "32"});
  EXPECT_EQ(program_.MessageAfterClick(IDC_frmTrimbrook_Command3),
            Refusal("Please select the target file first!"));
  program_.ChooseTarget(target);
  const auto answer = [&](int button) {
    program_.At(IDC_frmTrimbrook_Command3).ClickAndGoOn();
    AwaitFocus(program_.AwaitShown(kDialogClass).Control(IDYES));
    EXPECT_EQ(program_.AnswerMessage(button), question);
  };
  answer(IDCANCEL);
  EXPECT_FALSE(FileExists(target));
  ExpectBlocks(1, 3);

  program_.TypeTime(IDC_frmTrimbrook_Text8, {"1", "5", "32"});
  answer(IDYES);
  EXPECT_EQ(program_.AnswerMessage(),
            Refusal("The Start Time you selected falls outside the time range of the sorce file. "
                    "Please select a new time!"));
  AwaitFocus(program_.At(IDC_frmTrimbrook_Calendar1));

  program_.TypeTime(IDC_frmTrimbrook_Text11, {"15", "7", "0"});
  answer(IDNO);
  program_.FinishSave();
  EXPECT_TRUE(HoldsBlocks(target, path_, 1, 3));
  answer(IDYES);
  program_.FinishSave();
  EXPECT_TRUE(HoldsBlocks(target, path_, 1, 2));
  program_.SaveAndLeave();
  program_.TypeTime(IDC_frmTrimbrook_Text11, {"15", "6", "0"});
  program_.At(IDC_frmTrimbrook_CheckCTRS).Click();
  program_.SaveAndLeave();
}

}  // namespace
}  // namespace driver
