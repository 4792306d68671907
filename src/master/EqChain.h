#pragma once

#include "fx/Lanes.h"
#include "master/EqBand.h"

namespace orvantesco {

/// Sections one behind the other, for both channels of a vector at once: the channels take the two
/// lanes of a register, and while one section waits for its memory the others work. Lives for one
/// vector, between the bands that it takes its sections from and gives their memory back to.
template <int kBands>
class EqChain {
 public:
  /// Takes the section of a band for each lane; both may be the same band.
  void take(int index, EqBand& left, EqBand& right) noexcept {
    left.followControls();
    if (&right != &left) right.followControls();
    bands[index][0] = &left;
    bands[index][1] = &right;
    const EqBand::Section& l = left.currentSection();
    const EqBand::Section& r = right.currentSection();
    sections[index] = {Lanes{l.b0, r.b0}, Lanes{l.c1, r.c1}, Lanes{l.c2, r.c2}, Lanes{l.a1, r.a1},
                       Lanes{l.a2, r.a2}, Lanes{l.p, r.p},   Lanes{l.q, r.q}};
  }

  /// Filters 32 samples of each channel in place; both may be the same.
  void run(double* left, double* right) noexcept {
    Lanes p[kBands], q[kBands];
    for (int k = 0; k < kBands; ++k) {
      p[k] = sections[k].p;
      q[k] = sections[k].q;
    }
    for (int i = 0; i < kVectorLength; ++i) {
      Lanes x{left[i], right[i]};
#pragma GCC unroll 3
      for (int k = 0; k < kBands; ++k) {
        const Section& s = sections[k];
        const Lanes y = s.b0 * x + p[k];
        const Lanes next = (s.c1 * x + q[k]) - s.a1 * p[k];
        q[k] = s.c2 * x - s.a2 * p[k];
        p[k] = next;
        x = y;
      }
      left[i] = x[0];
      right[i] = x[1];
    }
    for (int k = 0; k < kBands; ++k) giveBack(k, p[k], q[k]);
  }

 private:
  struct Section {
    Lanes b0{}, c1{}, c2{}, a1{}, a2{}, p{}, q{};
  };

  void giveBack(int index, Lanes p, Lanes q) noexcept {
    // What lies below the rounding of 1e-15 vanishes, so that no tail ends in denormals.
    const Lanes offset = bothLanes(1e-15);
    p = (p + offset) - offset;
    q = (q + offset) - offset;
    for (int lane = 0; lane < 2; ++lane) {
      EqBand::Section& section = bands[index][lane]->currentSection();
      section.p = p[lane];
      section.q = q[lane];
    }
  }

  Section sections[kBands];
  EqBand* bands[kBands][2] = {};
};

}  // namespace orvantesco
