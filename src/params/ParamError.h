#pragma once

#include <string>
#include <variant>

namespace orvantesco {

/// What a person has to know about a name or value that was refused: one line without its end.
struct ParamError {
  std::string message;
};

/// A result, or why there is none.
template <class T>
using OrParamError = std::variant<T, ParamError>;

}  // namespace orvantesco
