#pragma once

namespace orvantesco {

/// Sections are kept in groups of four, which run side by side in the lanes of a processor.
constexpr int kIirGroupSections = 4;

/// Taps and memory of up to four sections, each section in its lane of every row.
struct alignas(32) IirBiquadGroup {
  double b0[kIirGroupSections] = {};
  double b1[kIirGroupSections] = {};
  double b2[kIirGroupSections] = {};
  double a1[kIirGroupSections] = {};
  double a2[kIirGroupSections] = {};
  double s1[kIirGroupSections] = {};
  double s2[kIirGroupSections] = {};
};

/// Taps and memory of a direct form, striped over rows of four: with R rows, row r holds elements
/// r, R + r, 2R + r and 3R + r of s, and the taps one further of b and a. So the step
/// s[k] <- s[k + 1] renames rows and shifts the lanes of one row only.
struct alignas(64) IirDirectForm {
  double b[12] = {};
  double a[12] = {};
  double s[12] = {};
  double b0 = 1.0;
};

// Inlined always: these are seen by code for several processor levels, which must share nothing.

/// Where element k of s, or tap k + 1, stands in a direct form of so many rows.
[[gnu::always_inline]] constexpr int iirPlace(int k, int rows) noexcept {
  return k % rows * 4 + k / rows;
}

/// One filter: a direct form, or the first group of a cascade with the others right behind it.
struct alignas(64) IirState {
  int order = 0;     ///< of the direct form; 0 for a cascade
  int rows = 0;      ///< of the direct form: 1, 2 or 3, for orders up to 4, 8, 12
  int sections = 0;  ///< of the cascade; 0 for a direct form
  union {
    IirDirectForm direct;
    IirBiquadGroup group;
  };

  IirState() noexcept : direct() {}

  /// Group g of the cascade; the buffer holds as many as the sections need.
  [[gnu::always_inline]] IirBiquadGroup* groupAt(int g) noexcept { return &group + g; }
  [[gnu::always_inline]] const IirBiquadGroup* groupAt(int g) const noexcept { return &group + g; }
};

}  // namespace orvantesco
