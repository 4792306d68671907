#pragma once

namespace orvantesco {

/// What an `IppBiquad` is. Numbers are those that presets and effect parameters send; a number
/// without a name here is a low-pass.
enum FilterMode : int {
  kLowpassFilter = 0,
  kHighpassFilter = 3,
  kBandpassFilter = 6,
  kPeakFilter = 10,          ///< gain -1..1, "DIM" pulls the boost back
  kShaperPeakFilter = 12,    ///< the same section, gain 0..1
  kSoftLowpassFilter = 15,   ///< Chebyshev, order 2
  kSteepLowpassFilter = 16,  ///< Chebyshev, order 4
  kSoftHighpassFilter = 18,
  kSteepHighpassFilter = 19,
  /// Turns the phase alone. Menus call it "AP" or "NOTCH": a notch is heard where its output meets
  /// the dry signal, not behind the filter by itself.
  kAllpassFilter = 20,
  kVowelFilter = 21,
  kSplitFilter = 22,  ///< low-pass on the left, high-pass on the right
  kLowShelfFilter = 23,
  kHighShelfFilter = 24,
  kSlopeFilter = 25,  ///< low-pass whose parameter 1 is the slope
  kFilterOff = 26,    ///< writes nothing
};

/// Modes of the fixed designs of `IppFixBiquad`.
enum FixedDesign : int {
  kFixedButterworthLowpass = 0,
  kFixedButterworthHighpass = 3,
  kFixedChebyshevLowpass = 14,
  kFixedChebyshevHighpass = 17,
};

}  // namespace orvantesco
