#include "core/ModulatorUnits.h"

namespace orvantesco {

void ModulatorUnits::seed(std::uint32_t start) noexcept {
  for (LfoUnit& unit : lfo) unit.block.seed(start++);
  for (GateUnit& unit : gate) unit.block.seed(start++);
}

void ModulatorUnits::rateChanged() noexcept {
  for (LfoUnit& unit : lfo) unit.block.rateChanged();
  for (GateUnit& unit : gate) unit.block.rateChanged();
  for (EnvelopeUnit& unit : envelope) unit.block.rateChanged();
  for (LogicUnit& unit : logic) unit.rateChanged();
  clearSignals();
}

void ModulatorUnits::clearSignals() noexcept {
  for (EnvelopeUnit& unit : envelope) {
    unit.block.reset();
    unit.previous = 0.0;
  }
}

}  // namespace orvantesco
