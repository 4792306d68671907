#pragma once

#include <cstdint>

#include <DistrhoPlugin.hpp>
#include "params/ParamIndex.h"

namespace orvantesco {

// What the wrapper tells hosts about the parameters: those of the bank in their order, and behind
// them the bypass. It reads a bank of its own, so that no instance has to exist.

/// Index of the bypass, which is no parameter of the bank.
inline constexpr std::uint32_t kDpfBypass = kNumParams;
inline constexpr std::uint32_t kDpfParameters = kNumParams + 1;

/// Values that a port may have.
struct PortRange {
  double min = 0.0;
  double max = 1.0;
};

/// The range of a parameter of the bank (0 .. kNumParams - 1). A port has one for good, so the rate
/// of an LFO spans both of its forms, Hz and notes. Any thread, once `describeParameter` was
/// called.
PortRange portRangeOf(int index);

/// Name, symbol, unit, range, labels, hints and group. Control threads.
void describeParameter(std::uint32_t index, DISTRHO::Parameter& parameter);

/// The value of a parameter before anything has moved it.
float defaultPortValue(std::uint32_t index);

/// A group of parameters, by its number in `parameterGroups`. Other groups are the wrapper's own.
void describeGroup(std::uint32_t groupId, DISTRHO::PortGroup& group);

}  // namespace orvantesco
