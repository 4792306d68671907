#pragma once

#include "delay/MDelayLine.h"
#include "delay/MModulator.h"

namespace orvantesco {

/// A delay line whose read position swings about a centre: `process` and `write` once for each
/// sample, in either order. Without a modulator it stays at the centre.
class MModDelayLine : public MDelayLine {
 public:
  /// The output of one step. The argument is for lines that mix their input in; the write side
  /// belongs to the caller.
  virtual float process(float in) noexcept = 0;

  void setMaxDelay(int samples) override;

  /// Delay in samples about which the read swings, held within 1 and the longest delay.
  void setCentreDelay(int samples) noexcept;
  /// Peak swing in samples, held within 0 and one below the centre, so that a read never
  /// overtakes the write.
  void setModDepth(int samples) noexcept;
  int modulationDepth() const noexcept { return modDepth; }

  /// Not owned; null for none.
  void setModulator(MModulator* swing) noexcept { modulator = swing; }

 protected:
  float readPos = 0.0F;  ///< samples from `begin`, of the centre
  int centreDelay = 1;
  int modDepth = 0;
  MModulator* modulator = nullptr;

 private:
  void placeRead() noexcept;
};

}  // namespace orvantesco
