#pragma once

#include "fx/LPHP.h"

namespace orvantesco {

/// A low-pass and a high-pass in series, each with its own slope, and no drive.
///
/// Controls for `setParam` and modulation:
///   0 corner of the high-pass, 1 its slope (0..3 for 12, 24, 36 and 48 dB an octave), 2 corner of
///   the low-pass, 3 its slope, 4 the mix. The slopes take no modulation.
class VARILPHP : public LPHP {
 public:
  explicit VARILPHP(bool isRight = false);

  /// Another slope than before clears the filter that it belongs to.
  void setParam(int index, double value) noexcept override;

 private:
  DSPShell* modulatedBy(int index) noexcept override;
};

}  // namespace orvantesco
