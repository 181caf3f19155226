#include <gtest/gtest.h>

#include "driver/files.h"
#include "driver/trimbrook.h"
#include "tests/support/figure.h"

namespace driver {
namespace {

TEST(BigRecording, ItsLastBlocksAreSaved) {
  constexpr int kBlocks = 51'200;
  const std::string source = Recording("100GiB.60D");
  const Trimbrook program;
  program.OpenSource(source);
  EXPECT_EQ(program.Text(IDC_frmTrimbrook_Text3), "102400");
  program.At(IDC_frmTrimbrook_Slider1).Press(VK_END);
  while (program.First() > kBlocks - 2) program.At(IDC_frmTrimbrook_Slider1).Press(VK_LEFT);
  EXPECT_EQ(program.Last(), kBlocks);
  EXPECT_EQ(program.Text(IDC_frmTrimbrook_Text5), "1/1/1990 7:06:38 AM----1/1/1990 7:08:55 AM");

  program.ChooseTarget(InWork("last blocks.60D"));
  program.SaveAndLeave();
  EXPECT_TRUE(HoldsBlocks(InWork("last blocks.60D"), source, kBlocks - 2, kBlocks));

  program.ChooseCameras({2});
  program.ChooseTarget(InWork("last images.60D"));
  program.SaveAndLeave();
  CheckLater({"--compare", source, "--cameras", "2", "--blocks", "51198-51200",
              InWork("last images.60D")});
  PrintFigure(2, "saves compared");
}

}  // namespace
}  // namespace driver
