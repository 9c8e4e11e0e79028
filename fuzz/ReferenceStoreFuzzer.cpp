// Fuzz target for the consumer side: two reference stores under a sequence of
// add, merge (also of a store into itself), replaceWith (also with the store's
// own set), isCovered, copies and moves, then makeFilters and
// sliceReferences of what the stores hold.
//
// The checks, against a brute-force reading of coverage written here:
// - add and merge on a store in which no entry covers another keep it so, and
//   give exactly the brute-force result (drop the reference if something
//   covers it, else remove what it covers and insert it);
// - isCovered agrees with a search of every entry, whatever the store holds;
// - makeFilters puts every reference into exactly one filter, grouped by
//   version, width and number of lines, each filter asking for exactly its
//   references in the one language;
// - halving with sliceReferences down to single references puts every
//   reference into exactly one slice, and never changes the argument.
#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/FilterAndReferences.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/LocalizedTextReferenceStore.h>
#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/SliceReferences.h>

#include "ByteReader.h"
#include "FuzzCheck.h"

#include <boost/optional.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::FilterAndReferences;
using Zalt::Localization::LocalizedTextReference;
using Zalt::Localization::LocalizedTextReferenceStore;
using Zalt::Localization::NumberOfLines;
using References = std::set<LocalizedTextReference>;

const std::vector<std::string>& refPool() {
  static const std::vector<std::string> pool{"a", "b", "ab", "", "hr", std::string("a\0", 2)};
  return pool;
}

const std::vector<std::string>& languagePool() {
  static const std::vector<std::string> pool{"en-US", "de-DE", ""};
  return pool;
}

LocalizedTextReference readReference(ZaltFuzz::ByteReader& in) {
  const std::uint8_t parts = in.byte();
  LocalizedTextRef ref(Utf8(in.string(refPool())));
  // Mostly a few small values, so that references meet in one run.
  const VersionCounter version((parts & 4U) != 0 ? in.number64() : in.byte() % 3U);
  boost::optional<LocalizedTextWidth> width;
  if ((parts & 1U) != 0) {
    const auto raw = static_cast<std::int8_t>(in.byte());
    width = static_cast<LocalizedTextWidth>((parts & 8U) != 0 ? raw : raw % 4);
  }
  boost::optional<NumberOfLines> lines;
  if ((parts & 2U) != 0) {
    lines = (parts & 16U) != 0 ? static_cast<NumberOfLines>(in.number64()) : in.byte() % 4U;
  }
  return LocalizedTextReference(std::move(ref), version, width, lines);
}

References readReferences(ZaltFuzz::ByteReader& in) {
  References references;
  for (unsigned count = in.byte() % 8U; count > 0; --count) {
    references.insert(readReference(in));
  }
  return references;
}

// ---- Coverage by brute force

// An absent width or number of lines of `broader` matches anything; a present
// one only the same value.
bool covers(const LocalizedTextReference& broader, const LocalizedTextReference& narrower) {
  const bool sameRun = broader.ref.get().value() == narrower.ref.get().value() &&
                       broader.version.get() == narrower.version.get();
  const bool widthMatches =
      !broader.textWidth || (narrower.textWidth && *broader.textWidth == *narrower.textWidth);
  const bool linesMatch =
      !broader.numberOfLines || (narrower.numberOfLines && *broader.numberOfLines == *narrower.numberOfLines);
  return sameRun && widthMatches && linesMatch;
}

bool coveredByAny(const References& references, const LocalizedTextReference& reference) {
  return std::any_of(references.begin(), references.end(),
                     [&reference](const LocalizedTextReference& entry) { return covers(entry, reference); });
}

// Only references of one text reference and version can cover each other, so
// the pairs are compared run by run.
bool noEntryCoversAnother(const References& references) {
  std::map<std::pair<std::string, std::uint64_t>, std::vector<const LocalizedTextReference*>> runs;
  for (const LocalizedTextReference& reference : references) {
    runs[{reference.ref.get().value(), reference.version.get()}].push_back(&reference);
  }
  for (const auto& run : runs) {
    for (const LocalizedTextReference* a : run.second) {
      for (const LocalizedTextReference* b : run.second) {
        if (a != b && covers(*a, *b)) {
          return false;
        }
      }
    }
  }
  return true;
}

