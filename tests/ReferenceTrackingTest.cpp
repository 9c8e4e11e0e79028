#include "TestSupport.h"

#include <Zalt/Localization/LocalizedTextReferenceStore.h>
#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/SliceReferences.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace TestSupport;
using Zalt::Localization::FilterAndReferences;
using Zalt::Localization::LocalizedTextReferenceStore;
using Zalt::Localization::makeFilters;
using Zalt::Localization::sliceReferences;
using References = std::set<LocalizedTextReference>;
using Refs = std::set<LocalizedTextRef>;

namespace {

LocalizedTextReference hr(Width width = any, Lines lines = any) { return reference("hr", 3, width, lines); }

TEST(LocalizedTextReferenceStoreTest, ReplaceWithTakesTheSetUncheckedUnlessItIsTheStoresOwn) {
  LocalizedTextReferenceStore store;
  store.add(hr(lg));
  References unchecked{hr(sm), hr(sm, 1)};
  store.replaceWith(std::move(unchecked));
  store.replaceWith(std::move(store.data()));
  EXPECT_TRUE(unchecked.empty());  // NOLINT(bugprone-use-after-move)
  // Adding a reference already present keeps the entries it covers.
  store.add(hr(sm));
  EXPECT_EQ(store.data(), (References{hr(sm), hr(sm, 1)}));
}

// Every combination of three text references, two versions, three widths or
// none, and two numbers of lines or none.
std::vector<LocalizedTextReference> everyReference() {
  std::vector<LocalizedTextReference> references;
  for (unsigned i = 0; i < 72; ++i) {
    const unsigned width = i / 6 % 4;
    const unsigned lines = i / 24;
    references.push_back(reference(std::vector<std::string>{"a", "ab", "b"}[i % 3], 1 + i / 3 % 2U,
                                   boost::make_optional(width > 0, static_cast<LocalizedTextWidth>(width)),
                                   boost::make_optional(lines > 0, static_cast<NumberOfLines>(lines))));
  }
  return references;
}

bool covers(const LocalizedTextReference& x, const LocalizedTextReference& y) {
  return x.ref == y.ref && x.version == y.version && (!x.textWidth || x.textWidth == y.textWidth) &&
         (!x.numberOfLines || x.numberOfLines == y.numberOfLines);
}

bool coveredBy(const References& entries, const LocalizedTextReference& y) {
  return std::any_of(entries.begin(), entries.end(), [&](const auto& x) { return covers(x, y); });
}

bool hasRedundantEntry(const References& entries) {
  return std::any_of(entries.begin(), entries.end(), [&](const auto& y) {
    return std::any_of(entries.begin(), entries.end(),
                       [&](const auto& x) { return &x != &y && covers(x, y); });
  });
}

// After every add and merge, the covered references must have grown by exactly
// what the new entries cover, and no entry may cover another.
TEST(LocalizedTextReferenceStoreTest, MatchesBruteForceCoverage) {
  const auto universe = everyReference();
  std::mt19937 random(20240611);
  std::uniform_int_distribution<std::size_t> pick(0, universe.size() - 1);
  LocalizedTextReferenceStore store;
  for (int step = 0; step < 400; ++step) {
    LocalizedTextReferenceStore other;
    for (int i = step % 3 == 0 ? 6 : 1; i > 0; --i) {
      other.add(universe[pick(random)]);
    }
    const References before = store.data();
    other.size() > 1 ? store.merge(other) : store.add(*other.data().begin());

    for (const auto& y : universe) {
      const bool covered = coveredBy(before, y) || coveredBy(other.data(), y);
      ASSERT_TRUE(store.isCovered(y) == covered && coveredBy(store.data(), y) == covered)
          << y << (covered ? " lost" : " gained") << " at step " << step;
    }
    ASSERT_FALSE(hasRedundantEntry(store.data())) << "at step " << step;
  }
}

LanguageTag german() { return LanguageTag("de-DE"); }

void expectFilter(const FilterAndReferences& request, const Refs& refs, std::uint64_t version,
                  const std::set<LocalizedTextWidth>& widths, const std::set<NumberOfLines>& lines) {
  EXPECT_EQ(request.filter.refs(), refs);
  EXPECT_EQ(request.filter.version(), VersionCounter(version));
  EXPECT_EQ(request.filter.languageTags(), std::set<LanguageTag>{german()});
  EXPECT_EQ(request.filter.textWidths(), widths);
  EXPECT_EQ(request.filter.numberOfLines(), lines);
}

TEST(RequestPlanning, MakeFiltersGroupsByVersionThenWidthThenNumberOfLines) {
  EXPECT_TRUE(makeFilters({}, german()).empty());

  const References wanted{reference("a", 4),        reference("b", 4, lg),    reference("d", 4, sm, 2),
                          reference("e", 4, sm, 2), reference("a", 4, sm, 2), reference("c", 2),
                          reference("d", 4, lg)};
  const auto requests = makeFilters(wanted, german());
  ASSERT_EQ(requests.size(), 4u);
  expectFilter(requests[0], {ref("c")}, 2, {}, {});
  expectFilter(requests[1], {ref("a")}, 4, {}, {});
  expectFilter(requests[2], {ref("a"), ref("d"), ref("e")}, 4, {sm}, {2});
  expectFilter(requests[3], {ref("b"), ref("d")}, 4, {lg}, {});
  EXPECT_EQ(requests[2].references,
            (References{reference("a", 4, sm, 2), reference("d", 4, sm, 2), reference("e", 4, sm, 2)}));
  EXPECT_EQ(requests[3].references, (References{reference("b", 4, lg), reference("d", 4, lg)}));
}

TEST(RequestPlanning, SliceReferencesCutsByPositionAndKeepsTheArgument) {
  References one{reference("a", 1)};
  EXPECT_FALSE(sliceReferences({}));
  EXPECT_FALSE(sliceReferences(std::move(one)));
  EXPECT_EQ(one.size(), 1u);  // NOLINT(bugprone-use-after-move)

  References wanted{reference("a", 1, sm), reference("a", 1, lg), reference("a", 1), reference("b", 1),
                    reference("c", 1)};
  const auto halves = sliceReferences(std::move(wanted));
  ASSERT_TRUE(halves);
  EXPECT_EQ(halves->first, (References{reference("a", 1), reference("a", 1, sm)}));
  EXPECT_EQ(halves->second, (References{reference("a", 1, lg), reference("b", 1), reference("c", 1)}));
  EXPECT_EQ(wanted.size(), 5u);  // NOLINT(bugprone-use-after-move)
}

}  // namespace
