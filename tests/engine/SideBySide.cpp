#include "engine/SideBySide.h"

#include <algorithm>
#include <cstdint>

namespace orvantesco {

model::Settings baseSettings() {
  return {{"Dry Level", 0},        {"Wet Level", 100},        {"Main ModDepth", 0},
          {"Input 1", 3},          {"Input Gain 1", 0},       {"Level 1", 0},
          {"Feedback 1", 0},       {"Timebase 1", 0},         {"Delay TimeL 1", 71.3},
          {"Delay TimeR 1", 93.7}, {"Delay Lopass 1", 20000}, {"Delay Hipass 1", 20}};
}

model::Settings with(model::Settings base, const model::Settings& changes) {
  for (const auto& [name, value] : changes) base[name] = value;
  return base;
}

void SideBySide::set(const std::string& name, double value) {
  engine.set(name, value);
  model.set(name, value);
}

void SideBySide::setTempo(double tempo) {
  engine.setTempo(tempo);
  model.setTempo(tempo);
}

void SideBySide::setTapMasks(int slot, unsigned left, unsigned right) {
  engine.object().setTapMasks(
      slot, {static_cast<std::uint16_t>(left), static_cast<std::uint16_t>(right)});
  model.setTapMasks(slot, left, right);
}

double SideBySide::difference(const model::Signal& input) {
  const model::Signal heard = engine.render(input);
  lastPeak = model::peak(heard);
  return model::worstDifference(heard, model.render(input));
}

double SideBySide::settledDifference(const model::Signal& input) {
  const double before = difference(model::silence(steps(0.6)));
  return std::max(before, difference(input));
}

}  // namespace orvantesco
