#include "fx/VowelTable.h"

#include <algorithm>

#include "fx/Shared.h"

namespace orvantesco {

namespace {

// Ten vowels; a person's first three formants, in Hz.
constexpr Vowel kVowels[] = {
    {{270, 2290, 3010}}, {{390, 1990, 2550}}, {{530, 1840, 2480}}, {{660, 1720, 2410}},
    {{520, 1190, 2390}}, {{730, 1090, 2440}}, {{570, 840, 2410}},  {{440, 1020, 2240}},
    {{300, 870, 2240}},  {{490, 1350, 1690}},
};

constexpr VowelSet setOf(int first, int second, int third) {
  return {{kVowels[first], kVowels[second], kVowels[third], {}}};
}

constexpr VowelSet kSets[kVowelSetCount] = {setOf(0, 2, 8), setOf(1, 3, 5), setOf(4, 6, 8),
                                            setOf(3, 7, 9)};

constinit Shared<const VowelSet*> setInForce{&kSets[0]};

}  // namespace

void selectVowelSet(int index) noexcept {
  setInForce = &kSets[std::clamp(index, 0, kVowelSetCount - 1)];
}

Vowel vowelAt(double position) noexcept {
  const VowelSet& set = *setInForce.get();
  // The order of the arguments makes 0 of what is no number.
  const float t = 2.0F * static_cast<float>(std::min(std::max(0.0, position), 1.0));
  const int row = static_cast<int>(t);
  const float f = t - static_cast<float>(row);
  Vowel vowel;
  for (int j = 0; j < kFormantCount; ++j) {
    vowel.formantHz[j] = set.rows[row].formantHz[j] * static_cast<double>(1.0F - f) +
                         set.rows[row + 1].formantHz[j] * static_cast<double>(f);
  }
  return vowel;
}

}  // namespace orvantesco
