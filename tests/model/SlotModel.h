#pragma once

#include <array>
#include <vector>

#include "model/DelayModel.h"
#include "model/ModelFilters.h"
#include "model/SlotValues.h"

namespace orvantesco::model {

/// What one step of 32 samples brings to all slots.
struct StepContext {
  StereoBlock in;            ///< faded and band-limited input
  StereoBlock masterReturn;  ///< silent: no master effect is modelled
  StereoBlock wet;           ///< what the slots add up to
  double fadeGain = 1.0;
  double secondsPerBeat = 0.5;
  double timeScale = 1.0;
  double feedbackMaster = 0.0;
  bool barPulse = false;
};

/// One of the four slots, without effects and modulation.
class SlotModel {
 public:
  /// Under `monoHost` the host gives one channel only.
  SlotModel(int index, const Rates& rates, bool monoHost);

  /// All settings anew. `changed` names the family that was written, since some writes do
  /// something at once (an emptied ring, a jump of the glide); empty for a fresh instance.
  void apply(const Settings& bank, const std::string& changed);
  void setTapMasks(unsigned left, unsigned right);

  /// Reads; `before` are the slots 0..index-1 of this step.
  void process(StepContext& step, const std::vector<SlotModel*>& before);
  /// Writes; runs when all slots have read.
  void writeFeedback(const StepContext& step, const std::vector<SlotModel*>& all);

  bool isOn() const { return values.on; }
  /// What a later slot hears of this one: silence when it is off or its output is parked.
  StereoBlock directOut() const;

 private:
  void takeInput(const StepContext& step, const std::vector<SlotModel*>& before);
  void applyOffset();
  void findTimesAndFeedback(const StepContext& step);
  void feedDelay();
  void readDelay(const StepContext& step);
  void readPlain();
  void routeFeedback();
  void readTaps(const StepContext& step);
  void readTapSide(int tap, int side, double accum);
  void addSwell(Block& work, int side, double accum) const;
  void panAndLevel(const StepContext& step);
  void addToWet(StepContext& step) const;
  void reactTo(const std::string& changed, double directInPercent);
  void reactToTime(const std::string& changed);
  void silenceStages();
  void resetDelays();

  int slot = 0;
  Rates rates;
  bool monoHost = false;
  SlotValues values;
  std::array<unsigned, 2> tapMask{0xFFFF, 0xFFFF};
  double directIn = 0.0;
  bool directOutParked = false;
  bool monoFallback = false;

  Glide inputGlide, panGlide, levelGlide;
  std::array<DelayModel, 2> delays;
  std::array<std::vector<double>, 2> offsetLine;
  std::array<DcBlocker, 2> dc;

  StereoBlock stageInput, stagePre, stageDelay, delayOut, stagePost, stageOut;
  StereoBlock delayFeed, feedbackVec;
  double delayL = 0.0, delayR = 0.0;  ///< samples, with spread
  double plainL = 0.0, plainR = 0.0;  ///< samples, without
  double feedbackL = 0.0, feedbackR = 0.0;
};

}  // namespace orvantesco::model
