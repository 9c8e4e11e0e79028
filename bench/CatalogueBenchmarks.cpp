// Benchmarks of the catalogue component on the benchmarks' catalogues, beside
// the floor they are measured against in the same run: the one add of the same
// texts, held in memory, that a device makes at start-up.
//
//   catalogue/add/N         the floor: one add of N texts from memory
//   catalogue/read+add/N    reading the catalogue file and adding its texts
//   catalogue/check/N       checking the texts read from the file
//   catalogue/read+check/N  reading the catalogue file and checking its texts,
//                           what zalt-lts-catalogue check does
//   catalogue/measure/N     measuring every text's width, as checking does
//   catalogue/memory/N      peak heap while reading and checking, beside the
//                           heap of a store that holds the texts
//   catalogue/read-mdib/N   reading an MDIB document that names N/10 texts
//   catalogue/coverage/N    checking those against the texts a store keeps,
//                           what zalt-lts-catalogue coverage adds to check
//   catalogue/digest/N      a round checks the texts read from the file (the
//                           floor), then takes the digest of what they keep;
//                           the counters hold each step's median milliseconds
//                           and the median of the rounds' digest_per_check,
//                           (check + digest) / check
//
// They register themselves, and only when the catalogue library is built:
//   zalt_lts_bench --benchmark_filter='^catalogue/'
#include "AllocationCounter.h"
#include "Catalogue.h"
#include "Timing.h"

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/CatalogueDigest.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/MdibCoverage.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Catalogue/XmlNamespaces.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZaltBench {
namespace {

using Tovra::Mdib::LocalizedText;
using Zalt::Localization::Device::LocalizedTextStore;

constexpr std::size_t catalogueSizes[] = {100000, 1000000};

std::int64_t asCount(std::size_t count) { return static_cast<std::int64_t>(count); }

// The catalogue written once as a file, where a device maker's build keeps it.
class CatalogueFile {
public:
  explicit CatalogueFile(std::size_t references)
      : m_path((std::filesystem::temp_directory_path() /
                ("zalt-lts-bench-" + std::to_string(references) + ".xml"))
                   .string()) {
    std::ofstream(m_path, std::ios::binary) << Zalt::Catalogue::writeCatalogue(makeCatalogue(references));
  }
  ~CatalogueFile() { std::remove(m_path.c_str()); }
  CatalogueFile(const CatalogueFile&) = delete;
  CatalogueFile& operator=(const CatalogueFile&) = delete;
  CatalogueFile(CatalogueFile&&) = delete;
  CatalogueFile& operator=(CatalogueFile&&) = delete;

  const std::string& path() const { return m_path; }
  double bytes() const { return static_cast<double>(std::filesystem::file_size(m_path)); }

private:
  std::string m_path;
};

// An MDIB whose metrics name a tenth as many texts as the catalogue holds: its
// references in turn, in either version or in none (the newest), and one in a
// hundred a reference that the catalogue lacks.
class MdibFile {
public:
  explicit MdibFile(std::size_t references)
      : m_path((std::filesystem::temp_directory_path() /
                ("zalt-lts-bench-mdib-" + std::to_string(references) + ".xml"))
                   .string()) {
    std::ofstream file(m_path, std::ios::binary);
    file << "<pm:Mdib xmlns:pm='" << Zalt::Catalogue::participantNamespace << "'>\n<pm:MdDescription>\n";
    for (std::size_t use = 0; use < uses(references); ++use) {
      const std::size_t index = use % references;
      const std::string ref =
          (use % 100 == 99 ? missingReference(index, references) : storedReference(index, references))
              .get()
              .value();
      const char* const version = use % 3 == 0 ? "" : use % 3 == 1 ? " Version='1'" : " Version='2'";
      file << "<pm:Metric Handle='m" << use << "'><pm:Type Code='" << use << "'><pm:ConceptDescription Ref='"
           << ref << "'" << version << "/></pm:Type></pm:Metric>\n";
    }
    file << "</pm:MdDescription>\n</pm:Mdib>\n";
  }
  ~MdibFile() { std::remove(m_path.c_str()); }
  MdibFile(const MdibFile&) = delete;
  MdibFile& operator=(const MdibFile&) = delete;
  MdibFile(MdibFile&&) = delete;
  MdibFile& operator=(MdibFile&&) = delete;

  static std::size_t uses(std::size_t references) { return references * textsPerReference / 10; }
  const std::string& path() const { return m_path; }

private:
  std::string m_path;
};

void addOnce(benchmark::State& state, std::size_t references) {
  const std::vector<LocalizedText> catalogue = makeCatalogue(references);
  for (auto _ : state) {
    auto store = LocalizedTextStore::createLocalizedTextStore();
    store->add(catalogue);
    state.PauseTiming();
    store.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.size()));
}

void readAndAdd(benchmark::State& state, std::size_t references) {
  const CatalogueFile file(references);
  std::size_t texts = 0;
  for (auto _ : state) {
    auto store = LocalizedTextStore::createLocalizedTextStore();
    Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile(file.path());
    texts = catalogue.texts.size();
    store->add(Zalt::Catalogue::mdibTexts(std::move(catalogue.texts)));
    state.PauseTiming();
    store.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * asCount(texts));
  state.counters["file_bytes"] = file.bytes();
}

void check(benchmark::State& state, std::size_t references) {
  const CatalogueFile file(references);
  const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile(file.path());
  // Some of the benchmarks' long Japanese labels are declared narrower than
  // they measure; any other finding would mean that the check took a path
  // that a good catalogue does not.
  std::size_t tooNarrow = 0;
  for (auto _ : state) {
    const auto findings = Zalt::Catalogue::checkCatalogue(catalogue).findings;
    tooNarrow =
        static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), [](const auto& finding) {
          return finding.kind == Zalt::Catalogue::Finding::Kind::Width;
        }));
    if (tooNarrow != findings.size()) {
      state.SkipWithError("the benchmark catalogue has findings other than widths");
    }
  }
  state.counters["width_findings"] = static_cast<double>(tooNarrow);
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.texts.size()));
}

