#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/SliceReferences.h>

#include <boost/optional/optional_io.hpp>

#include <gtest/gtest.h>

using namespace Zalt::Localization;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using References = std::set<LocalizedTextReference>;
using Refs = std::set<LocalizedTextRef>;

namespace {

constexpr auto small = LocalizedTextWidth::Small;
constexpr auto large = LocalizedTextWidth::Large;
Tovra::Locale::LanguageTag german() { return Tovra::Locale::LanguageTag("de-DE"); }

LocalizedTextRef ref(const char* name) { return LocalizedTextRef(Tovra::Locale::Utf8(name)); }

LocalizedTextReference reference(const char* name, std::uint64_t version,
                                 boost::optional<LocalizedTextWidth> width = {},
                                 boost::optional<NumberOfLines> lines = {}) {
  return {ref(name), Tovra::Mdib::VersionCounter(version), width, lines};
}

void expectFilter(const FilterAndReferences& request, const Refs& refs, std::uint64_t version,
                  const std::set<LocalizedTextWidth>& widths, const std::set<NumberOfLines>& lines) {
  EXPECT_EQ(request.filter.refs(), refs);
  EXPECT_EQ(request.filter.version(), Tovra::Mdib::VersionCounter(version));
  EXPECT_EQ(request.filter.languageTags(), std::set<Tovra::Locale::LanguageTag>{german()});
  EXPECT_EQ(request.filter.textWidths(), widths);
  EXPECT_EQ(request.filter.numberOfLines(), lines);
}

TEST(RequestPlanningTest, MakeFiltersGroupsByVersionThenWidthThenNumberOfLines) {
  EXPECT_TRUE(makeFilters({}, german()).empty());

  const References wanted{reference("a", 4),           reference("b", 4, large),
                          reference("d", 4, small, 2), reference("e", 4, small, 2),
                          reference("a", 4, small, 2), reference("c", 2),
                          reference("d", 4, large)};
  const auto requests = makeFilters(wanted, german());
  ASSERT_EQ(requests.size(), 4u);
  expectFilter(requests[0], {ref("c")}, 2, {}, {});
  expectFilter(requests[1], {ref("a")}, 4, {}, {});
  expectFilter(requests[2], {ref("a"), ref("d"), ref("e")}, 4, {small}, {2});
  expectFilter(requests[3], {ref("b"), ref("d")}, 4, {large}, {});
  EXPECT_EQ(requests[2].references, (References{reference("a", 4, small, 2), reference("d", 4, small, 2),
                                                reference("e", 4, small, 2)}));
  EXPECT_EQ(requests[3].references, (References{reference("b", 4, large), reference("d", 4, large)}));
}

TEST(RequestPlanningTest, SliceReferencesCutsByPositionAndKeepsTheArgument) {
  References one{reference("a", 1)};
  EXPECT_FALSE(sliceReferences({}));
  EXPECT_FALSE(sliceReferences(std::move(one)));
  EXPECT_EQ(one.size(), 1u);  // NOLINT(bugprone-use-after-move)

  References wanted{reference("a", 1, small), reference("a", 1, large), reference("a", 1), reference("b", 1),
                    reference("c", 1)};
  const auto halves = sliceReferences(std::move(wanted));
  ASSERT_TRUE(halves);
  EXPECT_EQ(halves->first, (References{reference("a", 1), reference("a", 1, small)}));
  EXPECT_EQ(halves->second, (References{reference("a", 1, large), reference("b", 1), reference("c", 1)}));
  EXPECT_EQ(wanted.size(), 5u);  // NOLINT(bugprone-use-after-move)
}

}  // namespace
