#pragma once

#include "master/EQ_M.h"

namespace orvantesco {

/// The stereo equaliser of the master section: the same settings on both channels, and no path
/// from one to the other. Forms and parameters: EQ_M.
class EQ_ST : public DSPShell {
 public:
  explicit EQ_ST(int eqForm);

  void setParam(int index, double value) noexcept override;
  void reset() noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;

 private:
  EQ_M left;
  EQ_M right;
};

}  // namespace orvantesco
