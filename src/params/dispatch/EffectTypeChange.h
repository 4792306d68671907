#pragma once

namespace orvantesco {

class ParamDispatch;

/// Builds the instances of another effect type and hands them to the audio thread.
///
/// Only a person or a bulk operation changes an effect: without a committed gesture at the
/// position's selector the engine keeps its effect, and the bank the value that the host wrote.
/// This is the one change that takes memory and a lock, so it never runs on the audio thread. If
/// memory runs out, the effect stays and the bank's value goes back to it.
void changeEffectType(ParamDispatch& change);

}  // namespace orvantesco
