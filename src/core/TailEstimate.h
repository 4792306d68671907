#pragma once

#include <array>

#include "core/DelayLengths.h"
#include "core/EffectPosition.h"
#include "core/GlobalControls.h"
#include "core/Slot.h"
#include "core/TailLength.h"
#include "params/ParamIndex.h"

namespace orvantesco {

/// How long the effect sounds on with its present settings, taken for the worst that knobs and
/// modulators allow: a host that stops listening then misses nothing.
///
/// Each slot's delay line is one unknown. What is written to it is a sum of what comes out of all
/// lines: round its own feedback or through the matrix, and through the direct outs of the slots
/// that it listens to. The spectral radius of these gains says whether the sound fades, and how
/// fast; how loud it begins says how far it has to fade. Slots in a row fade one behind the other,
/// and so does the master effect behind them.
///
/// Reads control words only. Any thread; keeps no state.
class TailEstimate {
 public:
  using Slots = std::array<Slot, numSlots>;
  using Positions = std::array<EffectPosition, kEffectPositions>;

  TailEstimate(const Slots& slots, const Positions& positions, const GlobalControls& globals,
               const TimeFrame& frame);

  /// Infinite where a loop does not fade.
  double seconds() const;

 private:
  static constexpr std::size_t count = TailLoops::count;

  /// A signal as a sum of what comes out of the four lines, and of what comes from outside.
  struct Sum {
    std::array<double, count> lines{};
    double outside = 0.0;

    void add(const Sum& other, double gain);
  };

  /// Slots that hear each other one behind the other.
  struct Row {
    int slots = 0;
    double seconds = 0.0;  ///< once through all of their delays
  };

  bool runs(std::size_t slot) const;
  bool echoes(std::size_t slot) const;
  const EffectPosition& effect(std::size_t slot, int stage) const;
  double feedbackOf(std::size_t slot) const;
  double lineShare(std::size_t slot) const;
  Sum inputOf(std::size_t slot) const;
  Sum stageOf(std::size_t slot, int stage) const;
  Sum ownLine(std::size_t slot) const;
  void takeSlot(std::size_t slot);
  void takeFeedback(std::size_t slot);
  double loudestAt(std::size_t slot, int stage) const;
  double loudest() const;
  double effectSeconds() const;

  const Slots& slots;
  const Positions& positions;
  const GlobalControls& globals;
  const TimeFrame frame;
  std::array<Sum, count> input{};       ///< what each slot hears
  std::array<double, count> written{};  ///< the loudest that each writes
  std::array<Row, count> row{};         ///< that ends with each slot
  TailLoops loops;
};

}  // namespace orvantesco
