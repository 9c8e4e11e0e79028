// zalt_lts_bench: every benchmark of Zalt_Lts in one run, so that each cost
// and the floor it is compared with are measured under the same conditions.
//
//   zalt_lts_bench [--results_dir=DIR] [Google Benchmark flags]
//
// With --results_dir, the run also writes DIR/results.md (the tables of
// docs/performance.md) and DIR/text-cost.dat (the data of the plot).
#include "Benchmarks.h"
#include "ResultsTable.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace {

const char* const resultsDirFlag = "--results_dir=";

// Takes our own flag out of argv, so that Google Benchmark sees only its own.
std::string takeResultsDir(int& argc, char** argv) {
  std::string directory;
  int kept = 0;
  for (int i = 0; i < argc; ++i) {
    if (std::strncmp(argv[i], resultsDirFlag, std::strlen(resultsDirFlag)) == 0) {
      directory = argv[i] + std::strlen(resultsDirFlag);
    } else {
      argv[kept++] = argv[i];
    }
  }
  argc = kept;
  return directory;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string resultsDir = takeResultsDir(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }

  // Half-decades from a thousand to a million texts.
  ZaltBench::registerStoreBenchmarks({1000, 3200, 10000, 32000, 100000, 320000, 1000000});
  ZaltBench::registerBatchedAddBenchmarks({1000, 3200, 10000, 32000, 100000});
  ZaltBench::registerPlanningBenchmarks();
  ZaltBench::registerLineBreakBenchmarks();

  ZaltBench::ResultsTable table;
  benchmark::RunSpecifiedBenchmarks(&table);
  benchmark::Shutdown();
  if (!resultsDir.empty() && !table.write(resultsDir)) {
    std::cerr << "cannot write the results into " << resultsDir << "\n";
    return 1;
  }
  return 0;
}
