// The read-outs of the effects' parameters, for every type that a stage offers, all knobs at 50 %.

#include "params/dispatch/DispatchRig.h"

namespace orvantesco {
namespace {

struct TypeReadouts {
  int position;   ///< 0 PRE of the first slot, 4 FB
  int listIndex;  ///< in the stage's menu
  std::array<const char*, 5> readouts;
};

// clang-format off
const TypeReadouts kTypes[] = {
    {0, 1, {"FREQ SHIFT|0.00| Hz",
            "FREQSHIFT SCALE|100| x",
            "FRQ SHIFT FB|50.00| %",
            "FRQ SHIFT SPREAD|0.00| %",
            "FREQSHIFT MIX|50.00| %"}},
    {0, 2, {"RINGMOD FREQ|312.59| Hz",
            "RINGMOD SHAPE|50.00| %",
            "RINGMOD WIDTH|50.00| %",
            "RINGMOD SPREAD|0.00| %",
            "RINGMOD MIX|50.00| %"}},
    {0, 3, {"PHASE BASE|50.00| %",
            "PHASE DEPTH|50.00| %",
            "PHASE STAGES|5|",
            "PHASE SPREAD|0.00| %",
            "PHASE FEEDBACK|50.00| %"}},
    {0, 4, {"PITCH COARSE|0| ST",
            "PITCH FINE|0.00| CNT",
            "PITCH BUF SIZE|25.75| ms",
            "PITCH SPREAD|0.00| %",
            "PITCH SHIFT MIX|50.00| %"}},
    {0, 5, {"PITCH1 COARSE |0| ST",
            "PITCH2 COARSE|0| ST",
            "PITCH BUF SIZE|25.75| ms",
            "PITCH DETUNE|50.00| %",
            "PITCH SHIFT MIX|50.00| %"}},
    {0, 6, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER RES|50.00| %",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {0, 7, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER RES|50.00| %",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {0, 8, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER RES|50.00| %",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {0, 9, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER RES|50.00| %",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {0, 10, {"LOFI AMOUNT |50.00| %",
            "LOFI FILTER FREQ|1000.00| HZ",
            "LOFI RES|50.00| %",
            "LOFI FILTER SPREAD|0.00| %",
            "LOFI MIX |50.00| %"}},
    {0, 11, {"LOFI DRIVE |50.00|",
            "LOFI NOISE|50.00| %",
            "LOFI DOWNSAMPLE|50.00| %",
            "LOFI BITCRUSH|50.00| %",
            "LOFI MIX |50.00| %"}},
    {0, 12, {"SHAPE MODE|SIN2|",
            "GAIN|12.00| dB",
            "FILTER FREQ|1000.00| Hz",
            "FILTER Q|49.90| %",
            "SHAPE FILTER SPREAD|0.00| %"}},
    {0, 13, {"FILTER FREQ|1000.00| HZ",
            "FILTER Q|50.00| %",
            "FILTER SPREAD|0.00| %",
            "FILTER MODE|BP1|",
            "FILTER MIX|50.00| %"}},
    {0, 14, {"FILTER FREQ|1000.00| HZ",
            "FILTER Q|50.00| %",
            "FILTER SPREAD|0.00| %",
            "FILTER MODE|HP|",
            "FILTER MIX|50.00| %"}},
    {0, 15, {"FILTER FREQ|1000.00| HZ",
            "FILTER Q|50.00| %",
            "FILTER SPREAD|0.00| %",
            "FILTER MODE|BP|",
            "FILTER MIX|50.00| %"}},
    {0, 16, {"FILTER FREQ|1000.00| HZ",
            "FILTER Q|50.00| %",
            "FILTER SPREAD|0.00| %",
            "PEAK GAIN|0| dB",
            "DIM|50.00| %"}},
    {0, 17, {"FILTER FREQ|1000.00| HZ",
            "FILTER FREQ|1000.00| HZ",
            "GAIN|50.00| %",
            "FILTER MODE|24db-P|",
            "FILTER MIX|50.00| %"}},
    {0, 18, {"HP FREQ|1000.00| HZ",
            "HP SLOPE|36dB|",
            "LP FREQ|1000.00| HZ",
            "LP SLOPE|36db|",
            "FILTER MIX|50.00| %"}},
    {0, 19, {"PHASEBP FILTER FREQ|1000.00| HZ",
            "FILTER Q|50.00| %",
            "FILTER SPREAD|0.00| %",
            "FILTER POLES|5|",
            "FRQ SHIFT SPREAD|50.00| %"}},
    {0, 20, {"COMB FRQ|100.00| Hz",
            "COMB FEEDBACK|50.00| %",
            "COMB HIPASS|1000.00| Hz",
            "COMB LOPASS|1000.00| Hz",
            "COMB SPREAD|0.00| %"}},
    {0, 21, {"VOWEL POS|50.00| %",
            "VOWEL SET|3|",
            "VOWEL SPREAD|0.00| %",
            "VOWEL GAIN|12.00| dB",
            "VOWEL DIM|50.00| %"}},
    {0, 22, {"COMP THRESHOLD|-12.50| dB",
            "COMP RATIO|2.12| : 1",
            "COMP ATTACK|50.75| ms",
            "COMP RELEASE|510.00| ms",
            "COMP GAIN|12.00| dB"}},
    {4, 1, {"FREQ SHIFT|0.00| Hz",
            "FREQSHIFT SCALE|100| x",
            "FRQ SHIFT FB|50.00| %",
            "FRQ SHIFT SPREAD|0.00| %",
            "FREQSHIFT MIX|50.00| %"}},
    {4, 2, {"RINGMOD FREQ|312.59| Hz",
            "RINGMOD SHAPE|50.00| %",
            "RINGMOD WIDTH|50.00| %",
            "RINGMOD SPREAD|0.00| %",
            "RINGMOD MIX|50.00| %"}},
    {4, 3, {"PITCH COARSE|0| ST",
            "PITCH FINE|0.00| CNT",
            "PITCH BUF SIZE|25.75| ms",
            "PITCH SPREAD|0.00| %",
            "PITCH SHIFT MIX|50.00| %"}},
    {4, 4, {"PITCH1 COARSE |0| ST",
            "PITCH2 COARSE|0| ST",
            "PITCH BUF SIZE|25.75| ms",
            "PITCH DETUNE|50.00| %",
            "PITCH SHIFT MIX|50.00| %"}},
    {4, 5, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER MODE|HP|",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {4, 6, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER MODE|HP|",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {4, 7, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER MODE|HP|",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {4, 8, {"SHAPE AMOUNT |50.00| %",
            "SHAPER FILTER FREQ|1000.00| HZ",
            "FILTER MODE|HP|",
            "SHAPE FILTER SPREAD|0.00| %",
            "SHAPE MIX |50.00| %"}},
    {4, 9, {"LOFI AMOUNT |50.00| %",
            "LOFI FILTER FREQ|1000.00| HZ",
            "FILTER MODE|HP|",
            "LOFI FILTER SPREAD|0.00| %",
            "LOFI MIX |50.00| %"}},
    {4, 10, {"LOFI DRIVE |50.00|",
            "LOFI NOISE|50.00| %",
            "LOFI DOWNSAMPLE|50.00| %",
            "LOFI BITCRUSH|50.00| %",
            "LOFI MIX |50.00| %"}},
    {4, 11, {"FILTER FREQ|1000.00| HZ",
            "FILTER SLOPE|36dB|",
            "FILTER SPREAD|0.00| %",
            "FILTER MODE|BP|",
            "FILTER MIX|50.00| %"}},
    {4, 12, {"FILTER FREQ|1000.00| HZ",
            "FILTER FREQ|1000.00| HZ",
            "GAIN|50.00| %",
            "FILTER MODE|24db-P|",
            "FILTER MIX|50.00| %"}},
    {4, 13, {"HP FREQ|1000.00| HZ",
            "HP SLOPE|36dB|",
            "LP FREQ|1000.00| HZ",
            "LP SLOPE|36db|",
            "FILTER MIX|50.00| %"}},
    {4, 14, {"COMP THRESHOLD|-12.50| dB",
            "COMP RATIO|2.12| : 1",
            "COMP ATTACK|50.75| ms",
            "COMP RELEASE|510.00| ms",
            "COMP GAIN|12.00| dB"}},
};
// clang-format on

using EffectReadoutTest = DispatchRig;

TEST_F(EffectReadoutTest, EveryTypeNamesItsFiveParameters) {
  for (const auto& [position, listIndex, readouts] : kTypes) {
    chooseEffect(position, listIndex);
    for (int p = 0; p < 5; ++p) {
      const int index = fxParamIndex(p, FxParamKind::value, position);
      move(index, 50.0);
      EXPECT_EQ(readout(), readouts[static_cast<std::size_t>(p)])
          << "entry " << listIndex << " at position " << position;
    }
  }
}

TEST_F(EffectReadoutTest, DepthsBearTheNameOfTheirParameter) {
  chooseEffect(0, 1);
  move(fxParamIndex(0, FxParamKind::modDepth, 0), -50.0);
  EXPECT_EQ(readout(), "FREQ SHIFT MOD|-12.50| %");
  move(fxParamIndex(4, FxParamKind::modDepth, 0), 100.0);
  EXPECT_EQ(readout(), "FREQSHIFT MIX MOD|100.00| %");
}

TEST_F(EffectReadoutTest, SourcesBearTheNameOfTheirParameterAndShowTheSource) {
  chooseEffect(0, 1);
  move(fxParamIndex(2, FxParamKind::modSource, 0), 9.0);
  EXPECT_EQ(readout(), "FRQ SHIFT FB|ENV1|");
}

TEST_F(EffectReadoutTest, StageAndSlotStandBesideTheValue) {
  chooseEffect(0, 1);
  chooseEffect(5, 1);
  chooseEffect(11, 1);
  move(fxParamIndex(1, FxParamKind::value, 0), 0.0);
  EXPECT_TRUE(editor.saw("showReadout 152 FREQSHIFT SCALE|10| x| PR|\u2022"));
  move(fxParamIndex(1, FxParamKind::value, 5), 100.0);
  EXPECT_TRUE(editor.saw("showReadout 157 FREQSHIFT SCALE|1000| x| FB|\u2022\u2022"));
  move(fxParamIndex(1, FxParamKind::value, 11), 99.0);
  EXPECT_TRUE(editor.saw("showReadout 163 FREQSHIFT SCALE|100| x| PO|\u2022\u2022\u2022\u2022"));
}

TEST_F(EffectReadoutTest, OtherParametersShowNoStage) {
  move(kWidth, 50.0);
  EXPECT_TRUE(editor.saw("showReadout 32 WIDTH|50.00| %||"));
}

TEST_F(EffectReadoutTest, SelectionsShowTheirLabelOnTheKnob) {
  chooseEffect(0, 12);
  const int mode = fxParamIndex(0, FxParamKind::value, 0);
  const std::vector<const char*> labels{"SATURATE", "TUBE", "RECT",  "SIN1",
                                        "SIN2",     "SIN3", "ASYM1", "ASYM2"};
  for (std::size_t entry = 0; entry < labels.size(); ++entry) {
    editor.clear();
    set(mode, static_cast<double>(entry) * 100.0 / 7.0);
    EXPECT_TRUE(editor.saw("setKnobText 116 " + std::string(labels[entry]))) << entry;
  }
}

TEST_F(EffectReadoutTest, WithoutAnEffectThereIsNone) {
  move(fxParamIndex(0, FxParamKind::value, 3), 50.0);
  EXPECT_EQ(readout(), "");
  move(fxParamIndex(0, FxParamKind::modDepth, 3), 50.0);
  EXPECT_EQ(readout(), "");
}

}  // namespace
}  // namespace orvantesco
