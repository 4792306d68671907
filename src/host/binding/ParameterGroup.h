#pragma once

#include <span>
#include <string>

namespace orvantesco {

/// Where a host lists a parameter: a group of the bank, such as "Slot 1/Delay" or "LFO 2".
struct ParameterGroup {
  std::string path;    ///< of the group's folders, parted by "/"
  std::string symbol;  ///< the same as an identifier: "slot_1_delay"
};

/// All groups in the order of the first parameter that each holds. Any thread.
std::span<const ParameterGroup> parameterGroups();

/// Position in `parameterGroups` of the group that a parameter (0 .. kNumParams - 1) belongs to.
int parameterGroupOf(int index);

/// The path of that group.
const std::string& parameterModule(int index);

}  // namespace orvantesco
