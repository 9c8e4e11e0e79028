#include "ResultsTable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <ostream>
#include <string_view>

namespace ZaltBench {
namespace {

const char* const noResult = "–";

double nanosecondsPer(benchmark::TimeUnit unit) {
  switch (unit) {
    case benchmark::kNanosecond:
      return 1;
    case benchmark::kMicrosecond:
      return 1e3;
    case benchmark::kMillisecond:
      return 1e6;
    case benchmark::kSecond:
      return 1e9;
  }
  return 1;
}

std::string fixed(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

// Three significant digits are all that a shared machine's timings carry.
std::string rounded(double value) {
  const double magnitude = std::fabs(value);
  return fixed(value, magnitude < 10 ? 2 : magnitude < 100 ? 1 : 0);
}

std::string withThousands(const std::string& digits) {
  std::string grouped;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) {
      grouped += ',';
    }
    grouped += digits[i];
  }
  return grouped;
}

// "text/plain/hit/1008" from its parts.
std::string nameOf(std::initializer_list<std::string_view> parts) {
  std::string name;
  for (const std::string_view part : parts) {
    if (!name.empty()) {
      name += '/';
    }
    name += part;
  }
  return name;
}

}  // namespace

void ResultsTable::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
    if (run.error_occurred || (run.run_type == Run::RT_Aggregate && !median)) {
      continue;
    }
    // Processor time, not wall time: on a shared machine the wall clock also
    // counts the time that other processes run.
    Result result{run.GetAdjustedCPUTime() * nanosecondsPer(run.time_unit), {}};
    for (const auto& [name, counter] : run.counters) {
      result.counters[name] = counter.value;
    }
    m_results[run.run_name.function_name] = std::move(result);
  }
  ConsoleReporter::ReportRuns(runs);
}

const ResultsTable::Result* ResultsTable::find(const std::string& name) const {
  const auto found = m_results.find(name);
  return found == m_results.end() ? nullptr : &found->second;
}

std::string ResultsTable::nanoseconds(const std::string& name) const {
  const Result* result = find(name);
  return result ? rounded(result->nanoseconds) : noResult;
}

std::string ResultsTable::ratio(const std::string& name, const std::string& floorName) const {
  const Result* result = find(name);
  const Result* floor = find(floorName);
  return result && floor ? fixed(result->nanoseconds / floor->nanoseconds, 2) + "×" : noResult;
}

std::string ResultsTable::perUnit(const std::string& name, double units) const {
  const Result* result = find(name);
  return result ? rounded(result->nanoseconds / units) : noResult;
}

std::string ResultsTable::counter(const std::string& name, const std::string& counterName,
                                  int decimals) const {
  const Result* result = find(name);
  if (!result) {
    return noResult;
  }
  const auto found = result->counters.find(counterName);
  return found == result->counters.end() ? noResult : fixed(found->second, decimals);
}

std::vector<std::string> ResultsTable::sizesOf(const std::string& prefix) const {
  std::vector<std::string> sizes;
  for (const auto& [name, result] : m_results) {
    if (name.compare(0, prefix.size(), prefix) == 0 && name.find('/', prefix.size()) == std::string::npos) {
      sizes.push_back(name.substr(prefix.size()));
    }
  }
  std::sort(sizes.begin(), sizes.end(),
            [](const std::string& a, const std::string& b) { return std::stoull(a) < std::stoull(b); });
  return sizes;
}

void ResultsTable::writeTextTable(std::ostream& out, const std::string& outcome) const {
  out << "| texts | plain | width | lines | both | worst ratio | allocations per call: text / answer copy |\n"
      << "|---:|---:|---:|---:|---:|---:|---:|\n";
  for (const std::string& size : sizesOf(nameOf({"text", "plain", outcome, ""}))) {
    out << "| " << withThousands(size);
    double worst = 0;
    std::string allocations;
    for (const char* strategy : {"plain", "width", "lines", "both"}) {
      const std::string name = nameOf({"text", strategy, outcome, size});
      const Result* text = find(name);
      if (!text) {
        out << " | " << noResult;
        continue;
      }
      const double ratio = text->counters.at("ratio");
      worst = std::max(worst, ratio);
      out << " | " << rounded(text->counters.at("text_ns")) << " / " << rounded(text->counters.at("floor_ns"))
          << " = " << fixed(ratio, 2) << "×";
      allocations += (allocations.empty() ? "" : ", ") + fixed(text->counters.at("text_allocs"), 2) + " / " +
                     fixed(text->counters.at("answer_allocs"), 2);
    }
    out << " | " << fixed(worst, 2) << "× | " << allocations << " |\n";
  }
}

