#include "fx/QLMFilter.h"

#include <gtest/gtest.h>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

/// Opens the control state of the base.
class OpenFilter : public QLMFilter {
 public:
  using QLMFilter::QLMFilter;
  void set(double cutoffValue, double resonanceValue, double gainValue) {
    cutoffNow = cutoffValue;
    resonanceNow = resonanceValue;
    gainNow = gainValue;
  }
  double cutoffKnob() const { return cutoff; }
  double firstCutoff() { return smoothedCutoff(); }
  double resonanceAmount() const { return modulatedResonance(); }
  double offset() const { return qOffset; }
  double scale() const { return qScale; }
  void spreadTo(double value) { setSpread(value); }
};

TEST(QLMFilter, tellsOneChangedControlAtATimeInOrder) {
  OpenFilter filter;
  EXPECT_FALSE(filter.controlsChanged());
  filter.set(0.5, 0.25, 0.75);
  EXPECT_TRUE(filter.controlsChanged());
  EXPECT_TRUE(filter.controlsChanged());
  EXPECT_TRUE(filter.controlsChanged());
  EXPECT_FALSE(filter.controlsChanged());
  filter.set(0.5, 0.3, 0.8);
  EXPECT_TRUE(filter.controlsChanged());
  EXPECT_TRUE(filter.controlsChanged());
  EXPECT_FALSE(filter.controlsChanged());
}

TEST(QLMFilter, startsOffAndUnscaled) {
  OpenFilter filter;
  EXPECT_EQ(filter.filterMode(), kFilterOff);
  EXPECT_EQ(filter.offset(), 1.0);
  EXPECT_EQ(filter.scale(), 1.0);
  filter.setQOffset(0.05);
  filter.setQScale(4.0);
  filter.setMode(7);
  EXPECT_EQ(filter.offset(), 0.05);
  EXPECT_EQ(filter.scale(), 4.0);
  EXPECT_EQ(filter.filterMode(), 7);
}

TEST(QLMFilter, theCutoffKnobIsHeldAndInSinglePrecision) {
  OpenFilter filter;
  filter.setCutoff(0.3);
  EXPECT_EQ(filter.cutoffKnob(), static_cast<double>(0.3F));
  filter.setCutoff(7.0);
  EXPECT_EQ(filter.cutoffKnob(), 1.0);
  filter.setCutoff(-7.0);
  EXPECT_EQ(filter.cutoffKnob(), 0.0);
}

TEST(QLMFilter, spreadAndItsModulationMoveTheChannelsApart) {
  const double source[32] = {0.5};
  const double depth = 0.4;
  for (bool isRight : {false, true}) {
    OpenFilter filter(isRight);
    filter.setCutoff(0.5);
    filter.spreadTo(-0.5);
    filter.setModSource(2, source);
    filter.setModDepth(2, &depth);
    const double sign = isRight ? -1.0 : 1.0;
    EXPECT_DOUBLE_EQ(filter.firstCutoff(), Smoother(1.0).tick(0.5 + sign * (0.2 - 0.25)));
  }
}

TEST(QLMFilter, theModulatedResonanceStaysWithinItsRange) {
  OpenFilter filter;
  double source[32] = {1.0};
  const double depth = 0.8;
  filter.setResonance(0.5F);
  EXPECT_EQ(filter.resonanceAmount(), 0.5);
  filter.setModSource(1, source);
  filter.setModDepth(1, &depth);
  EXPECT_EQ(filter.resonanceAmount(), 1.0);
  source[0] = -1.0;
  EXPECT_EQ(filter.resonanceAmount(), 0.0);
  source[0] = 0.25;
  EXPECT_DOUBLE_EQ(filter.resonanceAmount(), 0.7);
  filter.setModSource(1, nullptr);
  EXPECT_EQ(filter.resonanceAmount(), 0.5);
}

}  // namespace
}  // namespace orvantesco