void readAndCheck(benchmark::State& state, std::size_t references) {
  const CatalogueFile file(references);
  std::size_t texts = 0;
  for (auto _ : state) {
    const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile(file.path());
    texts = catalogue.texts.size();
    benchmark::DoNotOptimize(Zalt::Catalogue::checkCatalogue(catalogue));
  }
  state.SetItemsProcessed(state.iterations() * asCount(texts));
}

// The part of check that measures widths, alone.
void measure(benchmark::State& state, std::size_t references) {
  const std::vector<LocalizedText> catalogue = makeCatalogue(references);
  Zalt::Catalogue::TextMeasure measured;
  for (auto _ : state) {
    for (const LocalizedText& text : catalogue) {
      Zalt::Catalogue::measureText(text.text(), Zalt::Catalogue::WidthUnit::Fullwidth, measured);
      benchmark::DoNotOptimize(measured.measuredClass);
    }
  }
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.size()));
}

void readMdib(benchmark::State& state, std::size_t references) {
  const MdibFile file(references);
  for (auto _ : state) {
    benchmark::DoNotOptimize(Zalt::Catalogue::readMdibTextsFile(file.path()));
  }
  state.SetItemsProcessed(state.iterations() * asCount(MdibFile::uses(references)));
}

// Coverage alone: the catalogue, its check and the MDIB are read and checked
// before, as zalt-lts-catalogue coverage has them after check's work.
void coverage(benchmark::State& state, std::size_t references) {
  const CatalogueFile catalogueFile(references);
  const MdibFile mdibFile(references);
  const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile(catalogueFile.path());
  const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(catalogue);
  const Zalt::Catalogue::MdibTexts mdib = Zalt::Catalogue::readMdibTextsFile(mdibFile.path());
  std::size_t covered = 0;
  for (auto _ : state) {
    const Zalt::Catalogue::CoverageCheck result =
        Zalt::Catalogue::checkCoverage(mdib, catalogue, check, true);
    covered = result.covered;
    if (result.findings.size() != MdibFile::uses(references) / 100) {
      state.SkipWithError("the coverage benchmark expects one finding per missing reference");
    }
  }
  state.counters["covered"] = static_cast<double>(covered);
  state.SetItemsProcessed(state.iterations() * asCount(MdibFile::uses(references)));
}