void bruteForceAdd(References& references, const LocalizedTextReference& reference) {
  if (coveredByAny(references, reference)) {
    return;
  }
  for (auto it = references.begin(); it != references.end();) {
    it = covers(reference, *it) ? references.erase(it) : std::next(it);
  }
  references.insert(reference);
}

// ---- The two stores and what they must hold

struct Tracked {
  LocalizedTextReferenceStore store;
  // What the store holds: the brute-force result while `reduced`, else what
  // the store was found to hold.
  References expected;
  // No entry covers another: only then do add and merge have a brute-force result.
  bool reduced = true;
};

// After add or merge: the brute-force result if the store was reduced before.
void checkAfterAddOrMerge(Tracked& tracked, bool wasReduced) {
  if (wasReduced) {
    FUZZ_CHECK(noEntryCoversAnother(tracked.store.data()), "add or merge left an entry that covers another");
    FUZZ_CHECK(tracked.store.data() == tracked.expected, "add or merge gave " << tracked.store.size()
                                                                              << " entries, expected "
                                                                              << tracked.expected.size());
  } else {
    tracked.expected = tracked.store.data();
    tracked.reduced = noEntryCoversAnother(tracked.expected);
  }
}

void add(Tracked& tracked, const LocalizedTextReference& reference) {
  const bool wasReduced = tracked.reduced;
  bruteForceAdd(tracked.expected, reference);
  tracked.store.add(reference);
  checkAfterAddOrMerge(tracked, wasReduced);
}

void merge(Tracked& into, const Tracked& from) {
  const bool wasReduced = into.reduced;
  // A copy: `from` may be `into` itself.
  const References added = from.expected;
  for (const LocalizedTextReference& reference : added) {
    bruteForceAdd(into.expected, reference);
  }
  into.store.merge(from.store);
  checkAfterAddOrMerge(into, wasReduced);
}

void replace(Tracked& tracked, References&& references) {
  const References given = references;
  tracked.store.replaceWith(std::move(references));
  // NOLINTNEXTLINE(bugprone-use-after-move): replaceWith leaves the argument empty.
  FUZZ_CHECK(references.empty(), "replaceWith left entries in its argument");
  FUZZ_CHECK(tracked.store.data() == given, "replaceWith changed the given references");
  tracked.expected = given;
  tracked.reduced = noEntryCoversAnother(given);
}

void checkIsCovered(Tracked& tracked, const LocalizedTextReference& reference) {
  FUZZ_CHECK(tracked.store.isCovered(reference) == coveredByAny(tracked.store.data(), reference),
             "isCovered(" << reference << ") disagrees with a search of every entry");
}

// ---- Planning

using GroupKey = std::tuple<std::uint64_t, bool, std::int32_t, bool, NumberOfLines>;

GroupKey groupOf(const LocalizedTextReference& reference) {
  return GroupKey(reference.version.get(), static_cast<bool>(reference.textWidth),
                  reference.textWidth ? static_cast<std::int32_t>(*reference.textWidth) : 0,
                  static_cast<bool>(reference.numberOfLines), reference.numberOfLines.value_or(0));
}

void checkFilters(const References& references, const LanguageTag& language) {
  const std::vector<FilterAndReferences> planned = Zalt::Localization::makeFilters(references, language);
  References placed;
  boost::optional<GroupKey> previous;
  for (const FilterAndReferences& part : planned) {
    FUZZ_CHECK(!part.references.empty(), "a filter for no reference");
    const LocalizedTextReference& first = *part.references.begin();
    const GroupKey group = groupOf(first);
    FUZZ_CHECK(!previous || *previous < group, "filters not in ascending order of version, width and lines");
    previous = group;
    std::set<LocalizedTextRef> refs;
    for (const LocalizedTextReference& reference : part.references) {
      FUZZ_CHECK(groupOf(reference) == group, reference << " shares a filter with " << first);
      FUZZ_CHECK(references.count(reference) != 0,
                 "a filter for " << reference << ", which was not asked for");
      FUZZ_CHECK(placed.insert(reference).second, reference << " is in two filters");
      refs.insert(reference.ref);
    }
    const Zalt::Localization::LocalizedTextFilter& filter = part.filter;
    FUZZ_CHECK(filter.refs() == refs, "the filter's refs are not those of its references");
    FUZZ_CHECK(filter.version() && *filter.version() == first.version,
               "the filter's version is not " << first);
    FUZZ_CHECK(filter.languageTags() == std::set<LanguageTag>{language},
               "the filter is not for one language");
    FUZZ_CHECK(filter.textWidths() == (first.textWidth ? std::set<LocalizedTextWidth>{*first.textWidth}
                                                       : std::set<LocalizedTextWidth>{}),
               "the filter's widths are not those of " << first);
    FUZZ_CHECK(filter.numberOfLines() == (first.numberOfLines ? std::set<NumberOfLines>{*first.numberOfLines}
                                                              : std::set<NumberOfLines>{}),
               "the filter's numbers of lines are not those of " << first);
  }
  FUZZ_CHECK(placed.size() == references.size(), placed.size()
                                                     << " of " << references.size() << " in a filter");
}

