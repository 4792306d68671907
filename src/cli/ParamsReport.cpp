#include "cli/ParamsReport.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "core/EffectMenu.h"
#include "params/ParamText.h"
#include "params/PlainText.h"

namespace orvantesco::cli {
namespace {

using Json = nlohmann::ordered_json;

std::vector<int> matching(const ParamBank& bank, std::string_view match) {
  const std::string wanted = folded(match);
  std::vector<int> indices;
  for (int index = 0; const std::string& key : bank.keys()) {
    if (lowered(key).find(wanted) != std::string::npos) indices.push_back(index);
    ++index;
  }
  return indices;
}

const char* wordOf(ParamType type) {
  switch (type) {
    case ParamType::boolean:
      return "bool";
    case ParamType::integer:
      return "int";
    case ParamType::enumeration:
      return "enum";
    case ParamType::real:
      return "double";
    case ParamType::none:
      break;
  }
  return "none";
}

std::vector<std::string> displayTextsOf(const IParam& param) {
  std::vector<std::string> texts;
  for (const DisplayText& entry : param.form().displayTexts) texts.emplace_back(entry.text.get());
  return texts;
}

std::vector<std::string> menuOf(int index) {
  const LabelList menu = effectMenuOf(index);
  return {menu.begin(), menu.end()};
}

Json jsonOf(const ParamBank& bank, int index) {
  const IParam& param = *bank.getParam(index);
  const std::vector<std::string> labels = displayTextsOf(param);
  Json json{{"index", index},
            {"name", param.name()},
            {"key", bank.keys()[static_cast<std::size_t>(index)]},
            {"type", wordOf(param.type())},
            {"default", param.defaultValue()},
            {"min", param.min()},
            {"max", param.max()},
            {"step", param.step()},
            {"unit", param.label()},
            {"shape", param.shape()},
            {"labels", labels.empty() ? Json() : Json(labels)}};
  if (isFxType(index)) json["menu"] = menuOf(index);
  return json;
}

std::string choicesOf(const IParam& param, int index) {
  const auto texts = isFxType(index) ? menuOf(index) : displayTextsOf(param);
  return fmt::format("{}", fmt::join(texts, ", "));
}

std::string lineOf(const IParam& param, int index) {
  const std::string initial = displayText(param, param.defaultValue());
  std::string line =
      fmt::format("#{:<5}{:<28}{:<7}{:<14}{:<20}{}", index, param.name(), wordOf(param.type()),
                  initial, rangeText(param), choicesOf(param, index));
  line.erase(line.find_last_not_of(' ') + 1);
  return line + "\n";
}

}  // namespace

std::string paramsJson(const ParamBank& bank, std::string_view match) {
  Json parameters = Json::array();
  for (const int index : matching(bank, match)) parameters.push_back(jsonOf(bank, index));
  return Json{{"parameters", parameters}}.dump(2) + "\n";
}

std::string paramsTable(const ParamBank& bank, std::string_view match) {
  std::string table;
  for (const int index : matching(bank, match)) table += lineOf(*bank.getParam(index), index);
  return table;
}

}  // namespace orvantesco::cli
