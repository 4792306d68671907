#include "fx/kernels/IirScalar.h"

namespace orvantesco::kernels::scalar {

namespace {

constexpr int kMaxOrder = 12;

/// A direct form with its elements back in their natural order.
struct PlainForm {
  PlainForm(const IirDirectForm& form, int formOrder, int rows) noexcept
      : order(formOrder), b0(form.b0) {
    for (int k = 0; k < order; ++k) {
      b[k] = form.b[iirPlace(k, rows)];
      a[k] = form.a[iirPlace(k, rows)];
      s[k] = form.s[iirPlace(k, rows)];
    }
  }

  double step(double x) noexcept {
    const double y = b0 * x + s[0];
    for (int k = 0; k < order; ++k) s[k] = (s[k + 1] + b[k] * x) - a[k] * y;
    return y;
  }

  int order;
  double b0;
  double b[kMaxOrder] = {};
  double a[kMaxOrder] = {};
  double s[kMaxOrder + 1] = {};  // one more, always 0, for the last state to start from
};

void runDirect(const double* src, double* dst, int n, IirState& state) noexcept {
  PlainForm form(state.direct, state.order, state.rows);
  for (int i = 0; i < n; ++i) dst[i] = form.step(src[i]);
  for (int k = 0; k < state.order; ++k) state.direct.s[iirPlace(k, state.rows)] = form.s[k];
}

void runSection(double* srcDst, int n, IirBiquadGroup& group, int lane) noexcept {
  const double b0 = group.b0[lane], b1 = group.b1[lane], b2 = group.b2[lane];
  const double a1 = group.a1[lane], a2 = group.a2[lane];
  double s1 = group.s1[lane], s2 = group.s2[lane];
  for (int i = 0; i < n; ++i) {
    const double x = srcDst[i];
    const double y = b0 * x + s1;
    s1 = (s2 + b1 * x) - a1 * y;
    s2 = b2 * x - a2 * y;
    srcDst[i] = y;
  }
  group.s1[lane] = s1;
  group.s2[lane] = s2;
}

}  // namespace

void Filters::iirFilter(const double* src, double* dst, int n, IirState& state) noexcept {
  if (state.order > 0) return runDirect(src, dst, n, state);
  if (src != dst) {
    for (int i = 0; i < n; ++i) dst[i] = src[i];
  }
  for (int i = 0; i < state.sections; ++i) {
    runSection(dst, n, *state.groupAt(i / kIirGroupSections), i % kIirGroupSections);
  }
}

void Filters::iirFilterPair(double* a, IirState& stateA, double* b, IirState& stateB,
                            int n) noexcept {
  iirFilter(a, a, n, stateA);
  iirFilter(b, b, n, stateB);
}

void Filters::iirSetDelayLine(IirState& state, const double* src) noexcept {
  for (int k = 0; k < 4 * state.rows; ++k) {
    state.direct.s[iirPlace(k, state.rows)] = src != nullptr && k < state.order ? src[k] : 0.0;
  }
  for (int i = 0; i < state.sections; ++i) {
    IirBiquadGroup& group = *state.groupAt(i / kIirGroupSections);
    group.s1[i % kIirGroupSections] = src == nullptr ? 0.0 : src[2 * i];
    group.s2[i % kIirGroupSections] = src == nullptr ? 0.0 : src[2 * i + 1];
  }
}

void Filters::iirGetDelayLine(const IirState& state, double* dst) noexcept {
  for (int k = 0; k < state.order; ++k) dst[k] = state.direct.s[iirPlace(k, state.rows)];
  for (int i = 0; i < state.sections; ++i) {
    const IirBiquadGroup& group = *state.groupAt(i / kIirGroupSections);
    dst[2 * i] = group.s1[i % kIirGroupSections];
    dst[2 * i + 1] = group.s2[i % kIirGroupSections];
  }
}

}  // namespace orvantesco::kernels::scalar
