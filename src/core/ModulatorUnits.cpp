#include "core/ModulatorUnits.h"

namespace orvantesco {

void ModulatorUnits::seed(std::uint32_t start) noexcept {
  for (LfoUnit& unit : lfo) unit.block.seed(start++);
  for (GateUnit& unit : gate) unit.block.seed(start++);
}

void ModulatorUnits::restart(std::uint32_t seedStart) noexcept {
  seed(seedStart);
  for (LfoUnit& unit : lfo) {
    unit.block.restart();
    unit.wave = -1;
  }
  for (GateUnit& unit : gate) {
    unit.block.restart();
    unit.previous = 0.0;
  }
  for (EnvelopeUnit& unit : envelope) {
    unit.block.clearMemories();
    unit.previous = 0.0;
  }
  for (LogicUnit& unit : logic) unit.restart();
  main.restart();
}

void ModulatorUnits::rateChanged() noexcept {
  for (LfoUnit& unit : lfo) unit.block.rateChanged();
  for (GateUnit& unit : gate) unit.block.rateChanged();
  for (EnvelopeUnit& unit : envelope) {
    unit.block.rateChanged();
    unit.previous = 0.0;
  }
  for (LogicUnit& unit : logic) unit.rateChanged();
  clearSignals();
}

void ModulatorUnits::clearSignals() noexcept {
  // Its level stays, and so does what it is compared with: a clearing must not look like an attack.
  for (EnvelopeUnit& unit : envelope) unit.block.reset();
}

}  // namespace orvantesco
