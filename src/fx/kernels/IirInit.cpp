#include <cstddef>
#include <cstdint>
#include <new>

#include "fx/kernels/Iir.h"
#include "fx/kernels/IirState.h"

namespace orvantesco {

namespace {

constexpr int kTapsPerSection = 6;

int groupsOf(int sections) noexcept { return (sections - 1) / kIirGroupSections + 1; }

/// Buffers from elsewhere than allocBytes may lie anywhere; the sizes leave room to round up.
void* alignedStart(void* buffer) noexcept {
  const auto address = reinterpret_cast<std::uintptr_t>(buffer);
  const std::uintptr_t misfit = address % alignof(IirState);
  return static_cast<std::uint8_t*>(buffer) + (misfit == 0 ? 0 : alignof(IirState) - misfit);
}

void loadSection(const double* taps, IirBiquadGroup& group, int lane) noexcept {
  const double a0 = taps[3];
  group.b0[lane] = taps[0] / a0;
  group.b1[lane] = taps[1] / a0;
  group.b2[lane] = taps[2] / a0;
  group.a1[lane] = taps[4] / a0;
  group.a2[lane] = taps[5] / a0;
}

bool hasZero(const double* taps, int numBiquads) noexcept {
  for (int i = 0; i < numBiquads; ++i) {
    const double* section = taps + i * kTapsPerSection;
    if (section[0] == 0.0 || section[3] == 0.0) return true;
  }
  return false;
}

}  // namespace

int iirBiquadStateSize(int numBiquads, int* size) noexcept {
  if (size == nullptr) return kErrorNull;
  if (numBiquads < 1) return kErrorOrder;
  const std::size_t further = static_cast<std::size_t>(groupsOf(numBiquads) - 1);
  *size = static_cast<int>(sizeof(IirState) + alignof(IirState) + further * sizeof(IirBiquadGroup));
  return kStatusOk;
}

int iirInitDirect(IirState** state, const double* taps, int order, const double* delayLine,
                  void* buffer) noexcept {
  if (state == nullptr) return kErrorNull;
  *state = nullptr;
  if (taps == nullptr || buffer == nullptr) return kErrorNull;
  if (order < 1 || order > kIirMaxOrder) return kErrorOrder;
  const double* aTaps = taps + order + 1;
  if (aTaps[0] == 0.0) return kErrorZero;

  auto* filter = new (alignedStart(buffer)) IirState;
  filter->order = order;
  filter->rows = (order + 3) / 4;
  filter->direct.b0 = taps[0] / aTaps[0];
  for (int k = 0; k < order; ++k) {
    filter->direct.b[iirPlace(k, filter->rows)] = taps[k + 1] / aTaps[0];
    filter->direct.a[iirPlace(k, filter->rows)] = aTaps[k + 1] / aTaps[0];
  }
  *state = filter;
  return iirSetDelayLine(filter, delayLine);
}

int iirInitBiquads(IirState** state, const double* taps, int numBiquads, const double* delayLine,
                   void* buffer) noexcept {
  if (state == nullptr) return kErrorNull;
  *state = nullptr;
  if (taps == nullptr || buffer == nullptr) return kErrorNull;
  if (numBiquads < 1) return kErrorOrder;
  if (hasZero(taps, numBiquads)) return kErrorZero;

  auto* filter = new (alignedStart(buffer)) IirState;
  filter->sections = numBiquads;
  for (int g = 0; g < groupsOf(numBiquads); ++g) new (filter->groupAt(g)) IirBiquadGroup;
  for (int i = 0; i < numBiquads; ++i) {
    IirBiquadGroup* group = filter->groupAt(i / kIirGroupSections);
    loadSection(taps + i * kTapsPerSection, *group, i % kIirGroupSections);
  }
  *state = filter;
  return iirSetDelayLine(filter, delayLine);
}

}  // namespace orvantesco
