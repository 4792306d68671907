#include "params/ParamText.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "params/PlainText.h"

namespace orvantesco {
namespace {

struct Choice {
  int value = 0;
  const char* text = "";
};

/// What a person may choose from: the menu, or the display texts where there is none.
std::vector<Choice> choicesOf(const ParamForm& form, LabelList menu) {
  std::vector<Choice> choices;
  for (const char* text : menu) choices.push_back({static_cast<int>(choices.size()), text});
  if (menu.empty())
    for (const DisplayText& entry : form.displayTexts) choices.push_back({entry.value, entry.text});
  std::erase_if(choices, [](const Choice& choice) { return *choice.text == '\0'; });
  return choices;
}

std::optional<double> valueOfText(const std::vector<Choice>& choices, std::string_view text) {
  for (const Choice& choice : choices)
    if (sameLetters(choice.text, text)) return choice.value;
  return std::nullopt;
}

double onStep(const ParamForm& form, double value) {
  if (!form.discrete) return value;
  return std::floor(value / form.step + 0.5) * form.step;
}

std::string rangeOf(const ParamForm& form, double max) {
  const std::string range = shortest(form.min) + ".." + shortest(max);
  return form.label[0] == '\0' ? range : range + " " + form.label.data();
}

/// One reading of a value: what is common to all its ways.
class ValueReader {
 public:
  ValueReader(const IParam& record, std::string_view text, LabelList menu)
      : param(record), form(record.form()), given(text), choices(choicesOf(form, menu)) {
    max = menu.empty() ? form.max : std::min(form.max, double(menu.size()) - 1.0);
  }

  OrParamError<double> read() const {
    const std::string_view text = trimmed(given);
    if (text.starts_with("n:")) return normalised(text.substr(2));
    if (text.starts_with("t:")) return displayed(trimmed(text.substr(2)));
    if (const auto number = numberIn(text)) return plain(*number);
    return displayed(text);
  }

 private:
  OrParamError<double> normalised(std::string_view text) const {
    const auto number = numberIn(trimmed(text));
    if (!number || *number < 0.0 || *number > 1.0)
      return refused("is no normalised value; n:X takes X in 0..1");
    return plain(param.fromNormalized(*number));
  }

  OrParamError<double> plain(double number) const {
    if (number < form.min || number > max) return refused("is out of range " + rangeOf(form, max));
    return onStep(form, number) + 0.0;  // -0 becomes 0
  }

  OrParamError<double> displayed(std::string_view text) const {
    if (const auto value = valueOfText(choices, text)) return *value;
    return refused(choices.empty() ? "is no number; expected " + rangeOf(form, max)
                                   : "is no number and no display text; expected " +
                                         rangeOf(form, max) + " or " + choiceTexts());
  }

  std::string choiceTexts() const {
    std::string texts;
    for (const Choice& choice : choices) {
      if (!texts.empty()) texts += ", ";
      texts.append("\"").append(choice.text).append("\"");
    }
    return texts;
  }

  ParamError refused(const std::string& why) const {
    return {std::string(form.name.data()) + ": \"" + std::string(given) + "\" " + why};
  }

  const IParam& param;
  const ParamForm& form;
  std::string_view given;
  std::vector<Choice> choices;
  double max = 0.0;
};

std::string_view withoutUnit(std::string_view text, std::string_view unit) {
  const bool fits = text.size() >= unit.size();
  if (fits && sameLetters(text.substr(text.size() - unit.size()), unit))
    text.remove_suffix(unit.size());
  return trimmed(text);
}

}  // namespace

std::string displayText(const IParam& param, double value) {
  std::array<char, paramTextSize> text{};
  param.formatValue(value, false, text);
  const std::string_view unit = param.shownLabel(value);
  std::string shown = text.data();
  return unit.empty() ? shown : shown.append(" ").append(unit);
}

OrParamError<double> parseValue(const IParam& param, std::string_view text, LabelList menu) {
  return ValueReader(param, text, menu).read();
}

std::optional<double> valueOfDisplayText(const IParam& param, std::string_view text) {
  const ParamForm& form = param.form();
  text = trimmed(text);
  if (const auto value = valueOfText(choicesOf(form, {}), text)) return value;
  const auto number = numberIn(withoutUnit(text, form.label.data()));
  if (!number) return std::nullopt;
  return onStep(form, std::clamp(*number, form.min, form.max)) + 0.0;
}

std::string rangeText(const IParam& param) { return rangeOf(param.form(), param.max()); }

}  // namespace orvantesco
