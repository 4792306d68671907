#include "fx/SectionChain.h"

#include <algorithm>

namespace orvantesco {

namespace {

constexpr int kTapsPerSection = 6;

}  // namespace

// The initialiser writes to the storage only when it accepts the taps, so on a refusal the old
// handle stays good.
void SectionChain::design(const BiquadSection& section, int count) noexcept {
  const int sections = std::clamp(count, 1, kMaxSections);
  const double one[] = {section.b0, section.b1, section.b2, section.a0, section.a1, section.a2};
  double taps[kMaxSections * kTapsPerSection];
  double memory[2 * kMaxSections] = {};
  for (int i = 0; i < sections; ++i) std::copy_n(one, kTapsPerSection, taps + i * kTapsPerSection);
  iirGetDelayLine(state, memory);
  IirState* next = nullptr;
  if (iirInitBiquads(&next, taps, sections, memory, storage) == kStatusOk) state = next;
}

void SectionChain::process(const double* in, double* out) noexcept {
  if (state == nullptr) {
    if (out != in) vecCopy(in, out, kVectorLength);
    return;
  }
  iirFilter(in, out, kVectorLength, state);
  flushDenormals();
}

// What lies below the rounding of 1e-15 vanishes, so that no tail ends in denormals.
void SectionChain::flushDenormals() noexcept {
  const int groups = (state->sections - 1) / kIirGroupSections + 1;
  for (int g = 0; g < groups; ++g) {
    IirBiquadGroup& group = *state->groupAt(g);
    for (double& s : group.s1) s = (s + 1e-15) - 1e-15;
    for (double& s : group.s2) s = (s + 1e-15) - 1e-15;
  }
}

}  // namespace orvantesco
