#pragma once

namespace orvantesco {

class ParamDispatch;

/// Parameter p (0..4) of an effect type.
struct FxParamOfType {
  int typeId = 0;
  int p = 0;
};

/// Lets the read-out of a change show an effect's parameter at x (0..1): its name, and either the
/// label that is selected or its number with its unit.
void showFxParam(ParamDispatch& change, FxParamOfType of, double x) noexcept;

}  // namespace orvantesco
