#include "params/IParam.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace orvantesco {
namespace {

void copyText(ParamTextField& to, const char* from) {
  to.fill('\0');
  const std::size_t length = std::min(std::strlen(from), to.size() - 1);
  std::memcpy(to.data(), from, length);
}

/// Decimals that a step needs, six at most.
int decimalsOf(double step) {
  int decimals = 0;
  for (double x = step; x != std::floor(x) && decimals < 6; x *= 10.0) ++decimals;
  return decimals;
}

/// The number without its fraction, held to what an int can say.
int truncated(double x) noexcept {
  constexpr double limit = std::numeric_limits<int>::max();
  return std::isnan(x) ? 0 : static_cast<int>(std::clamp(x, -limit, limit));
}

/// Whole value under which the texts of a form are looked up. A record that is continuous by
/// birth may hold a fraction while its form is a list; what runs then is the nearest entry.
int textValue(const ParamForm& form, ParamType type, double plain) noexcept {
  const bool listOverReal = form.discrete && type == ParamType::real;
  return truncated(listOverReal ? std::round(plain) : plain);
}

const char* textOf(const ParamForm& form, int value) noexcept {
  for (const DisplayText& entry : form.displayTexts)
    if (entry.value == value) return entry.text;
  return "";
}

double normalised(const ParamForm& form, double plain) noexcept {
  const double span = form.max - form.min;
  if (!(span > 0.0) || std::isnan(plain)) return 0.0;
  const double x = std::clamp(plain, form.min, form.max);
  return std::pow((x - form.min) / span, 1.0 / form.shape);
}

double plainOf(const ParamForm& form, double normalisedValue) noexcept {
  // The negated comparison sends what is no number to the lower end.
  const double x = !(normalisedValue > 0.0) ? 0.0 : std::min(normalisedValue, 1.0);
  double plain = form.min + (form.max - form.min) * std::pow(x, form.shape);
  if (form.discrete) plain = std::floor(plain / form.step + 0.5) * form.step;
  return std::min(plain, form.max);
}

/// Copies as much as fits and closes with a zero.
void put(std::span<char> out, const char* text, std::size_t length) noexcept {
  if (out.empty()) return;
  const std::size_t fitting = std::min(length, out.size() - 1);
  std::memcpy(out.data(), text, fitting);
  out[fitting] = '\0';
}

void printNumber(double number, int decimals, std::span<char> out) noexcept {
  // The largest double has 309 digits before the point; to_chars knows no locale.
  std::array<char, 320> digits{};
  char* const first = digits.data();
  char* const last = first + digits.size();
  const auto end = decimals == 0
                       ? std::to_chars(first, last, truncated(number))
                       : std::to_chars(first, last, number, std::chars_format::fixed, decimals);
  put(out, first, static_cast<std::size_t>(end.ptr - first));
}

}  // namespace

IParam::IParam() { addForm(); }

void IParam::initDouble(const ParamCaption& caption, double defaultValue, const DoubleRange& range,
                        KeepValue keep) {
  fixType(ParamType::real);
  selected().discrete = kind != ParamType::real;  // the type of birth decides
  fill(caption, defaultValue, range, keep);
}

void IParam::initInt(const ParamCaption& caption, int defaultValue, IntRange range,
                     KeepValue keep) {
  fixType(ParamType::integer);
  selected().discrete = true;
  fill(caption, defaultValue, {double(range.min), double(range.max), 1.0, 1.0}, keep);
}

void IParam::initEnum(const ParamCaption& caption, int defaultValue, int count, KeepValue keep) {
  fixType(ParamType::enumeration);
  selected().discrete = true;
  fill(caption, defaultValue, {0.0, double(std::max(1, count - 1)), 1.0, 1.0}, keep);
}

void IParam::initBool(const ParamCaption& caption, bool defaultValue) {
  fixType(ParamType::boolean);
  selected().discrete = true;
  fill(caption, defaultValue ? 1.0 : 0.0, {0.0, 1.0, 1.0, 1.0}, KeepValue::no);
  setDisplayText(0, "off");
  setDisplayText(1, "on");
}

void IParam::fixType(ParamType type) noexcept {
  if (kind == ParamType::none) kind = type;
}

void IParam::fill(const ParamCaption& caption, double defaultValue, const DoubleRange& range,
                  KeepValue keep) {
  ParamForm& form = selected();
  copyText(form.name, caption.name);
  copyText(form.label, caption.label);
  copyText(form.group, caption.group);
  form.defaultValue = defaultValue;
  form.min = range.min;
  form.max = std::max(range.max, range.min + range.step);
  form.step = range.step;
  form.displayPrecision = decimalsOf(range.step);
  setShape(range.shape);
  if (keep == KeepValue::yes)
    form.displayTexts.clear();
  else
    setValue(defaultValue);
}

void IParam::setDisplayText(int value, const char* text, bool clearFirst) {
  auto& texts = selected().displayTexts;
  if (clearFirst) texts.clear();
  texts.push_back({value, text});
}

int IParam::addForm() {
  forms.push_back(std::make_unique<ParamForm>());
  const int number = static_cast<int>(forms.size()) - 1;
  selectForm(number);
  return number;
}

void IParam::setValue(double newValue) noexcept {
  if (std::isfinite(newValue)) current = newValue;
}

void IParam::selectForm(int number) noexcept {
  if (number < 0 || static_cast<std::size_t>(number) >= forms.size()) return;
  published.store(forms[static_cast<std::size_t>(number)].get(), std::memory_order_release);
}

void IParam::setShape(double shape) noexcept {
  if (shape != 0.0) selected().shape = shape;
}

void IParam::replaceDisplayText(int value, const char* text) noexcept {
  for (DisplayText& entry : selected().displayTexts) {
    if (entry.value != value) continue;
    entry.text = text;
    return;
  }
}

const char* IParam::getDisplayText(int value) const noexcept { return textOf(form(), value); }

double IParam::toNormalized(double plain) const noexcept { return normalised(form(), plain); }

double IParam::fromNormalized(double position) const noexcept { return plainOf(form(), position); }

void IParam::formatValue(double number, bool isNormalised, std::span<char> out,
                         bool useDisplayText) const noexcept {
  const ParamForm& shown = form();
  const double plain = isNormalised ? plainOf(shown, number) : number;
  const char* text = useDisplayText ? textOf(shown, textValue(shown, kind, plain)) : "";
  if (*text != '\0')
    put(out, text, std::strlen(text));
  else
    printNumber(plain, shown.displayPrecision, out);
}

const char* IParam::shownLabel(double plain) const noexcept {
  const ParamForm& shown = form();
  const bool isText = *textOf(shown, textValue(shown, kind, plain)) != '\0';
  return isText ? "" : shown.label.data();
}

}  // namespace orvantesco
