#pragma once

namespace orvantesco {

/// Sections are run in groups of at most this many, side by side in the lanes of a processor.
constexpr int kIirGroupSections = 12;

/// Taps and memory of up to 12 sections, one array for each tap so that lanes load four sections.
struct alignas(64) IirBiquadGroup {
  double b0[kIirGroupSections] = {};
  double b1[kIirGroupSections] = {};
  double b2[kIirGroupSections] = {};
  double a1[kIirGroupSections] = {};
  double a2[kIirGroupSections] = {};
  double s1[kIirGroupSections] = {};
  double s2[kIirGroupSections] = {};
};

/// Taps and memory of a direct form. With R = rows, element k of s (and tap k + 1 of b and a)
/// stands at (k mod R) * 4 + k / R: row r holds s[r], s[R + r], s[2R + r], s[3R + r] in its four
/// lanes. So the step s[k] <- s[k + 1] renames rows and shifts the lanes of one row only.
struct alignas(64) IirDirectForm {
  double b[12] = {};
  double a[12] = {};
  double s[12] = {};
  double b0 = 1.0;
};

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
  IirBiquadGroup* groupAt(int g) noexcept { return &group + g; }
  const IirBiquadGroup* groupAt(int g) const noexcept { return &group + g; }
};

}  // namespace orvantesco
