// Benchmarks of the XLIFF exchange, each beside the floor it is measured
// against in the same round: checking the same catalogue, which an exchange
// runs anyway (the tool checks the catalogue that it exports and the texts
// that it imports).
//
//   xliff/exchange/N  N units: the en-US and de-DE texts of the benchmarks'
//                     catalogues, N of each. A round checks them (the export's
//                     floor), writes them as XLIFF from en-US to de-DE (every
//                     unit with its target), reads that document from memory
//                     and checks the N texts it yields (the import's floor).
//                     The counters hold each step's median milliseconds and
//                     the medians of the rounds' export_per_check and
//                     import_per_check.
//
// They register themselves, and only when the catalogue library is built:
//   zalt_lts_bench --benchmark_filter='^xliff/'
#include "Catalogue.h"
#include "Timing.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace ZaltBench {
namespace {

using Tovra::Locale::LanguageTag;

const LanguageTag from("en-US");  // NOLINT(cert-err58-cpp)
const LanguageTag to("de-DE");    // NOLINT(cert-err58-cpp)

// The en-US and de-DE texts of a catalogue of `references`, read back from its file.
Zalt::Catalogue::Catalogue twoLanguages(std::size_t references) {
  std::vector<Tovra::Mdib::LocalizedText> texts = makeCatalogue(references);
  texts.erase(std::remove_if(texts.begin(), texts.end(),
                             [](const auto& text) { return *text.lang() != from && *text.lang() != to; }),
              texts.end());
  return Zalt::Catalogue::readCatalogue(Zalt::Catalogue::writeCatalogue(texts), "bench.xml");
}

void exchange(benchmark::State& state, std::size_t references) {
  const Zalt::Catalogue::Catalogue catalogue = twoLanguages(references);
  std::string xliff;
  Zalt::Catalogue::XliffImport imported;
  std::vector<double> checks;
  std::vector<double> exports;
  std::vector<double> importChecks;
  std::vector<double> imports;
  std::vector<double> exportRatios;
  std::vector<double> importRatios;
  for (auto _ : state) {
    // Freeing the last round's results is no part of this round's cost.
    xliff = {};
    imported = {};
    Zalt::Catalogue::CatalogueCheck check;
    checks.push_back(secondsFor([&] { check = Zalt::Catalogue::checkCatalogue(catalogue); }));
    exports.push_back(
        secondsFor([&] { xliff = Zalt::Catalogue::writeXliff(catalogue, check, from, to, "bench.xml"); }));
    imports.push_back(secondsFor([&] { imported = Zalt::Catalogue::readXliff(xliff, "bench.xlf"); }));
    importChecks.push_back(
        secondsFor([&] { benchmark::DoNotOptimize(Zalt::Catalogue::checkCatalogue(imported.catalogue)); }));
    exportRatios.push_back(exports.back() / checks.back());
    importRatios.push_back(imports.back() / importChecks.back());
  }
  // Every en-US text has its de-DE translation under the same key.
  if (2 * imported.catalogue.texts.size() != catalogue.texts.size() || !imported.findings.empty()) {
    state.SkipWithError("the import did not give back one translation per unit");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(imported.catalogue.texts.size()));
  state.counters["xliff_mb"] = static_cast<double>(xliff.size()) / 1e6;
  state.counters["check_ms"] = median(checks) * 1e3;
  state.counters["export_ms"] = median(exports) * 1e3;
  state.counters["import_ms"] = median(imports) * 1e3;
  state.counters["check_imported_ms"] = median(importChecks) * 1e3;
  state.counters["export_per_check"] = median(exportRatios);
  state.counters["import_per_check"] = median(importRatios);
}

bool registerXliffBenchmarks() {
  // Three languages to a reference: two of them give about 100,000 units.
  const std::size_t references = referencesFor(300000);
  const std::size_t units = references * textsPerReference / languagesPerReference;
  benchmark::RegisterBenchmark(("xliff/exchange/" + std::to_string(units)).c_str(), exchange, references)
      ->Iterations(5)
      ->Unit(benchmark::kMillisecond);
  return true;
}

// Registered here rather than in Main.cpp, so that the program builds the
// same with or without the catalogue library.
const bool registered = registerXliffBenchmarks();  // NOLINT(cert-err58-cpp)

}  // namespace
}  // namespace ZaltBench
