#pragma once

#include <array>
#include <span>

namespace orvantesco {

/// Slots as loops: each writes a delay line from what comes out of the lines, and is heard until
/// that has faded.
struct TailLoops {
  static constexpr std::size_t count = 4;

  std::array<double, count> seconds{};  ///< once through the delay of a slot, at its longest
  /// Largest gain from what a slot gives back (column) to what a slot writes (row), not below 0.
  std::array<std::array<double, count>, count> gain{};
};

/// Whether the loops fade at all: false where the spectral radius of the gains reaches 1.
bool loopsFade(const TailLoops& loops);

/// Decibels a second by which the loops fade: 0 where they do not, very much where nothing goes
/// round.
///
/// A sound that decays as exp(-s t) goes round where the gains, each grown by exp(s T) over the
/// delay T of its row, have a spectral radius of 1: of a single loop, where g exp(s T) = 1. That s
/// is sought by halving. The phases of the loops are taken for the worst there are, so the gains
/// count by their magnitude.
double loopDecay(const TailLoops& loops);

/// Seconds in which the loops fade by `decibels`; infinite where they do not fade.
double loopDecaySeconds(const TailLoops& loops, double decibels);

}  // namespace orvantesco
