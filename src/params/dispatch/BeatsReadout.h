#pragma once

namespace orvantesco {

class ParamDispatch;

/// While the user moves a time in ms, the editor also shows the tempo whose beat lasts as long.
void showBeatsOf(const ParamDispatch& change) noexcept;

}  // namespace orvantesco
