#include "params/dispatch/ModulationSources.h"

#include <cstddef>

#include "core/ModulatorOutputs.h"
#include "core/TriggerFlags.h"

namespace orvantesco {

namespace {

constexpr int kFirstLfo = 1;
constexpr int kFirstGate = 5;
constexpr int kFirstEnvelope = 9;
constexpr int kFirstLogic = 11;

template <class Vectors>
const double* vectorAt(const Vectors& vectors, int number) {
  return vectors[static_cast<std::size_t>(number)].data();
}

template <class Flags>
const unsigned char* flagAt(const Flags& flags, int number) {
  return &flags[static_cast<std::size_t>(number)];
}

}  // namespace

RingColour sourceColour(int menuPosition) noexcept {
  if (menuPosition < kFirstLfo || menuPosition >= kSources) return RingColour::None;
  if (menuPosition < kFirstGate) return RingColour::Lfo;
  if (menuPosition < kFirstEnvelope) return RingColour::Gate;
  return menuPosition < kFirstLogic ? RingColour::Envelope : RingColour::Logic;
}

const double* sourcePointer(const ModulatorOutputs& modulators, int menuPosition) noexcept {
  switch (sourceColour(menuPosition)) {
    case RingColour::Lfo:
      return vectorAt(modulators.lfo, menuPosition - kFirstLfo);
    case RingColour::Gate:
      return vectorAt(modulators.gate, menuPosition - kFirstGate);
    case RingColour::Envelope:
      return vectorAt(modulators.envelope, menuPosition - kFirstEnvelope);
    case RingColour::Logic:
      return vectorAt(modulators.logic, menuPosition - kFirstLogic);
    case RingColour::None:
      break;
  }
  return nullptr;
}

const unsigned char* lfoTrigger(const TriggerFlags& triggers, int menuPosition) noexcept {
  switch (menuPosition) {
    case 1:
      return &triggers.quarterPulse;
    case 2:
      return &triggers.barPulse;
    case 3:
      return &triggers.twoBarPulse;
    case 4:
    case 5:
      return flagAt(triggers.envPulse, menuPosition - 4);
    case 6:
    case 7:
    case 8:
    case 9:
      return flagAt(triggers.gateLevelPulse, menuPosition - 6);
    case 10:
    case 11:
    case 12:
    case 13:
      return flagAt(triggers.gateStartPulse, menuPosition - 10);
    default:
      return &triggers.off;
  }
}

const unsigned char* reverseTrigger(const TriggerFlags& triggers, int menuPosition) noexcept {
  switch (menuPosition) {
    case 1:
      return &triggers.barPulse;
    case 2:
    case 3:
      return flagAt(triggers.envPulse, menuPosition - 2);
    default:
      return &triggers.off;
  }
}

}  // namespace orvantesco
