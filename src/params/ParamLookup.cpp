#include "params/ParamLookup.h"

#include <algorithm>
#include <string>

#include "params/PlainText.h"

namespace orvantesco {
namespace {

OrParamError<int> atIndex(std::string_view text) {
  const auto index = numberIn(text);
  if (index && *index >= 0.0 && *index < kNumParams) {
    const int whole = static_cast<int>(*index);
    if (whole == *index) return whole;
  }
  return ParamError{"unknown parameter \"#" + std::string(text) + "\": the indices are #0..#" +
                    std::to_string(kNumParams - 1)};
}

}  // namespace

std::vector<int> closestParams(const ParamBank& bank, std::string_view text, int count) {
  const std::string wanted = folded(text);
  std::vector<std::pair<int, int>> byDistance;
  const ParamKeys& keys = bank.keys();
  for (int index = 0; const std::string& key : keys) {
    const bool firstOfItsName = std::find(keys.begin(), keys.end(), key) == keys.begin() + index;
    if (firstOfItsName) byDistance.emplace_back(editDistance(wanted, lowered(key)), index);
    ++index;
  }
  const auto wantedCount = std::min(static_cast<std::size_t>(count), byDistance.size());
  std::ranges::sort(byDistance);
  std::vector<int> closest;
  for (std::size_t i = 0; i < wantedCount; ++i) closest.push_back(byDistance[i].second);
  return closest;
}

OrParamError<int> findParam(const ParamBank& bank, std::string_view text) {
  const std::string_view given = trimmed(text);
  if (given.starts_with('#')) return atIndex(given.substr(1));
  const std::string wanted = folded(given);
  for (int index = 0; const std::string& key : bank.keys()) {
    if (sameLetters(key, wanted)) return index;
    ++index;
  }
  std::string message = "unknown parameter \"" + std::string(given) + "\"; the closest are";
  for (const char* separator = " "; const int index : closestParams(bank, given)) {
    message += separator + bank.keys()[static_cast<std::size_t>(index)];
    separator = ", ";
  }
  return ParamError{message};
}

}  // namespace orvantesco
