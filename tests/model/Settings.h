#pragma once

#include <map>
#include <string>

namespace orvantesco::model {

/// Parameter values by the bank's names ("Delay TimeL 1"), in the bank's own units.
using Settings = std::map<std::string, double>;

/// Every parameter that the model knows, at the value of a fresh instance.
const Settings& defaultSettings();

/// "Delay TimeL" and slot 0 give "Delay TimeL 1".
std::string slotName(const std::string& family, int slot);

/// "TapDelay1 Step3 Level" for slot 0, step 2, " Level".
std::string stepName(int slot, int step, const std::string& suffix);

/// The slot 0..3 that a name ends with, -1 for a global parameter.
int slotOf(const std::string& name);

/// A name without its slot number: "Delay TimeL 1" gives "Delay TimeL".
std::string familyOf(const std::string& name);

}  // namespace orvantesco::model
