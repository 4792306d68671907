#pragma once

namespace orvantesco {

/// Decay and damping of a line of a delay network.
struct FdnDecay {
  double inverseDecay = 1.0;  ///< 1 / seconds to -60 dB
  double damping = 0.5;       ///< 0.1 strongest .. 0.99 hardly any
};

/// What a line's damping filter y = gain x - coefficient y1 is set to.
struct FdnLineGain {
  double gain = 0.0;
  /// -0.98 at least: with less the line would fall mute or freeze. Up to 0.04 above 0 where rates
  /// below 44100 Hz and hardly any damping meet; the gain stays below 1 at all frequencies.
  double coefficient = 0.0;
};

/// Gain g of a line of `length` samples at 44100 Hz, so that 60 dB are lost in the given time,
///
///     g = 10^(-3 length r / (rate decay)),   r = (rate / 44100 + 1) / 2,
///
/// and its damping (J.-M. Jot and A. Chaigne, "Digital delay networks for designing artificial
/// reverberators", 1991): c = ln(g) (1 - (r / damping)^2) 0.5756, gain (1 - c) g, coefficient -c,
/// so that the line has gain g at 0 Hz. At 44100 Hz r is exact; at other rates it lies half way to
/// exact, so that a room sounds longer at 96000 Hz, by the factor 2 rate / (rate + 44100).
FdnLineGain fdnLineGain(const FdnDecay& decay, double length, double rateHz) noexcept;

}  // namespace orvantesco
