#pragma once

// Every entry of KernelTable in its order, with the body, the kind of pack and the loop that fill
// it. Lists as macros, because a table is written out in three places: by a processor level, by
// the choice at the first call, and by the change from one level to another.

#define ORVANTESCO_KERNEL_LOOPS(X)                             \
  X(fill, VectorBody, Doubles, fill)                           \
  X(copy, VectorBody, Doubles, copy)                           \
  X(move, VectorBody, Doubles, move)                           \
  X(absolute, VectorBody, Doubles, absolute)                   \
  X(squareRoot, VectorBody, Doubles, squareRoot)               \
  X(add, VectorBody, Doubles, add)                             \
  X(subtract, VectorBody, Doubles, subtract)                   \
  X(multiply, VectorBody, Doubles, multiply)                   \
  X(addProduct, VectorBody, Doubles, addProduct)               \
  X(smaller, VectorBody, Doubles, smaller)                     \
  X(larger, VectorBody, Doubles, larger)                       \
  X(divide, VectorBody, Doubles, divide)                       \
  X(addConst, VectorBody, Doubles, addConst)                   \
  X(subtractFromConst, VectorBody, Doubles, subtractFromConst) \
  X(scale, VectorBody, Doubles, scale)                         \
  X(scaleOrClear, VectorBody, Doubles, scaleOrClear)           \
  X(addScaled, VectorBody, Doubles, addScaled)                 \
  X(clampBelow, VectorBody, Doubles, clampBelow)               \
  X(clampAbove, VectorBody, Doubles, clampAbove)               \
  X(thresholdLow, VectorBody, Doubles, thresholdLow)           \
  X(thresholdHigh, VectorBody, Doubles, thresholdHigh)         \
  X(thresholdBoth, VectorBody, Doubles, thresholdBoth)         \
  X(maxAbs, ReductionBody, Doubles, maxAbs)                    \
  X(sum, ReductionBody, Doubles, sum)                          \
  X(staysWithin, ReductionBody, Doubles, staysWithin)          \
  X(fillFloat, VectorBody, Floats, fill)                       \
  X(copyFloat, VectorBody, Floats, copy)                       \
  X(addConstFloat, VectorBody, Floats, addConst)               \
  X(multiplyFloat, VectorBody, Floats, multiply)               \
  X(scaleOrClearFloat, VectorBody, Floats, scaleOrClear)       \
  X(addScaledFloat, VectorBody, Floats, addScaled)             \
  X(constDivFloat, VectorBody, Floats, constDiv)               \
  X(sumFloat, ReductionBody, Floats, sum)

#define ORVANTESCO_KERNEL_FILTERS(X) \
  X(iirFilter) X(iirFilterPair) X(iirSetDelayLine) X(iirGetDelayLine)
