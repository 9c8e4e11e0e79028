#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace ZaltBench {
namespace {

// The benchmarks run on one thread; a plain counter adds the least to the
// allocations that they time.
std::size_t count = 0;

void* allocate(std::size_t size) {
  ++count;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

std::size_t allocationCount() { return count; }

}  // namespace ZaltBench

void* operator new(std::size_t size) { return ZaltBench::allocate(size); }
void* operator new[](std::size_t size) { return ZaltBench::allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
