#pragma once

namespace orvantesco {

/// What a `Shaper` is, and the curves of "WAVE SHAPE". Numbers are the type ids of the effect
/// catalogue and what the shape parameter sends. The second of a pair is the feedback position's,
/// whose third parameter chooses the filter's mode.
enum ShaperType : int {
  kShaperWaveShape = 6,
  kShaperTube = 7,
  kShaperSine1 = 9,
  kShaperSine2 = 10,
  kShaperSine3 = 11,
  kShaperAsymmetric1 = 12,
  kShaperAsymmetric2 = 13,
  kShaperSaturate = 14,
  kShaperSaturateFeedback = 15,
  kShaperRectify = 16,
  kShaperRectifyFeedback = 17,
  kShaperDestroy = 18,
  kShaperDestroyFeedback = 19,
  kShaperNoise = 20,
  kShaperNoiseFeedback = 21,
  kShaperLofi = 23,
  kShaperLofiFeedback = 24,
};

}  // namespace orvantesco
