#pragma once

namespace orvantesco {

class ParamDispatch;

/// The value with which a dispatch goes on. While the state of an older version is restored, values
/// that have changed their meaning since are brought up to date in the bank first.
double migratedValue(const ParamDispatch& change, double value);

}  // namespace orvantesco
