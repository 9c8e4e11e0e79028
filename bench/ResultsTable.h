// ResultsTable: a console reporter that also keeps every result, and after
// the run writes them as the Markdown tables of docs/performance.md and as the
// data file that bench/plot.sh draws.
//
//   ResultsTable table;
//   benchmark::RunSpecifiedBenchmarks(&table);
//   table.write("build/bench-results");  // results.md, text-cost.dat, load-cost.dat
//
// Repeated benchmarks count by their median; a size that was not run leaves
// its cell as "–".
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace ZaltBench {

class ResultsTable : public benchmark::ConsoleReporter {
public:
  void ReportRuns(const std::vector<Run>& runs) override;

  // Writes results.md, text-cost.dat and load-cost.dat into `directory`, which must exist.
  // Returns false if a file cannot be written.
  bool write(const std::string& directory) const;

private:
  struct Result {
    double nanoseconds;
    std::map<std::string, double> counters;
  };

  const Result* find(const std::string& name) const;
  std::string nanoseconds(const std::string& name) const;
  // The time of `name` divided by `units`, such as its number of items.
  std::string perUnit(const std::string& name, double units) const;
  std::string ratio(const std::string& name, const std::string& floorName) const;
  std::string counter(const std::string& name, const std::string& counterName, int decimals) const;

  void writeTextTable(std::ostream& out, const std::string& outcome) const;
  void writeAddTable(std::ostream& out) const;
  void writeQueryTable(std::ostream& out) const;
  void writeMemoryTable(std::ostream& out) const;
  void writePlanningTable(std::ostream& out) const;
  void writeLineBreakTable(std::ostream& out) const;
  void writePlotData(std::ostream& out) const;
  void writeLoadPlotData(std::ostream& out) const;

  // Sizes that occur as the last part of names starting with `prefix`, ascending.
  std::vector<std::string> sizesOf(const std::string& prefix) const;

  std::map<std::string, Result> m_results;
};

}  // namespace ZaltBench
