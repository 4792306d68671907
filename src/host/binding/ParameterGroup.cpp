#include "host/binding/ParameterGroup.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include "params/ParamIndex.h"
#include "params/ParamTable.h"

namespace orvantesco {
namespace {

/// The families from one index on, up to the next row.
struct Section {
  int firstIndex;
  const char* pathPattern;  ///< in the words of a family's name pattern
};

constexpr Section sections[] = {
    {kSlotOn, "Slot {n}"},
    {kFxTypePre, "Slot {n}/PRE"},
    {kFxTypeFeedback, "Slot {n}/FB"},
    {kFxTypePost, "Slot {n}/POST"},
    {kFxParam1, "Slot {slot}/{place}"},
    {kFxOnPre, "Slot {n}/PRE"},
    {kFxOnFeedback, "Slot {n}/FB"},
    {kFxOnPost, "Slot {n}/POST"},
    {kDelayMode, "Slot {n}/Delay"},
    {kDelayTaps, "Slot {n}/Taps"},
    {kFbProportional, "Slot {n}/Delay"},
    {kTapTimebase, "Slot {n}/Taps"},
    {kDelayFactorL, "Slot {n}/Delay"},
    {kTapFxParam1, "Slot {n}/Taps"},
    {kTapStepTime, "Slot {lane}/Taps"},
    {kTapTimeStepDepth, "Slot {n}/Taps"},
    {kDelayLRLink, "Slot {n}/Delay"},
    {kGrainSize, "Slot {n}/Grain"},
    {kReverseDelayTrigger, "Slot {n}/Reverse"},
    {kLfoOn, "LFO {n}"},
    {kGateLength, "Gate {n}"},
    {kGateStep, "Gate {lane}"},
    {kEnvOn, "Envelope {n}"},
    {kLogicOn, "Logic {n}"},
    {kMasterFx, "Master"},
    {kFbMatrix, "Feedback Matrix"},
    {kDelayTapsSwing, "Slot {n}/Taps"},
    {kNoOp, "Reserved"},
};

std::string pathOf(const ParamFamily& family, int member) {
  const auto behind =
      std::upper_bound(std::begin(sections), std::end(sections), family.base,
                       [](int base, const Section& section) { return base < section.firstIndex; });
  return nameOfMember(std::prev(behind)->pathPattern, member);
}

std::string symbolOf(const std::string& path) {
  std::string symbol = path;
  for (char& c : symbol) {
    const bool capital = c >= 'A' && c <= 'Z';
    if (capital) c = static_cast<char>(c - 'A' + 'a');
    if (c == ' ' || c == '/') c = '_';
  }
  return symbol;
}

struct Grouping {
  std::vector<ParameterGroup> groups;
  std::array<int, kNumParams> groupOf{};

  Grouping() {
    for (const ParamFamily& family : paramFamilies()) {
      for (int member = 0; member < family.count; ++member) {
        const int index = family.base + member;
        groupOf[static_cast<std::size_t>(index)] = place(pathOf(family, member));
      }
    }
  }

 private:
  int place(const std::string& path) {
    const auto found = std::ranges::find(groups, path, &ParameterGroup::path);
    const auto position = static_cast<int>(found - groups.begin());
    if (found == groups.end()) groups.push_back({path, symbolOf(path)});
    return position;
  }
};

const Grouping& grouping() {
  static const Grouping built;
  return built;
}

}  // namespace

std::span<const ParameterGroup> parameterGroups() { return grouping().groups; }

int parameterGroupOf(int index) { return grouping().groupOf.at(static_cast<std::size_t>(index)); }

const std::string& parameterModule(int index) {
  return grouping().groups[static_cast<std::size_t>(parameterGroupOf(index))].path;
}

}  // namespace orvantesco
