#pragma once

// The flat vector operations and recursive filters that every signal block is made of.
//
// - Vectors are plain arrays; a length counts elements. No alignment is required. `dst` may be
//   the same array as a source; ranges that overlap in part are for `vecMove` alone.
// - Each operation checks its arguments inline and makes one call through the table of the
//   processor level that was chosen at the first call into the library. Every level gives the
//   same bits (the payload of a NaN excepted), so a recursion never depends on the machine.
// - Any thread may call any operation on its own data. Nothing here locks, throws or, but for
//   the allocators, touches the heap.

#include "fx/VectorLength.h"
#include "fx/kernels/Allocators.h"
#include "fx/kernels/Iir.h"
#include "fx/kernels/Status.h"
#include "fx/kernels/VectorArithmetic.h"
#include "fx/kernels/VectorBounds.h"
#include "fx/kernels/VectorFill.h"
