#include "control/waveguide_controls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel_rig.h"

namespace amp::test {
namespace {

struct WaveguideTest : ::testing::Test {
  PanelRig r;
  WaveguideControls w{r.ctx};
  void SetUp() override { w.Wire(); }
};

TEST_F(WaveguideTest, ConfigurationSendsTheEntrysNumberNotItsIndex) {
  for (int i = 0; i < r.f.cmbWgCfg.ListCount(); ++i) r.f.cmbWgCfg.SetListIndex(i);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"PC0", "PC1", "PC2", "PC3", "PC4", "PC6"}));

  // Clearing the selection is not a configuration: no bare "PC".
  r.f.cmbWgCfg.SetListIndex(-1);
  EXPECT_EQ(r.s.sent.size(), 6u);
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(WaveguideTest, SwitchesSendTheirOwnPositionCommands) {
  r.f.cmbWgSw1.SetListIndex(1);
  r.f.cmbWgSw1.SetListIndex(0);
  r.f.cmbWgSw2.SetListIndex(1);
  r.f.cmbWgSw2.SetListIndex(0);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"U0", "U1", "U2", "U3"}));

  // An entry other than A or B has no command.
  r.f.cmbWgSw1.AddItem("C");
  r.f.cmbWgSw1.SetListIndex(2);
  EXPECT_EQ(r.s.sent.size(), 4u);
}

TEST_F(WaveguideTest, AutomaticModeFollowsTheCheckBox) {
  r.f.chkAutoMode.SetValue(1);
  r.f.chkAutoMode.SetValue(0);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"UA", "UM"}));
}

TEST_F(WaveguideTest, APollWritingTheGroupSendsNothing) {
  // Every control of the group moves one way, then the other (what each
  // shows is the summary display's).
  r.d.SetSummaryStatus(Status({4, 0, 16 | 4 | 1, 6}));
  r.d.SetSummaryStatus(Status({4, 0, 8 | 2, 1}));
  ASSERT_EQ(r.f.cmbWgCfg.ListIndex(), 1);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
  // The operator's next choice does go out.
  EXPECT_FALSE(r.st.gInPanelUpdate);
  r.f.cmbWgCfg.SetListIndex(5);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"PC6"}));
}

}  // namespace
}  // namespace amp::test
