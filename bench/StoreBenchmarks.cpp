#include "AllocationCounter.h"
#include "Benchmarks.h"
#include "Catalogue.h"

#include <Tovra/Locale/Utf8.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ZaltBench {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextRef;
using Zalt::Localization::LocalizedTextFilter;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;
using Zalt::Localization::Impl::LocalizedTextStoreKey;

// Enough distinct lookups that the store's upper levels, not single entries,
// are what stays cached, as on a display that shows a few hundred texts.
constexpr std::size_t queryCount = 1024;
constexpr std::size_t filterReferences = 100;

// A bare ordered map over the store's own keys: one lower_bound on it, and
// the answer value built from the entry found, is the least that any lookup
// in the store can cost.
using DescentFloor = std::map<LocalizedTextStoreKey, Tovra::Locale::Utf8>;
using Answer = Zalt::Localization::LocalizedText;

std::shared_ptr<LocalizedTextStoreImpl> newStore() {
  return std::static_pointer_cast<LocalizedTextStoreImpl>(LocalizedTextStore::createLocalizedTextStore());
}

DescentFloor descentFloorOf(const std::vector<LocalizedText>& catalogue) {
  DescentFloor floor;
  for (const LocalizedText& text : catalogue) {
    const Zalt::Localization::NumberOfLines lines =
        Zalt::Localization::Impl::numberOfLineBreaks(text.text()) + 1;
    floor.emplace(LocalizedTextStoreKey{text.ref(), *text.lang(), *text.version(), text.textWidth(), lines},
                  text.text());
  }
  return floor;
}

// A catalogue filled into a store and into its descent floor. Building one at
// a million texts takes seconds, so the benchmarks of one size share it, and
// only one size is held at a time.
struct FilledStore {
  explicit FilledStore(std::size_t referenceCount)
      : references(referenceCount),
        catalogue(makeCatalogue(references)),
        store(newStore()),
        floor(descentFloorOf(catalogue)) {
    store->add(catalogue);
  }

  std::size_t references;
  std::vector<LocalizedText> catalogue;
  std::shared_ptr<LocalizedTextStoreImpl> store;
  DescentFloor floor;
};

const FilledStore& filledStore(std::size_t references) {
  static std::unique_ptr<FilledStore> current;
  if (!current || current->references != references) {
    current.reset();
    current = std::make_unique<FilledStore>(references);
  }
  return *current;
}

std::int64_t asCount(std::size_t value) { return static_cast<std::int64_t>(value); }

std::size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void addWholeCatalogue(benchmark::State& state, std::size_t references) {
  const std::vector<LocalizedText>& catalogue = filledStore(references).catalogue;
  for (auto _ : state) {
    std::shared_ptr<LocalizedTextStoreImpl> store = newStore();
    store->add(catalogue);
    state.PauseTiming();
    store.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.size()));
}

// The catalogue in the store's key order, as a checked catalogue's kept texts
// come: the store files each at the end of its table.
std::vector<LocalizedText> inKeyOrder(const std::vector<LocalizedText>& catalogue) {
  std::vector<std::pair<LocalizedTextStoreKey, std::size_t>> keys;
  keys.reserve(catalogue.size());
  for (std::size_t at = 0; at < catalogue.size(); ++at) {
    const LocalizedText& text = catalogue[at];
    keys.push_back({{text.ref(), *text.lang(), *text.version(), text.textWidth(),
                     Zalt::Localization::Impl::numberOfLineBreaks(text.text()) + 1},
                    at});
  }
  std::sort(keys.begin(), keys.end(), [](const auto& lhs, const auto& rhs) { return lhs.first < rhs.first; });
  std::vector<LocalizedText> sorted;
  sorted.reserve(catalogue.size());
  for (const auto& key : keys) {
    sorted.push_back(catalogue[key.second]);
  }
  return sorted;
}