// Halves `references` until single references remain and collects them in `slices`.
void sliceDown(const References& references, References& slices) {
  References argument = references;
  const auto halves = Zalt::Localization::sliceReferences(std::move(argument));
  // NOLINTNEXTLINE(bugprone-use-after-move): sliceReferences copies and leaves its argument as it was.
  FUZZ_CHECK(argument == references, "sliceReferences changed its argument");
  if (references.size() < 2) {
    FUZZ_CHECK(!halves, "a cut of " << references.size() << " references");
    for (const LocalizedTextReference& reference : references) {
      FUZZ_CHECK(slices.insert(reference).second, reference << " is in two slices");
    }
    return;
  }
  FUZZ_CHECK(halves, "no cut of " << references.size() << " references");
  const References& first = halves->first;
  const References& second = halves->second;
  FUZZ_CHECK(first.size() == references.size() / 2 && second.size() == references.size() - first.size(),
             "halves of " << first.size() << " and " << second.size() << " for " << references.size());
  FUZZ_CHECK(*first.rbegin() < *second.begin(), "the halves overlap in order");
  sliceDown(first, slices);
  sliceDown(second, slices);
}

void checkSlices(const References& references) {
  References slices;
  sliceDown(references, slices);
  FUZZ_CHECK(slices == references, "the slices are not the references");
}

// ---- One input

void runOperation(Tracked (&stores)[2], ZaltFuzz::ByteReader& in) {
  const std::uint8_t operation = in.byte();
  Tracked& one = stores[(operation >> 3U) & 1U];
  Tracked& other = stores[1U - ((operation >> 3U) & 1U)];
  switch (operation % 8U) {
    case 0:
    case 1:
      add(one, readReference(in));
      break;
    case 2:
      merge(one, (operation & 16U) != 0 ? one : other);
      break;
    case 3:
      replace(one, readReferences(in));
      break;
    case 4: {
      const References before = one.store.data();
      one.store.replaceWith(std::move(one.store.data()));
      FUZZ_CHECK(one.store.data() == before, "replaceWith of the store's own set changed it");
      break;
    }
    case 5:
      checkIsCovered(one, readReference(in));
      break;
    case 6:
      // An entry of the store itself, as a caller holding `data` would pass it.
      if (one.store.size() != 0) {
        const auto entry =
            std::next(one.store.data().begin(), static_cast<std::ptrdiff_t>(in.byte() % one.store.size()));
        FUZZ_CHECK(one.store.isCovered(*entry), "an entry of the store is not covered");
      }
      break;
    default:
      if ((operation & 16U) != 0) {
        other.store = one.store;
      } else {
        other.store = LocalizedTextReferenceStore(std::move(one.store));
        // NOLINTNEXTLINE(bugprone-use-after-move): a moved-from store is empty and usable.
        FUZZ_CHECK(one.store.size() == 0, "a moved-from store still has entries");
        one.expected.clear();
        one.reduced = true;
      }
      other.expected = other.store.data();
      other.reduced = noEntryCoversAnother(other.expected);
      break;
  }
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  ZaltFuzz::ByteReader in(data, size);
  const LanguageTag language(in.string(languagePool()));
  Tracked stores[2];
  try {
    while (!in.empty()) {
      runOperation(stores, in);
    }
    for (Tracked& tracked : stores) {
      FUZZ_CHECK(tracked.store.data() == tracked.expected, "the store does not hold what it should");
      checkFilters(tracked.store.data(), language);
      checkSlices(tracked.store.data());
    }
  } catch (const std::exception& error) {
    FUZZ_CHECK(false, "undocumented exception " << typeid(error).name() << ": " << error.what());
  }
  return 0;
}
