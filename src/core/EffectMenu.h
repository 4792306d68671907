#pragma once

#include "params/Labels.h"

namespace orvantesco {

/// What a person chooses from for an effect type parameter: the menu names of its stage, entry i
/// for the value i. Empty for every other parameter, whose display texts are its choices.
LabelList effectMenuOf(int paramIndex);

}  // namespace orvantesco
