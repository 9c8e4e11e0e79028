#include "AllocationCounter.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

// glibc's own allocator under its internal names, so that the counting
// malloc below can hand on to it.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace ZaltBench {
namespace {

// The benchmarks run on one thread; plain counters add the least to the
// allocations that they time.
std::size_t count = 0;
std::size_t live = 0;
std::size_t peak = 0;

void* counted(void* memory) {
  if (memory != nullptr) {
    live += malloc_usable_size(memory);
    peak = std::max(peak, live);
  }
  return memory;
}

void uncount(void* memory) { live -= malloc_usable_size(memory); }

void* allocate(std::size_t size) {
  ++count;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

std::size_t allocationCount() { return count; }
std::size_t liveBytes() { return live; }
std::size_t peakBytes() { return peak; }
void resetPeak() { peak = live; }

}  // namespace ZaltBench

// The C library declares these with reserved parameter names.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {
void* malloc(std::size_t size) { return ZaltBench::counted(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) { return ZaltBench::counted(__libc_calloc(count, size)); }
void* realloc(void* memory, std::size_t size) {
  const std::size_t before = malloc_usable_size(memory);
  void* moved = __libc_realloc(memory, size);
  if (moved == nullptr && size != 0) {
    return nullptr;  // the old block stays as it was
  }
  ZaltBench::live -= before;
  return ZaltBench::counted(moved);
}
void free(void* memory) {
  ZaltBench::uncount(memory);
  __libc_free(memory);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

void* operator new(std::size_t size) { return ZaltBench::allocate(size); }
void* operator new[](std::size_t size) { return ZaltBench::allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
