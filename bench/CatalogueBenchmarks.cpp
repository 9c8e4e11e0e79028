// Benchmarks of the catalogue component on the benchmarks' catalogues: reading
// one as an XML file, checking it, and, beside them in the same run, the one
// add of the same texts that a device makes at start-up.
//
// They register themselves, and only when the catalogue library is built:
//   zalt_lts_bench --benchmark_filter='^catalogue/'
#include "Catalogue.h"

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ZaltBench {
namespace {

using Tovra::Mdib::LocalizedText;

constexpr std::size_t catalogueSizes[] = {10000, 100000};

std::string escaped(const std::string& text) {
  std::string xml;
  for (const char c : text) {
    switch (c) {
      case '&':
        xml += "&amp;";
        break;
      case '<':
        xml += "&lt;";
        break;
      default:
        xml += c;
    }
  }
  return xml;
}

const char* token(Tovra::Mdib::LocalizedTextWidth width) {
  const char* const tokens[] = {"xs", "s", "m", "l", "xl", "xxl"};
  return tokens[static_cast<std::size_t>(width)];
}

// One element per line, as a catalogue file written by a tool would be.
std::string catalogueFile(const std::vector<LocalizedText>& texts) {
  std::string xml =
      "<Catalogue xmlns:pm='http://standards.ieee.org/downloads/11073/11073-10207-2017/participant'>\n";
  for (const LocalizedText& text : texts) {
    xml += "  <pm:LocalizedText Ref='" + escaped(text.ref().get().value()) + "' Lang='" + text.lang()->tag() +
           "' Version='" + std::to_string(text.version()->get()) + "'";
    if (text.textWidth()) {
      xml += std::string(" TextWidth='") + token(*text.textWidth()) + "'";
    }
    xml += ">" + escaped(text.text().value()) + "</pm:LocalizedText>\n";
  }
  return xml + "</Catalogue>\n";
}

std::int64_t asCount(std::size_t count) { return static_cast<std::int64_t>(count); }

void readFile(benchmark::State& state, std::size_t references) {
  const std::string file = catalogueFile(makeCatalogue(references));
  std::size_t texts = 0;
  for (auto _ : state) {
    texts = Zalt::Catalogue::readCatalogue(file, "catalogue.xml").texts.size();
  }
  state.SetItemsProcessed(state.iterations() * asCount(texts));
  state.counters["file_bytes"] = static_cast<double>(file.size());
}

void check(benchmark::State& state, std::size_t references) {
  const Zalt::Catalogue::CatalogueTexts texts =
      Zalt::Catalogue::readCatalogue(catalogueFile(makeCatalogue(references)), "catalogue.xml");
  for (auto _ : state) {
    if (!Zalt::Catalogue::checkCatalogue(texts).findings.empty()) {
      state.SkipWithError("the benchmark catalogue has findings");
    }
  }
  state.SetItemsProcessed(state.iterations() * asCount(texts.texts.size()));
}

void addOnce(benchmark::State& state, std::size_t references) {
  const std::vector<LocalizedText> catalogue = makeCatalogue(references);
  for (auto _ : state) {
    auto store = Zalt::Localization::Device::LocalizedTextStore::createLocalizedTextStore();
    store->add(catalogue);
    state.PauseTiming();
    store.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.size()));
}

bool registerCatalogueBenchmarks() {
  for (const std::size_t texts : catalogueSizes) {
    const std::size_t references = referencesFor(texts);
    const std::string size = "/" + std::to_string(references * textsPerReference);
    benchmark::RegisterBenchmark(("catalogue/read" + size).c_str(), readFile, references)
        ->MinTime(0.5)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("catalogue/check" + size).c_str(), check, references)
        ->MinTime(0.5)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("catalogue/add" + size).c_str(), addOnce, references)
        ->MinTime(0.5)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}

// Main.cpp registers the library's families; these register themselves so that
// the program builds the same with or without the catalogue library.
const bool registered = registerCatalogueBenchmarks();  // NOLINT(cert-err58-cpp)

}  // namespace
}  // namespace ZaltBench