void addInKeyOrder(benchmark::State& state, std::size_t references) {
  static std::pair<std::size_t, std::vector<LocalizedText>> sorted;
  if (sorted.first != references) {
    sorted = {references, inKeyOrder(filledStore(references).catalogue)};
  }
  for (auto _ : state) {
    std::shared_ptr<LocalizedTextStoreImpl> store = newStore();
    store->add(sorted.second);
    state.PauseTiming();
    store.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * asCount(sorted.second.size()));
}

// The catalogue with each variant of a reference and version in all its
// languages in a row, as a device that loads text by text, each in every
// language, hands it over.
std::vector<LocalizedText> languagesInterleaved(std::vector<LocalizedText> catalogue) {
  constexpr std::size_t groupSize = languagesPerReference * variantsPerVersion;
  std::vector<LocalizedText> interleaved;
  interleaved.reserve(catalogue.size());
  for (std::size_t group = 0; group < catalogue.size(); group += groupSize) {
    for (std::size_t variant = 0; variant < variantsPerVersion; ++variant) {
      for (std::size_t language = 0; language < languagesPerReference; ++language) {
        interleaved.push_back(std::move(catalogue[group + language * variantsPerVersion + variant]));
      }
    }
  }
  return interleaved;
}

// A device that hands its catalogue over a few texts at a time. In catalogue
// order most calls end inside a reference whose other languages are still
// missing, and the consistency check rejects them: it throws, naming that
// reference. With the languages interleaved, only the calls that end within
// the first variant of a reference and version are rejected. The texts stay
// filed either way (adding is not transactional), and the call that brings
// the last text must pass.
void addInBatches(benchmark::State& state, std::size_t references, std::size_t batchSize, bool interleave) {
  const std::vector<LocalizedText> catalogue =
      interleave ? languagesInterleaved(makeCatalogue(references)) : makeCatalogue(references);
  std::vector<std::vector<LocalizedText>> batches;
  for (std::size_t first = 0; first < catalogue.size(); first += batchSize) {
    const auto begin = catalogue.begin() + static_cast<std::ptrdiff_t>(first);
    batches.emplace_back(begin,
                         begin + static_cast<std::ptrdiff_t>(std::min(batchSize, catalogue.size() - first)));
  }
  std::int64_t rejectedCalls = 0;
  bool lastCallPassed = false;
  for (auto _ : state) {
    std::shared_ptr<LocalizedTextStoreImpl> store = newStore();
    for (const std::vector<LocalizedText>& batch : batches) {
      try {
        store->add(batch);
        lastCallPassed = true;
      } catch (const Zalt::InternalConsistencyFailure&) {
        ++rejectedCalls;
        lastCallPassed = false;
      }
    }
    state.PauseTiming();
    store.reset();
    state.ResumeTiming();
  }
  if (!lastCallPassed) {
    state.SkipWithError("the whole catalogue should pass the consistency check");
    return;
  }
  state.SetItemsProcessed(state.iterations() * asCount(catalogue.size()));
  state.counters["calls"] = static_cast<double>(batches.size());
  state.counters["rejected"] = static_cast<double>(rejectedCalls) / static_cast<double>(state.iterations());
}

bool answersAsExpected(const LocalizedTextStore& store, const std::vector<TextQuery>& queries,
                       Outcome outcome) {
  return std::all_of(queries.begin(), queries.end(), [&store, outcome](const TextQuery& query) {
    const bool found = !store.text(query.reference, query.language).text().empty();
    return found == (outcome == Outcome::Hit);
  });
}

