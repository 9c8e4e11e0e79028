#include "Benchmarks.h"
#include "Catalogue.h"

#include <Zalt/Localization/LocalizedTextReferenceStore.h>
#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/SliceReferences.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace ZaltBench {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedTextReference;
using Zalt::Localization::LocalizedTextReferenceStore;

constexpr std::array<std::size_t, 3> referenceCounts = {1000, 10000, 100000};
constexpr std::size_t queryCount = 1024;

// What a consumer meets for one text reference: the plain text, a label in
// two widths, a few fully qualified display slots, or a two-line slot beside
// a small one. No reference of a kind covers another of the same kind, so
// a store keeps them all.
std::vector<LocalizedTextReference> referencesOfKind(std::size_t index, std::size_t textReferences) {
  const auto ref = storedReference(index, textReferences);
  const VersionCounter version(index % 3 == 0 ? 2 : 1);
  switch (index % 4) {
    case 0:
      return {LocalizedTextReference(ref, version)};
    case 1:
      return {LocalizedTextReference(ref, version, LocalizedTextWidth::Small),
              LocalizedTextReference(ref, version, LocalizedTextWidth::Large)};
    case 2:
      return {LocalizedTextReference(ref, version, LocalizedTextWidth::Medium, 1u),
              LocalizedTextReference(ref, version, LocalizedTextWidth::Medium, 2u),
              LocalizedTextReference(ref, version, LocalizedTextWidth::Large, 1u)};
    default:
      return {LocalizedTextReference(ref, version, boost::none, 2u),
              LocalizedTextReference(ref, version, LocalizedTextWidth::Small, 1u)};
  }
}

// Two references per text reference on average, so `count` references (a
// multiple of eight) spread over count / 2 text references.
std::size_t textReferencesFor(std::size_t count) { return count / 2; }

// The references of every `step`-th text reference from `first` on, in the
// order a consumer meets them: shuffled.
std::vector<LocalizedTextReference> metReferences(std::size_t count, std::size_t first = 0,
                                                  std::size_t step = 1) {
  const std::size_t textReferences = textReferencesFor(count);
  std::vector<LocalizedTextReference> references;
  for (std::size_t index = first; index < textReferences; index += step) {
    for (LocalizedTextReference& reference : referencesOfKind(index, textReferences)) {
      references.push_back(std::move(reference));
    }
  }
  std::shuffle(references.begin(), references.end(), std::mt19937_64(7));
  return references;
}

LocalizedTextReferenceStore storeOf(const std::vector<LocalizedTextReference>& references) {
  LocalizedTextReferenceStore store;
  for (const LocalizedTextReference& reference : references) {
    store.add(reference);
  }
  return store;
}

// Half of them covered: the same or a narrower reference of a met text
// reference and version; the other half of the other version.
std::vector<LocalizedTextReference> coverageQuestions(std::size_t count) {
  const std::size_t textReferences = textReferencesFor(count);
  std::mt19937_64 random(11);
  std::uniform_int_distribution<std::size_t> index(0, textReferences - 1);
  std::vector<LocalizedTextReference> questions;
  for (std::size_t i = 0; i < queryCount; ++i) {
    const std::size_t drawn = index(random);
    LocalizedTextReference question = referencesOfKind(drawn, textReferences).front();
    if (!question.numberOfLines) {
      question.numberOfLines = 1u;
    }
    if (i % 2 == 1) {
      question.version = VersionCounter(question.version.get() + 1);
    }
    questions.push_back(question);
  }
  return questions;
}

void addReferences(benchmark::State& state, std::size_t count) {
  const std::vector<LocalizedTextReference> references = metReferences(count);
  for (auto _ : state) {
    LocalizedTextReferenceStore store;
    for (const LocalizedTextReference& reference : references) {
      store.add(reference);
    }
    benchmark::DoNotOptimize(store.size());
    state.PauseTiming();
    store = LocalizedTextReferenceStore();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(references.size()));
}

void askIsCovered(benchmark::State& state, std::size_t count) {
  const LocalizedTextReferenceStore store = storeOf(metReferences(count));
  const std::vector<LocalizedTextReference> questions = coverageQuestions(count);
  const auto covered =
      std::count_if(questions.begin(), questions.end(),
                    [&store](const LocalizedTextReference& q) { return store.isCovered(q); });
  if (covered != static_cast<std::ptrdiff_t>(questions.size() / 2)) {
    state.SkipWithError("half of the questions should be covered");
    return;
  }
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(store.isCovered(questions[next]));
    next = (next + 1) % questions.size();
  }
  state.SetItemsProcessed(state.iterations());
}

// A consumer folds what another request brought into its record: the two
// halves of the references, every other text reference each.
void mergeStores(benchmark::State& state, std::size_t count) {
  const LocalizedTextReferenceStore incoming = storeOf(metReferences(count, 0, 2));
  const LocalizedTextReferenceStore record = storeOf(metReferences(count, 1, 2));
  for (auto _ : state) {
    state.PauseTiming();
    LocalizedTextReferenceStore target = record;
    state.ResumeTiming();
    target.merge(incoming);
    benchmark::DoNotOptimize(target.size());
    state.PauseTiming();
    target = LocalizedTextReferenceStore();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(incoming.size()));
}

void makeFiltersFor(benchmark::State& state, std::size_t count) {
  LocalizedTextReferenceStore store = storeOf(metReferences(count));
  const LanguageTag language("de-DE");
  for (auto _ : state) {
    benchmark::DoNotOptimize(Zalt::Localization::makeFilters(store.data(), language));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(store.size()));
}

void sliceOnce(benchmark::State& state, std::size_t count) {
  LocalizedTextReferenceStore store = storeOf(metReferences(count));
  std::set<LocalizedTextReference>& references = store.data();
  const std::size_t before = references.size();
  for (auto _ : state) {
    // The halves are copies; the set handed in keeps its entries for the next round.
    // NOLINTNEXTLINE(bugprone-use-after-move): sliceReferences leaves its argument whole.
    benchmark::DoNotOptimize(Zalt::Localization::sliceReferences(std::move(references)));
  }
  if (references.size() != before) {
    state.SkipWithError("slicing should leave its argument whole");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(before));
}

}  // namespace

void registerPlanningBenchmarks() {
  for (const std::size_t count : referenceCounts) {
    const std::string size = "/" + std::to_string(count);
    benchmark::RegisterBenchmark(("refstore/add" + size).c_str(), addReferences, count)->MinTime(0.2);
    benchmark::RegisterBenchmark(("refstore/isCovered" + size).c_str(), askIsCovered, count)->MinTime(0.2);
    benchmark::RegisterBenchmark(("refstore/merge" + size).c_str(), mergeStores, count)->MinTime(0.2);
    benchmark::RegisterBenchmark(("makeFilters" + size).c_str(), makeFiltersFor, count)->MinTime(0.2);
    benchmark::RegisterBenchmark(("sliceReferences" + size).c_str(), sliceOnce, count)->MinTime(0.2);
  }
}

}  // namespace ZaltBench
