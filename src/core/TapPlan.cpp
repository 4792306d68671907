#include "core/TapPlan.h"

#include <algorithm>

namespace orvantesco {

namespace {

bool maskHolds(const Shared<std::uint16_t>& mask, int tap) { return (mask.get() >> tap) & 1; }

void planGains(const TapControls& controls, std::size_t step, double wetShare, PlannedTap& tap) {
  const double level =
      std::clamp(controls.levelStep[step] + controls.levelStepInverse, 0.0, 1.0) * wetShare;
  const double pan = controls.panStep[step] * controls.panWidth;
  tap.gainA = std::min(1.0 + pan, 1.0) * level;
  tap.gainB = std::min(1.0 - pan, 1.0) * level;
}

}  // namespace

TapPlan planTaps(const TapControls& controls, double intervalSamples, double wetShare,
                 double longestDelay) noexcept {
  TapPlan plan;
  plan.lastTap = controls.lastTap;
  plan.feedbackTap = controls.feedbackTap;
  plan.panMode = controls.panMode;
  plan.swell = planSwell(controls.swell);
  plan.count = std::max(plan.lastTap, plan.feedbackTap) + 1;
  const double inverse = controls.timeStepInverse;
  const double swing = controls.swing;
  double accum = 0.0;
  for (int t = 0; t < plan.count; ++t) {
    const auto step = static_cast<std::size_t>(t);
    PlannedTap& tap = plan.taps[step];
    const bool heard = t <= plan.lastTap;
    tap.soundsL = heard && plan.panMode != kPanRight && maskHolds(controls.tapMask[0], t);
    tap.soundsR = heard && plan.panMode != kPanLeft && maskHolds(controls.tapMask[1], t);
    const double factor = std::min(inverse + (1.0 - inverse) * controls.timeStep[step], 1.0);
    accum += factor * intervalSamples * (t % 2 == 0 ? 1.0 + swing : 1.0 - swing);
    tap.delay = accum;
    if (tap.soundsL || tap.soundsR) planGains(controls, step, wetShare, tap);
    const bool reachable = accum <= longestDelay;
    const bool needed = t == plan.lastTap || t == plan.feedbackTap;
    tap.readL = reachable && (tap.soundsL || needed);
    tap.readR = reachable && (tap.soundsR || needed);
  }
  return plan;
}

TapEchoes planSwell(double swell) noexcept {
  TapEchoes plan;
  const double count = swell * 16.0;
  const double spacing = 0.45 / count;
  const double reach = swell * 0.9 + 0.1;
  for (int k = 1; k <= count; ++k) {
    const double x = k * spacing;
    TapEcho& echo = plan.list[static_cast<std::size_t>(plan.count++)];
    echo.back = (8.0 * x) * (8.0 * x) * 500.0 * reach;
    echo.gain = 0.45 - x;
  }
  return plan;
}

}  // namespace orvantesco
