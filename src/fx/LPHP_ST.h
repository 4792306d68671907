#pragma once

#include "fx/LPHP.h"

namespace orvantesco {

/// `LPHP` for both channels of a two-channel call. Parameters and clearing go to both; nothing
/// modulates it, and its own mix stays whole.
class LPHP_ST : public DSPShell {
 public:
  LPHP_ST();

  void reset() noexcept override;
  void setParam(int index, double value) noexcept override;
  void processBlock() noexcept override;
  void rateChanged() noexcept override;
  void clearMemories() noexcept override;
  void onStateCleared() noexcept override;
  void prepare() noexcept override;

 private:
  LPHP left;
  LPHP right;
};

}  // namespace orvantesco
