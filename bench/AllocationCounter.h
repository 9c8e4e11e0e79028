// allocationCount(): how many times this program has called the global
// operator new (and new[]) so far. The benchmark program replaces those
// operators with counting ones that allocate with malloc, so the count also
// covers the allocations made inside the library.
//
//   const std::size_t before = allocationCount();
//   store.text(reference, language);
//   const std::size_t allocations = allocationCount() - before;
#pragma once

#include <cstddef>

namespace ZaltBench {

std::size_t allocationCount();

}  // namespace ZaltBench
