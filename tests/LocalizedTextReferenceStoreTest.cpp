#include "TestSupport.h"

#include <Zalt/Localization/LocalizedTextReferenceStore.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace TestSupport;
using Zalt::Localization::LocalizedTextReferenceStore;
using References = std::set<LocalizedTextReference>;

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

}  // namespace