void ResultsTable::writeAddTable(std::ostream& out) const {
  out << "| texts | one call: ms | ns per text | in key order: ms | calls of 100: ms | calls of 3: ms |"
         " calls of 1: ms | interleaved, calls of 3: ms | interleaved, calls of 1: ms |\n"
      << "|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n";
  for (const std::string& size : sizesOf("add/whole/")) {
    const Result* whole = find("add/whole/" + size);
    out << "| " << withThousands(size) << " | " << fixed(whole->nanoseconds / 1e6, 1) << " | "
        << rounded(whole->nanoseconds / std::stod(size));
    for (const char* batch : {"keyorder", "batch100", "batch3", "batch1", "interleaved3", "interleaved1"}) {
      const std::string name = nameOf({"add", batch, size});
      const Result* batched = find(name);
      out << " | "
          << (batched ? fixed(batched->nanoseconds / 1e6, 1) + " (" + ratio(name, "add/whole/" + size) + ")"
                      : noResult);
    }
    out << " |\n";
  }
  out << "\nCalls, and how many of them the consistency check rejected:\n\n"
      << "| texts | calls of 100 | calls of 3 | calls of 1 | interleaved, calls of 3 | interleaved, calls of "
         "1 |\n"
      << "|---:|---:|---:|---:|---:|---:|\n";
  for (const std::string& size : sizesOf("add/batch1/")) {
    out << "| " << withThousands(size);
    for (const char* batch : {"batch100", "batch3", "batch1", "interleaved3", "interleaved1"}) {
      const std::string name = nameOf({"add", batch, size});
      out << " | " << counter(name, "rejected", 0) << " of " << counter(name, "calls", 0);
    }
    out << " |\n";
  }
}

void ResultsTable::writeQueryTable(std::ostream& out) const {
  out << "| texts | 100 references, one language: µs | all-empty filter: ms | ns per returned text |"
         " languages(): ns |\n"
      << "|---:|---:|---:|---:|---:|\n";
  for (const std::string& size : sizesOf("localizedTexts/all/")) {
    const Result* hundred = find("localizedTexts/refs100/" + size);
    const Result* all = find("localizedTexts/all/" + size);
    // The all-empty filter returns the newest of the two versions: half the texts.
    out << "| " << withThousands(size) << " | " << (hundred ? rounded(hundred->nanoseconds / 1e3) : noResult)
        << " | " << fixed(all->nanoseconds / 1e6, 2) << " | "
        << rounded(all->nanoseconds / (std::stod(size) / 2)) << " | " << nanoseconds("languages/" + size)
        << " |\n";
  }
}

void ResultsTable::writeMemoryTable(std::ostream& out) const {
  out << "| texts | heap bytes per text | bare std::map: bytes per text | text bytes per text | heap ÷ text |"
         " reference and language bytes per text |\n"
      << "|---:|---:|---:|---:|---:|---:|\n";
  for (const std::string& size : sizesOf("memory/")) {
    const Result* memory = find("memory/" + size);
    const double heap = memory->counters.at("heap_per_text");
    const double payload = memory->counters.at("payload_per_text");
    out << "| " << withThousands(size) << " | " << fixed(heap, 0) << " | "
        << fixed(memory->counters.at("bare_map_per_text"), 0) << " | " << fixed(payload, 1) << " | "
        << fixed(heap / payload, 1) << "× | " << fixed(memory->counters.at("key_text_per_text"), 1) << " |\n";
  }
}

void ResultsTable::writePlanningTable(std::ostream& out) const {
  out << "| references | add: ns per reference | isCovered: ns | merge: ns per reference | makeFilters: µs |"
         " sliceReferences: µs |\n"
      << "|---:|---:|---:|---:|---:|---:|\n";
  for (const std::string& size : sizesOf("makeFilters/")) {
    const double references = std::stod(size);
    // A merge adds the incoming half of the references.
    out << "| " << withThousands(size) << " | " << perUnit("refstore/add/" + size, references) << " | "
        << nanoseconds("refstore/isCovered/" + size) << " | "
        << perUnit("refstore/merge/" + size, references / 2) << " | " << perUnit("makeFilters/" + size, 1e3)
        << " | " << perUnit("sliceReferences/" + size, 1e3) << " |\n";
  }
}

