#include "realtime/AudioThreadGuard.h"

#include <dlfcn.h>
#include <pthread.h>

#include <cstddef>

namespace {

struct Counts {
  bool armed = false;
  int allocations = 0;
  int frees = 0;
  int locks = 0;
};

thread_local Counts counts;

}  // namespace

namespace orvantesco {

AudioThreadGuard::AudioThreadGuard() { counts = {true, 0, 0, 0}; }
AudioThreadGuard::~AudioThreadGuard() { counts.armed = false; }
int AudioThreadGuard::allocations() const { return counts.allocations; }
int AudioThreadGuard::frees() const { return counts.frees; }
int AudioThreadGuard::locks() const { return counts.locks; }

}  // namespace orvantesco

// Each compiler has its own way to say that a sanitizer owns the allocator.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ORVANTESCO_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORVANTESCO_SANITIZED
#endif

#if defined(ORVANTESCO_SANITIZED)

bool orvantesco::AudioThreadGuard::works() { return false; }

#else

bool orvantesco::AudioThreadGuard::works() { return true; }

// The C library's own entries behind the replaced ones.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  counts.allocations += counts.armed;
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  counts.allocations += counts.armed;
  return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
  counts.allocations += counts.armed;
  return __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
  counts.allocations += counts.armed;
  return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  *block = memalign(alignment, size);
  return *block == nullptr ? 12 : 0;  // ENOMEM
}

void free(void* block) {
  counts.frees += counts.armed && block != nullptr;
  __libc_free(block);
}

int pthread_mutex_lock(pthread_mutex_t* mutex) {
  using Lock = int (*)(pthread_mutex_t*);
  static const auto real = reinterpret_cast<Lock>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
  counts.locks += counts.armed;
  return real(mutex);
}
}

#endif