// The digest beside the check it needs, which a build gate runs anyway.
void digest(benchmark::State& state, std::size_t references) {
  const CatalogueFile file(references);
  const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile(file.path());
  std::vector<double> checks;
  std::vector<double> digests;
  std::vector<double> ratios;
  for (auto _ : state) {
    Zalt::Catalogue::CatalogueCheck check;
    checks.push_back(secondsFor([&] { check = Zalt::Catalogue::checkCatalogue(catalogue); }));
    digests.push_back(
        secondsFor([&] { benchmark::DoNotOptimize(Zalt::Catalogue::catalogueDigest(catalogue, check)); }));
    ratios.push_back((checks.back() + digests.back()) / checks.back());
  }
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.texts.size()));
  state.counters["check_ms"] = median(checks) * 1e3;
  state.counters["digest_ms"] = median(digests) * 1e3;
  state.counters["digest_per_check"] = median(ratios);
}

// Peak heap of what `zalt-lts-catalogue check` does, reading included, and of
// checking texts already read, each against the heap of a store holding them.
void memory(benchmark::State& state, std::size_t references) {
  const CatalogueFile file(references);
  std::size_t store = 0;
  std::size_t readAndCheck = 0;
  std::size_t checkOnly = 0;
  for (auto _ : state) {
    {
      const std::size_t before = liveBytes();
      auto filled = LocalizedTextStore::createLocalizedTextStore();
      filled->add(makeCatalogue(references));
      store = liveBytes() - before;
    }
    resetPeak();
    const std::size_t before = liveBytes();
    const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile(file.path());
    const std::size_t read = liveBytes() - before;
    const std::size_t readPeak = peakBytes() - before;
    resetPeak();
    benchmark::DoNotOptimize(Zalt::Catalogue::checkCatalogue(catalogue));
    checkOnly = peakBytes() - before;
    readAndCheck = std::max(readPeak, checkOnly);
    benchmark::DoNotOptimize(read);
  }
  const auto ratio = [store](std::size_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(store);
  };
  state.counters["store_mb"] = static_cast<double>(store) / 1e6;
  state.counters["read_and_check_peak_mb"] = static_cast<double>(readAndCheck) / 1e6;
  state.counters["read_and_check_per_store"] = ratio(readAndCheck);
  state.counters["check_peak_mb"] = static_cast<double>(checkOnly) / 1e6;
  state.counters["check_per_store"] = ratio(checkOnly);
}

bool registerCatalogueBenchmarks() {
  for (const std::size_t texts : catalogueSizes) {
    const std::size_t references = referencesFor(texts);
    const std::string size = "/" + std::to_string(references * textsPerReference);
    const auto timed = [&size, references](const std::string& name, auto function) {
      const std::string fullName =
          "catalogue/" + name + size;  // NOLINT(performance-inefficient-string-concatenation)
      benchmark::RegisterBenchmark(fullName.c_str(), function, references)
          ->Iterations(1)
          ->Repetitions(3)
          ->ReportAggregatesOnly(true)
          ->Unit(benchmark::kMillisecond);
    };
    timed("add", addOnce);
    timed("read+add", readAndAdd);
    timed("check", check);
    timed("read+check", readAndCheck);
    timed("measure", measure);
    timed("read-mdib", readMdib);
    timed("coverage", coverage);
    benchmark::RegisterBenchmark(("catalogue/memory" + size).c_str(), memory, references)->Iterations(1);
    benchmark::RegisterBenchmark(("catalogue/digest" + size).c_str(), digest, references)
        ->Iterations(3)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}

// Main.cpp registers the library's families; these register themselves so that
// the program builds the same with or without the catalogue library.
const bool registered = registerCatalogueBenchmarks();  // NOLINT(cert-err58-cpp)

}  // namespace
}  // namespace ZaltBench
