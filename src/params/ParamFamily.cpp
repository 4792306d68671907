#include <array>
#include <string_view>

#include "params/ParamIndex.h"
#include "params/ParamTable.h"

namespace orvantesco {
namespace {

std::string wordOf(std::string_view word, int member) {
  constexpr std::array stages{"PR", "FB", "PO"};
  constexpr std::array places{"PRE", "FB", "POST"};
  constexpr std::array logicUnits{"1", "3", "3", "4"};
  if (word == "slot") return std::to_string(member % numSlots + 1);
  if (word == "stage") return stages.at(static_cast<std::size_t>(member / numSlots));
  if (word == "place") return places.at(static_cast<std::size_t>(member / numSlots));
  if (word == "lane") return std::to_string(member / numSteps + 1);
  if (word == "step") return std::to_string(member % numSteps + 1);
  if (word == "logic") return logicUnits.at(static_cast<std::size_t>(member));
  return std::to_string(member + 1);
}

}  // namespace

const LabelList* ParamFamily::labelsOf(int member) const noexcept {
  if (labels.empty()) return nullptr;
  return &labels[labels.size() == 1 ? 0 : static_cast<std::size_t>(member)];
}

double ParamFamily::defaultOf(int member) const noexcept {
  return member == 0 ? defaultValue.first : defaultValue.others;
}

std::string ParamFamily::nameOf(int member) const { return nameOfMember(namePattern, member); }

std::string nameOfMember(std::string_view pattern, int member) {
  std::string name;
  std::string_view rest = pattern;
  for (auto open = rest.find('{'); open != rest.npos; open = rest.find('{')) {
    const auto close = rest.find('}', open);
    name += rest.substr(0, open);
    name += wordOf(rest.substr(open + 1, close - open - 1), member);
    rest.remove_prefix(close + 1);
  }
  return name.append(rest);
}

}  // namespace orvantesco
