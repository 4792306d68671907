#pragma once

#include <array>

#include "fx/RandomDraw.h"

namespace orvantesco {

/// A row of sixteen step faders, each at a normalised position 0..1. The tap rows and the gates
/// share these operations; they work on values, and whoever calls them writes the result through
/// the parameters, so that a host sees every change.
using StepRow = std::array<double, 16>;

/// The patterns of the step menu, in its order.
enum class StepPattern { AllOff, AllOn, Ramp, Exponential, Triangle, Sinus, Half, Randomize };

/// The edits of a row, in their order.
enum class StepEdit { Reverse, Invert, Copy, Paste, RotateLeft, RotateRight };

/// The part of a row that is in use: its first `count` (1..16) steps.
struct StepSpan {
  int count = 16;
  int quantisation = 0;  ///< 0 leaves faders free, 1..12 snaps them to that many intervals
};

/// Writes a pattern over the used steps; `Randomize` draws all sixteen. A row of one step takes the
/// pattern's first value. With a quantisation all sixteen are snapped afterwards.
void applyStepPattern(StepRow& row, StepPattern pattern, const StepSpan& span, RandomDraw& draw);

/// Edits the used steps; `Copy` and `Paste` move all sixteen between the row and the clipboard,
/// which all rows share.
void editStepRow(StepRow& row, StepEdit edit, const StepSpan& span, StepRow& clipboard);

/// Snaps a fader to the levels 0, 1/N .. 1: floor((N + 1) · position) / N, at most 1. With N = 0
/// the position stays.
double quantiseStep(double position, int quantisation);

}  // namespace orvantesco
