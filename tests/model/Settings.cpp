#include "model/Settings.h"

#include <utility>
#include <vector>

namespace orvantesco::model {

namespace {

using Family = std::pair<const char*, double>;

/// Families of one parameter for each slot, with the default that all four share.
const std::vector<Family> kSlotFamilies = {
    {"SlotOn", 0},  // slot 1 is on, see below
    {"DelayOn", 1},
    {"Direct Out", 3},
    {"Input", 0},
    {"Direct In", 0},
    {"PanPosition", 0},
    {"Width", 100},
    {"Output Mode", 0},
    {"L/R Offset", 0},
    {"Input Gain", -3},
    {"Panning", 0},
    {"Feedback", 50},
    {"Level", -3},
    {"M-FX Send", 50},
    {"Master FX Source", 4},
    {"Modulation", 100},
    {"Delay Mode", 0},
    {"Delay Route", 0},
    {"DelayTaps", 7},
    {"DelayTap FB", 0},
    {"FBProportional", 0},
    {"Timebase", 2},
    {"TapTimebase", 0},
    {"DelayFactorL", 4},
    {"DelayFactorR", 4},
    {"Delay TimeL", 500},
    {"Delay TimeR", 500},
    {"Tap Time Step Depth", 100},
    {"Tap Level Step Depth", 100},
    {"Tap Pan Width", 100},
    {"Tap Pan Mode", 0},
    {"DelayTap DI Out", 0},
    {"Delay Taps Time", 50},
    {"Delay Taps Swell", 0},
    {"Delay Taps Swing", 0},
    {"Delay Spread", 0},
    {"Delay Lopass", 7500},
    {"Delay Hipass", 20},
    {"Grain Size", 100},
    {"Grain Speed", 0},
    {"Grain Position", 0},
    {"Grain Fade", 0},
    {"Reverse Delay Trigger", 0},
    {"Reverse X-Fade", 10},
    {"FB Matrix", 0},
    {"Slot1 FB", 0},
    {"Slot2 FB", 0},
    {"Slot3 FB", 0},
    {"Slot4 FB", 0},
};

const std::vector<Family> kGlobals = {
    {"MasterFX", 0},        {"Main ModDepth", 50}, {"Feedback Master", 0}, {"Delay Time Scale", 0},
    {"MasterFX Level", 75}, {"Limiter On", 0},     {"Wet Level", 75},      {"Dry Level", 75},
    {"Output Level", 0},    {"Global Width", 100},
};

const std::vector<Family> kStepRows = {{" Time", 100}, {" Level", 100}, {" Pan", 0}};

Settings makeDefaults() {
  Settings values(kGlobals.begin(), kGlobals.end());
  for (int slot = 0; slot < 4; ++slot) {
    for (const auto& [family, value] : kSlotFamilies) values[slotName(family, slot)] = value;
    for (int step = 0; step < 16; ++step)
      for (const auto& [suffix, value] : kStepRows) values[stepName(slot, step, suffix)] = value;
  }
  values["SlotOn 1"] = 1;
  return values;
}

}  // namespace

const Settings& defaultSettings() {
  static const Settings defaults = makeDefaults();
  return defaults;
}

std::string slotName(const std::string& family, int slot) {
  return family + " " + std::to_string(slot + 1);
}

std::string stepName(int slot, int step, const std::string& suffix) {
  return "TapDelay" + std::to_string(slot + 1) + " Step" + std::to_string(step + 1) + suffix;
}

int slotOf(const std::string& name) {
  if (name.rfind("TapDelay", 0) == 0) return name[8] - '1';
  const bool numbered = name.size() > 2 && name[name.size() - 2] == ' ';
  return numbered && name.back() >= '1' && name.back() <= '4' ? name.back() - '1' : -1;
}

std::string familyOf(const std::string& name) {
  return slotOf(name) < 0 ? name : name.substr(0, name.size() - 2);
}

}  // namespace orvantesco::model
