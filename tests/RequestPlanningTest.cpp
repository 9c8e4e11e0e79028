#include "TestSupport.h"

#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/SliceReferences.h>

#include <gtest/gtest.h>

using namespace TestSupport;
using Zalt::Localization::FilterAndReferences;
using Zalt::Localization::makeFilters;
using Zalt::Localization::sliceReferences;
using References = std::set<LocalizedTextReference>;
using Refs = std::set<LocalizedTextRef>;

namespace {

LanguageTag german() { return LanguageTag("de-DE"); }

void expectFilter(const FilterAndReferences& request, const Refs& refs, std::uint64_t version,
                  const std::set<LocalizedTextWidth>& widths, const std::set<NumberOfLines>& lines) {
  EXPECT_EQ(request.filter.refs(), refs);
  EXPECT_EQ(request.filter.version(), VersionCounter(version));
  EXPECT_EQ(request.filter.languageTags(), std::set<LanguageTag>{german()});
  EXPECT_EQ(request.filter.textWidths(), widths);
  EXPECT_EQ(request.filter.numberOfLines(), lines);
}

TEST(RequestPlanningTest, MakeFiltersGroupsByVersionThenWidthThenNumberOfLines) {
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

TEST(RequestPlanningTest, SliceReferencesCutsByPositionAndKeepsTheArgument) {
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
