#pragma once

namespace orvantesco {

/// How often the calling thread has taken memory from the heap.
long allocationsOfThread() noexcept;

}  // namespace orvantesco
