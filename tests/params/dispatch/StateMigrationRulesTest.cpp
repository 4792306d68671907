// Values of older versions that have changed their meaning since.

#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

class StateMigrationRulesTest : public DispatchRig {
 protected:
  /// Dispatches everything, as the restore of a state of some version does.
  void restore(int version) {
    const auto bulk = probe.restoringState();
    probe.migration().version = version;
    for (int index = 0; index < kNumParams; ++index) rig.effect.OnParamChange(index);
    probe.migration().version = 0;
  }
  void load(int paramIdx, double value) { rig.effect.GetParam(paramIdx)->setValue(value); }
};

TEST_F(StateMigrationRulesTest, MenusThatHaveGotAnEntryAreRenumbered) {
  load(kFxTypePre, 18);
  load(kFxTypePre + 1, 17);
  load(kFxTypePost + 3, 20);
  load(kFxTypeFeedback, 13);
  load(kFxTypeFeedback + 1, 12);
  restore(0x1015F);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypePre), 19.0);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypePre + 1), 17.0);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypePost + 3), 21.0);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypeFeedback), 14.0);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypeFeedback + 1), 12.0);
  EXPECT_EQ(probe.position(0).type, 34) << "and the engine runs what the new number means";
}

TEST_F(StateMigrationRulesTest, LaterVersionsAreRenumberedLess) {
  load(kFxTypePre, 18);
  load(kFxTypeFeedback, 13);
  restore(0x10160);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypePre), 18.0);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypeFeedback), 14.0);
  load(kFxTypeFeedback, 13);
  restore(0x10161);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypeFeedback), 13.0);
}

TEST_F(StateMigrationRulesTest, ATappedDelayOnTheMixRouteLosesFeedbackButOnlyTheFirstOne) {
  for (const int slot : {1, 2}) {
    load(kDelayMode + slot, 3);
    load(kDelayRoute + slot, 6);
    load(kFeedback + slot, 100.0);
  }
  restore(0x10161);
  EXPECT_DOUBLE_EQ(valueOf(kFeedback + 1), 70.0);
  EXPECT_DOUBLE_EQ(probe.slot(1).feedback, 0.7);
  EXPECT_DOUBLE_EQ(valueOf(kFeedback + 2), 100.0);
}

TEST_F(StateMigrationRulesTest, OtherModesAndRoutesKeepTheirFeedback) {
  load(kDelayMode, 2);
  load(kDelayRoute, 6);
  load(kDelayMode + 1, 3);
  load(kDelayRoute + 1, 5);
  restore(0x10161);
  EXPECT_DOUBLE_EQ(valueOf(kFeedback), 50.0);
  EXPECT_DOUBLE_EQ(valueOf(kFeedback + 1), 50.0);
}

TEST_F(StateMigrationRulesTest, OldValuesAreHeldInTheirRange) {
  load(kFeedback, 500.0);
  restore(0x10100);
  EXPECT_DOUBLE_EQ(valueOf(kFeedback), 160.0);
}

TEST_F(StateMigrationRulesTest, TheLatestVersionIsTakenAsItIs) {
  load(kFxTypePre, 18);
  load(kDelayMode, 3);
  load(kDelayRoute, 6);
  restore(0);
  EXPECT_DOUBLE_EQ(valueOf(kFxTypePre), 18.0);
  EXPECT_DOUBLE_EQ(valueOf(kFeedback), 50.0);
}

}  // namespace
}  // namespace orvantesco
