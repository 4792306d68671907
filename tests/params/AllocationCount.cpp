#include "params/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local long allocations = 0;

}  // namespace

// These replace the operators of the whole test program.
void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace orvantesco {

long allocationsOfThread() noexcept { return allocations; }

}  // namespace orvantesco