// The processor time of this thread: on a shared machine, time that other
// processes take from it would otherwise land in whichever side of a round
// they happen to interrupt.
double threadCpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// One untimed pass brings the lookups' paths back into the caches that the
// other side of the round used, so that both sides are timed warm.
template <typename Query, typename Lookup>
double secondsFor(const std::vector<Query>& queries, const Lookup& lookup) {
  for (const Query& query : queries) {
    lookup(query);
  }
  const double start = threadCpuSeconds();
  for (const Query& query : queries) {
    lookup(query);
  }
  return threadCpuSeconds() - start;
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// One lookup as the floor makes it: where the store's answer lies from the
// place the descent lands on, or nothing for a miss.
struct FloorQuery {
  const TextQuery* query;
  boost::optional<std::ptrdiff_t> answerOffset;
};

LocalizedTextStoreKey keyOf(const Answer& answer) {
  return LocalizedTextStoreKey{answer.ref(), *answer.lang(), *answer.version(), answer.textWidth(),
                               answer.numberOfLines()};
}

// Asks the store once per query, untimed, so that the floor builds the same
// answer from the same entry.
std::vector<FloorQuery> floorQueriesFor(const FilledStore& filled, const std::vector<TextQuery>& queries) {
  std::vector<FloorQuery> floorQueries;
  for (const TextQuery& query : queries) {
    const Answer answer = filled.store->text(query.reference, query.language);
    if (answer == Answer::empty()) {
      floorQueries.push_back(FloorQuery{&query, boost::none});
      continue;
    }
    const auto landing = filled.floor.lower_bound(query.searchKey);
    const auto found = filled.floor.find(keyOf(answer));
    const std::ptrdiff_t offset =
        landing != filled.floor.begin() && std::prev(landing) == found ? -1 : std::distance(landing, found);
    floorQueries.push_back(FloorQuery{&query, offset});
  }
  return floorQueries;
}

bool isSameGroup(const LocalizedTextStoreKey& key, const LocalizedTextStoreKey& wanted) {
  return key.ref.get().value() == wanted.ref.get().value() &&
         key.languageTag.tag() == wanted.languageTag.tag() && key.version == wanted.version;
}

Answer answerOf(const DescentFloor::value_type& entry) {
  const LocalizedTextStoreKey& key = entry.first;
  return Answer(LocalizedText(entry.second, key.languageTag, key.ref, key.version, key.textWidth),
                key.numberOfLines);
}

// The allocations of one text call, and those of a copy of its answer, per lookup.
std::pair<double, double> allocationsPerLookup(const LocalizedTextStore& store,
                                               const std::vector<TextQuery>& queries) {
  std::size_t byText = 0;
  std::size_t byAnswer = 0;
  for (const TextQuery& query : queries) {
    const std::size_t beforeText = allocationCount();
    const Answer answer = store.text(query.reference, query.language);
    byText += allocationCount() - beforeText;
    const std::size_t beforeCopy = allocationCount();
    const Answer copy(answer);  // NOLINT(performance-unnecessary-copy-initialization): the copy is counted
    benchmark::DoNotOptimize(copy);
    byAnswer += allocationCount() - beforeCopy;
  }
  const auto perLookup = [&queries](std::size_t count) {
    return static_cast<double>(count) / static_cast<double>(queries.size());
  };
  return {perLookup(byText), perLookup(byAnswer)};
}

// Each round runs the same queries against the floor and as store lookups,
// back to back and in alternating order, so that load from elsewhere on the
// machine falls on both sides of a round's ratio. The floor descends, walks
// the group where the strategy does (by number of lines), and builds the
// answer that the store returns from the same entry. The reported time is
// the store's; the counters hold the medians over rounds.
void lookUpTexts(benchmark::State& state, std::size_t references, Strategy strategy, Outcome outcome) {
  const FilledStore& filled = filledStore(references);
  const LocalizedTextStore& store = *filled.store;
  const std::vector<TextQuery> queries = makeTextQueries(references, strategy, outcome, queryCount);
  // Also warms the store: every lookup below has been asked once.
  if (!answersAsExpected(store, queries, outcome)) {
    state.SkipWithError("a hit found nothing or a miss found a text");
    return;
  }
  const std::vector<FloorQuery> floorQueries = floorQueriesFor(filled, queries);
  const bool walksGroup = strategy == Strategy::LinesOnly || strategy == Strategy::WidthAndLines;
  const auto floorLookup = [&filled, walksGroup](const FloorQuery& floorQuery) {
    const LocalizedTextStoreKey& wanted = floorQuery.query->searchKey;
    const auto landing = filled.floor.lower_bound(wanted);
    if (walksGroup) {
      auto groupEnd = landing;
      while (groupEnd != filled.floor.end() && isSameGroup(groupEnd->first, wanted)) {
        ++groupEnd;
      }
      benchmark::DoNotOptimize(groupEnd);
    }
    if (floorQuery.answerOffset) {
      benchmark::DoNotOptimize(answerOf(*std::next(landing, *floorQuery.answerOffset)));
    } else {
      benchmark::DoNotOptimize(Answer::empty());
    }
  };
  const auto lookUp = [&store](const FloorQuery& floorQuery) {
    benchmark::DoNotOptimize(store.text(floorQuery.query->reference, floorQuery.query->language));
  };
  std::vector<double> floorSeconds;
  std::vector<double> textSeconds;
  std::vector<double> ratios;
  bool floorFirst = true;
  for (auto _ : state) {
    double floor = 0;
    double text = 0;
    if (floorFirst) {
      floor = secondsFor(floorQueries, floorLookup);
      text = secondsFor(floorQueries, lookUp);
    } else {
      text = secondsFor(floorQueries, lookUp);
      floor = secondsFor(floorQueries, floorLookup);
    }
    floorFirst = !floorFirst;
    state.SetIterationTime(text);
    floorSeconds.push_back(floor);
    textSeconds.push_back(text);
    ratios.push_back(text / floor);
  }
  state.SetItemsProcessed(state.iterations() * asCount(queryCount));
  const double nanosecondsPerLookup = 1e9 / queryCount;
  state.counters["text_ns"] = median(textSeconds) * nanosecondsPerLookup;
  state.counters["floor_ns"] = median(floorSeconds) * nanosecondsPerLookup;
  state.counters["ratio"] = median(ratios);
  const auto [textAllocations, answerAllocations] = allocationsPerLookup(store, queries);
  state.counters["text_allocs"] = textAllocations;
  state.counters["answer_allocs"] = answerAllocations;
}

// A peer's request for one screen's worth of references in one language.
void queryHundredReferences(benchmark::State& state, std::size_t references) {
  const LocalizedTextStoreImpl& store = *filledStore(references).store;
  std::set<LocalizedTextRef> refs;
  for (std::size_t i = 0; i < filterReferences; ++i) {
    refs.insert(storedReference(i * references / filterReferences, references));
  }
  const LocalizedTextFilter filter(std::move(refs), boost::none, {LanguageTag("en-US")}, {}, {});
  // The newest version of each reference, all its variants.
  if (store.localizedTexts(filter).size() != filterReferences * variantsPerVersion) {
    state.SkipWithError("the filter should find every variant of the newest version");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(store.localizedTexts(filter));
  }
  state.SetItemsProcessed(state.iterations() * asCount(filterReferences * variantsPerVersion));
}

void queryEverything(benchmark::State& state, std::size_t references) {
  const LocalizedTextStoreImpl& store = *filledStore(references).store;
  const LocalizedTextFilter filter({}, boost::none, {}, {}, {});
  const std::size_t newestTexts = references * languagesPerReference * variantsPerVersion;
  if (store.localizedTexts(filter).size() != newestTexts) {
    state.SkipWithError("the all-empty filter should find the newest version of everything");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(store.localizedTexts(filter));
  }
  state.SetItemsProcessed(state.iterations() * asCount(newestTexts));
}

void askLanguages(benchmark::State& state, std::size_t references) {
  const LocalizedTextStore& store = *filledStore(references).store;
  if (store.languages() != catalogueLanguages()) {
    state.SkipWithError("the store should hold the catalogue's languages");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(store.languages());
  }
}

// Heap growth while a store takes the catalogue, per text, beside a bare map
// of the same keys and texts and what the texts and their keys weigh by
// themselves.
void measureMemory(benchmark::State& state, std::size_t references) {
  const std::vector<LocalizedText> catalogue = makeCatalogue(references);
  std::size_t payload = 0;
  std::size_t keyText = 0;
  for (const LocalizedText& text : catalogue) {
    payload += text.text().value().size();
    keyText += text.ref().get().value().size() + text.lang()->tag().size();
  }
  std::size_t grown = 0;
  std::size_t bareMap = 0;
  for (auto _ : state) {
    const std::size_t before = heapInUse();
    std::shared_ptr<LocalizedTextStoreImpl> store = newStore();
    store->add(catalogue);
    grown = heapInUse() - before;
    state.PauseTiming();
    store.reset();
    const std::size_t beforeMap = heapInUse();
    const DescentFloor map = descentFloorOf(catalogue);
    bareMap = heapInUse() - beforeMap;
    state.ResumeTiming();
  }
  const auto perText = [&catalogue](std::size_t bytes) {
    return static_cast<double>(bytes) / static_cast<double>(catalogue.size());
  };
  state.counters["heap_per_text"] = perText(grown);
  state.counters["bare_map_per_text"] = perText(bareMap);
  state.counters["payload_per_text"] = perText(payload);
  state.counters["key_text_per_text"] = perText(keyText);
}

std::string sizeSuffix(std::size_t references) {
  return "/" + std::to_string(references * textsPerReference);
}

}  // namespace

