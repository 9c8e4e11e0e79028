// allocationCount(): how many times this program has called the global
// operator new (and new[]) so far; liveBytes() and peakBytes(): the heap
// bytes handed out by malloc and not yet freed, now and at most since the last
// resetPeak(). The benchmark program replaces operator new and, on glibc,
// malloc and free with counting ones, so the figures also cover allocations
// made inside the libraries, the XML parser's included.
//
//   const std::size_t before = allocationCount();
//   store.text(reference, language);
//   const std::size_t allocations = allocationCount() - before;
//
//   resetPeak();
//   checkCatalogue(texts);
//   const std::size_t peak = peakBytes();
#pragma once

#include <cstddef>

namespace ZaltBench {

std::size_t allocationCount();
std::size_t liveBytes();
std::size_t peakBytes();
void resetPeak();

}  // namespace ZaltBench
