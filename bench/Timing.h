// Timing for the benchmarks that report a ratio against a floor taken in the
// same run: each side timed on its own, the median of the rounds kept.
//
//   checks.push_back(secondsFor([&] { check = checkCatalogue(catalogue); }));
//   state.counters["per_check"] = median(ratios);
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace ZaltBench {

// The wall-clock seconds that `work()` takes.
template <typename Work>
double secondsFor(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The middle of `values` (the upper one of an even count); `values` is not empty.
inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace ZaltBench
