#include "host/binding/ParameterSymbol.h"

#include <algorithm>
#include <map>
#include <vector>

#include "params/ParamIndex.h"
#include "params/ParamTable.h"

namespace orvantesco {
namespace {

bool isPlain(char c) noexcept {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string symbolOf(std::string name) {
  std::erase(name, ' ');
  std::ranges::replace_if(
      name, [](char c) { return !isPlain(c); }, '_');
  return name;
}

std::vector<std::string> buildSymbols() {
  std::vector<std::string> symbols;
  for (const ParamFamily& family : paramFamilies()) {
    for (int member = 0; member < family.count; ++member) {
      symbols.push_back(symbolOf(family.nameOf(member)));
    }
  }
  std::map<std::string, std::size_t> bearers;
  for (std::size_t index = 0; index < symbols.size(); ++index) {
    const auto [bearer, isFirst] = bearers.emplace(symbols[index], index);
    if (isFirst) continue;
    symbols[bearer->second].append("_").append(std::to_string(bearer->second));
    bearer->second = index;
  }
  return symbols;
}

}  // namespace

const std::string& parameterSymbol(int index) {
  static const std::vector<std::string> symbols = buildSymbols();
  return symbols.at(static_cast<std::size_t>(index));
}

}  // namespace orvantesco