void registerStoreBenchmarks(const std::vector<std::size_t>& catalogueTexts) {
  constexpr std::array<Strategy, 4> strategies = {Strategy::Plain, Strategy::WidthOnly, Strategy::LinesOnly,
                                                  Strategy::WidthAndLines};
  for (const std::size_t texts : catalogueTexts) {
    const std::size_t references = referencesFor(texts);
    const std::string size = sizeSuffix(references);
    benchmark::RegisterBenchmark(("memory" + size).c_str(), measureMemory, references)->Iterations(1);
    benchmark::RegisterBenchmark(("add/whole" + size).c_str(), addWholeCatalogue, references)
        ->MinTime(0.3)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("add/keyorder" + size).c_str(), addInKeyOrder, references)
        ->MinTime(0.3)
        ->Unit(benchmark::kMillisecond);
    for (const Outcome outcome : {Outcome::Hit, Outcome::Miss}) {
      for (const Strategy strategy : strategies) {
        const std::string name = strategyName(strategy) + "/" + outcomeName(outcome) + size;
        benchmark::RegisterBenchmark(("text/" + name).c_str(), lookUpTexts, references, strategy, outcome)
            ->UseManualTime()
            ->MinTime(0.15);
      }
    }
    if (references >= filterReferences) {
      benchmark::RegisterBenchmark(("localizedTexts/refs100" + size).c_str(), queryHundredReferences,
                                   references)
          ->MinTime(0.2)
          ->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark(("localizedTexts/all" + size).c_str(), queryEverything, references)
        ->MinTime(0.2)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("languages" + size).c_str(), askLanguages, references)->MinTime(0.1);
  }
}

void registerBatchedAddBenchmarks(const std::vector<std::size_t>& catalogueTexts) {
  for (const bool interleave : {false, true}) {
    for (const std::size_t batchSize : {100, 3, 1}) {
      for (const std::size_t texts : catalogueTexts) {
        const std::size_t references = referencesFor(texts);
        const std::string name = std::string(interleave ? "add/interleaved" : "add/batch") +
                                 std::to_string(batchSize) + sizeSuffix(references);
        benchmark::RegisterBenchmark(name.c_str(), addInBatches, references, batchSize, interleave)
            ->Iterations(1)
            ->Repetitions(3)
            ->ReportAggregatesOnly(true)
            ->Unit(benchmark::kMillisecond);
      }
    }
  }
}

}  // namespace ZaltBench
