#include <Zalt/Localization/LocalizedTextReference.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <vector>

namespace {

using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedTextReference;

LocalizedTextReference ref(const std::string& name, std::uint64_t version,
                           boost::optional<LocalizedTextWidth> width = boost::none,
                           boost::optional<std::uint32_t> lines = boost::none) {
  return LocalizedTextReference(LocalizedTextRef(Utf8(name)), VersionCounter(version), width, lines);
}

TEST(LocalizedTextReference, RefsOrderByUnsignedBytesBeforeVersions) {
  EXPECT_LT(ref("a", 9), ref("b", 1));
  EXPECT_LT(ref("a", 1), ref("ab", 1));
  EXPECT_FALSE(ref("ab", 1) < ref("a", 1));
  // A byte of 0x80 or above orders after ASCII, as an unsigned byte should.
  EXPECT_LT(ref("z", 1), ref("\xC3\xA4", 1));
}

TEST(LocalizedTextReference, VersionsCompareAsUnsigned64Bit) {
  const std::uint64_t high = std::uint64_t{1} << 63U;
  EXPECT_LT(ref("a", high - 1), ref("a", high));
  EXPECT_LT(ref("a", high), ref("a", UINT64_MAX));
  EXPECT_LT(ref("a", 0), ref("a", high));
}

TEST(LocalizedTextReference, AbsentOptionalsOrderFirstAndRunsStayAdjacent) {
  EXPECT_LT(ref("a", 1), ref("a", 1, LocalizedTextWidth::ExtraSmall));
  EXPECT_LT(ref("a", 1, LocalizedTextWidth::Large), ref("a", 1, LocalizedTextWidth::Large, 1u));
  EXPECT_LT(ref("a", 1, LocalizedTextWidth::Small, 9u), ref("a", 1, LocalizedTextWidth::Medium));
  EXPECT_LT(ref("a", 1, static_cast<LocalizedTextWidth>(-1)), ref("a", 1, LocalizedTextWidth::ExtraSmall));
  EXPECT_LT(ref("a", 1, LocalizedTextWidth::ExtraExtraLarge),
            ref("a", 1, static_cast<LocalizedTextWidth>(6)));

  const std::set<LocalizedTextReference> run{ref("a", 1, LocalizedTextWidth::Small, 2u),
                                             ref("a", 1, LocalizedTextWidth::Small),
                                             ref("a", 1, boost::none, 3u),
                                             ref("a", 1),
                                             ref("a", 1, LocalizedTextWidth::ExtraSmall, 1u),
                                             ref("a", 1, boost::none, 1u)};
  const std::vector<LocalizedTextReference> expected{ref("a", 1),
                                                     ref("a", 1, boost::none, 1u),
                                                     ref("a", 1, boost::none, 3u),
                                                     ref("a", 1, LocalizedTextWidth::ExtraSmall, 1u),
                                                     ref("a", 1, LocalizedTextWidth::Small),
                                                     ref("a", 1, LocalizedTextWidth::Small, 2u)};
  EXPECT_EQ(std::vector<LocalizedTextReference>(run.begin(), run.end()), expected);
  EXPECT_NE(ref("a", 1, boost::none, 1u), ref("a", 1, LocalizedTextWidth::ExtraSmall, 1u));
}

}  // namespace
