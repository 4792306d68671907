#pragma once

#include <string>

namespace orvantesco {

/// The name by which formats that count names instead of numbers (LV2) know a parameter
/// (0 .. kNumParams - 1): its key with "_" for what is no letter or digit. Sessions hold these
/// names, so they never change. Any thread.
///
/// Where two parameters share a key, as the second and third logic unit do, the first one's symbol
/// ends in "_" and its index.
const std::string& parameterSymbol(int index);

}  // namespace orvantesco
