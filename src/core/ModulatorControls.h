#pragma once

#include <array>

#include "fx/Shared.h"

namespace orvantesco {

/// Control words of one LFO.
struct LfoControls {
  Shared<bool> on{false}, swap{false}, reverse{false};
  Shared<int> wave{0}, polarity{0}, sync{0}, mode{0};
  Shared<const unsigned char*> trigger{nullptr};
  /// Hz from 0 up; below 0 its magnitude counts cycles for each beat. One word holds number and
  /// unit, so that no reader takes a note for a frequency while the mode changes.
  Shared<double> rate{0.5};
  Shared<double> rateModDepth{0.0};  ///< cubed
  Shared<const double*> rateModSource{nullptr};
  Shared<double> depth{0.5};  ///< 0..1
  Shared<double> phase{0.0};  ///< 0..1
  Shared<double> glideMs{10.0};

  /// The rate in Hz at a tempo in beats per minute.
  double rateHz(double tempo) const noexcept {
    const double word = rate;
    return word < 0.0 ? -word * tempo / 60.0 : word;
  }
};

/// Control words of one step gate.
struct GateControls {
  Shared<bool> on{false}, sync{false};
  Shared<int> length{8}, timebase{0}, direction{0}, polarity{0}, quantisation{0};
  Shared<double> glideMs{0.0};
  Shared<double> depth{1.0};               ///< 0..1
  std::array<Shared<double>, 16> level{};  ///< 0..1
};

/// Control words of one envelope modulator.
struct EnvelopeControls {
  Shared<bool> on{false}, follower{true}, linear{false};
  Shared<int> source{0};
  Shared<double> gain{1.0};  ///< linear
  Shared<double> attackMs{10.0}, releaseMs{100.0}, holdMs{0.0};
  Shared<double> threshold{1.0};          ///< linear
  Shared<double> locut{0.0}, hicut{1.0};  ///< normalised between 50 Hz and 20 kHz
  Shared<double> depth{1.0};              ///< 0..1
};

/// Control words of one logic unit.
struct LogicControls {
  Shared<bool> on{false};
  Shared<int> type{0};                          ///< internal type, 0..8
  std::array<Shared<double>, 2> sourceDepth{};  ///< -1..1
  std::array<Shared<const double*>, 2> source{};
  Shared<double> smoothMs{0.0};
  Shared<double> depth{0.0};     ///< 0..1
  Shared<double> depthMod{0.0};  ///< -1..1
  Shared<const double*> depthSource{nullptr};
};

/// Written by the dispatch on any thread; the modulators read them once per sub-block.
struct ModulatorControls {
  std::array<LfoControls, 4> lfo;
  std::array<GateControls, 4> gate;
  std::array<EnvelopeControls, 2> envelope;
  std::array<LogicControls, 4> logic;
  Shared<int> listenTo{-1};  ///< envelope whose band is heard instead of the output, -1 for none
};

}  // namespace orvantesco
