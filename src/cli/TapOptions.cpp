#include "cli/TapOptions.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "cli/Failure.h"
#include "cli/Text.h"
#include "params/Labels.h"

namespace orvantesco::cli {
namespace {

/// An option as it was typed, for its error messages.
struct Typed {
  const char* option;
  const char* form;
  const std::string& text;
};

Failure notTaken(const Typed& typed, const std::string& expected) {
  return badCall(
      fmt::format("{} {}: expected {}, {}", typed.option, typed.text, typed.form, expected));
}

int countFrom1(const Typed& typed, const std::string& text, int most, const char* what) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const bool isNumber = error == std::errc{} && stop == end;
  if (!isNumber || number < 1 || number > most) {
    throw notTaken(typed, fmt::format("with {} from 1 to {}", what, most));
  }
  return number - 1;
}

int slotOf(const Typed& typed, const std::string& text) {
  return countFrom1(typed, text, 4, "SLOT");
}

std::uint16_t maskOf(const Typed& typed, std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
  std::uint16_t mask = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, mask, 16);
  if (text.empty() || error != std::errc{} || stop != end) {
    throw notTaken(typed, "with masks of sixteen bits in hexadecimal, 0 to FFFF");
  }
  return mask;
}

bool sameText(std::string_view a, std::string_view b) {
  return std::ranges::equal(
      a, b, {}, [](unsigned char c) { return std::toupper(c); },
      [](unsigned char c) { return std::toupper(c); });
}

TapPattern patternOf(const Typed& typed, std::string_view name) {
  std::string names;
  for (int p = 0; p < kTapPatterns; ++p) {
    const std::string_view known = TapPatternLabels[static_cast<std::size_t>(p)];
    if (sameText(known, name)) return static_cast<TapPattern>(p);
    names += fmt::format("{}{}", p == 0 ? "" : ", ", known);
  }
  throw notTaken(typed, "PATTERN being one of " + names);
}

TapMaskSetting tapsFrom(const std::string& text, RandomDraw& draw) {
  const Typed typed{"--taps", "SLOT:LEFT:RIGHT or SLOT:PATTERN", text};
  const auto parts = split(text, ':');
  if (parts.size() != 2 && parts.size() != 3) throw notTaken(typed, "in two or three parts");
  const int slot = slotOf(typed, std::string(parts[0]));
  if (parts.size() == 2) return {slot, tapPatternMasks(patternOf(typed, parts[1]), draw)};
  return {slot, {maskOf(typed, parts[1]), maskOf(typed, parts[2])}};
}

StepFxSetting stepFxFrom(const std::string& text) {
  const Typed typed{"--step-fx", "SLOT:MASK", text};
  const auto parts = split(text, ':');
  if (parts.size() != 2) throw notTaken(typed, "in two parts");
  return {slotOf(typed, std::string(parts[0])), maskOf(typed, parts[1])};
}

StepModSetting stepModFrom(const std::string& text) {
  const Typed typed{"--step-mod", "ROW:SLOT:MASK", text};
  const auto parts = split(text, ':');
  if (parts.size() != 3) throw notTaken(typed, "in three parts");
  const int row = countFrom1(typed, std::string(parts[0]), 2, "ROW");
  return {row, slotOf(typed, std::string(parts[1])), maskOf(typed, parts[2])};
}

}  // namespace

TapSettings parseTapOptions(const TapOptionTexts& texts, std::uint32_t seed) {
  TapSettings settings;
  RandomDraw draw(seed);
  for (const std::string& text : texts.taps) settings.taps.push_back(tapsFrom(text, draw));
  for (const std::string& text : texts.stepFx) settings.stepFx.push_back(stepFxFrom(text));
  for (const std::string& text : texts.stepMod) settings.stepMod.push_back(stepModFrom(text));
  return settings;
}

}  // namespace orvantesco::cli