void ResultsTable::writeLineBreakTable(std::ostream& out) const {
  out << "| text | bytes | numberOfLineBreaks: MB/s | byte loop: MB/s | time ÷ byte loop |\n"
      << "|---|---:|---:|---:|---:|\n";
  for (const char* input : {"ascii", "mixed", "breaks"}) {
    const std::string prefix = nameOf({"lines", "count", input, ""});
    for (const std::string& size : sizesOf(prefix)) {
      const std::string floorName = nameOf({"lines", "floor", input, size});
      const auto megabytes = [this, &size](const std::string& name) {
        const Result* result = find(name);
        return result ? fixed(std::stod(size) / result->nanoseconds * 1e3, 0) : std::string(noResult);
      };
      out << "| " << input << " | " << withThousands(size) << " | " << megabytes(prefix + size) << " | "
          << megabytes(floorName) << " | " << ratio(prefix + size, floorName) << " |\n";
    }
  }
}

void ResultsTable::writePlotData(std::ostream& out) const {
  out << "# texts floor(plain,hit) plain width lines both floor(plain,miss) plain(miss), ns per lookup;"
         " then the hits' ratios to their own floors: plain width lines both\n";
  for (const std::string& size : sizesOf("text/plain/hit/")) {
    out << size;
    const auto column = [this, &size, &out](const char* name, const char* counterName) {
      const Result* result = find(name + size);
      out << ' ' << (result ? fixed(result->counters.at(counterName), 2) : "NaN");
    };
    column("text/plain/hit/", "floor_ns");
    for (const char* name : {"text/plain/hit/", "text/width/hit/", "text/lines/hit/", "text/both/hit/"}) {
      column(name, "text_ns");
    }
    column("text/plain/miss/", "floor_ns");
    column("text/plain/miss/", "text_ns");
    for (const char* name : {"text/plain/hit/", "text/width/hit/", "text/lines/hit/", "text/both/hit/"}) {
      column(name, "ratio");
    }
    out << '\n';
  }
}

void ResultsTable::writeLoadPlotData(std::ostream& out) const {
  out << "# texts, ms to load them: in one call, in calls of 100, of 3, of 1; interleaved in calls of 3, of "
         "1\n";
  for (const std::string& size : sizesOf("add/batch1/")) {
    out << size;
    for (const char* name : {"add/whole/", "add/batch100/", "add/batch3/", "add/batch1/", "add/interleaved3/",
                             "add/interleaved1/"}) {
      const Result* result = find(name + size);
      out << ' ' << (result ? fixed(result->nanoseconds / 1e6, 3) : "NaN");
    }
    out << '\n';
  }
}

bool ResultsTable::write(const std::string& directory) const {
  std::ofstream tables(directory + "/results.md");
  tables
      << "### `text` against its floor (hits)\n\n"
      << "Each cell: `text` ns / floor ns = ratio, the floor being `lower_bound` of a bare `std::map` for\n"
      << "the same search key, the walk over the group for `lines` and `both`, and the answer value\n"
      << "built from the same entry; medians over rounds that run both on the same 1024 queries.\n\n";
  writeTextTable(tables, "hit");
  tables << "\n### `text` against its floor (misses: references between stored ones)\n\n";
  writeTextTable(tables, "miss");
  tables << "\n### `add`: a whole catalogue in one call, and in calls of a few texts (× the one call)\n\n";
  writeAddTable(tables);
  tables << "\n### `localizedTexts` and `languages`\n\n";
  writeQueryTable(tables);
  tables << "\n### Memory\n\n";
  writeMemoryTable(tables);
  tables << "\n### Reference store and request planning\n\n";
  writePlanningTable(tables);
  tables << "\n### Line-break counting against a byte loop counting line feeds\n\n";
  writeLineBreakTable(tables);

  std::ofstream plot(directory + "/text-cost.dat");
  writePlotData(plot);
  std::ofstream loadPlot(directory + "/load-cost.dat");
  writeLoadPlotData(loadPlot);
  return static_cast<bool>(tables) && static_cast<bool>(plot) && static_cast<bool>(loadPlot);
}

}  // namespace ZaltBench
