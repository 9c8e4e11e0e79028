#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Localization/LocalizedTextFilter.h>

#include <gtest/gtest.h>

#include <set>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

TEST(LanguageTag, TwoLetterLanguageAndCountryForm) {
  for (const char* good : {"en-US", "de-de", "Xx-yY"}) {
    EXPECT_TRUE(LanguageTag(good).is2LetterLangAnd2LetterCountry()) << good;
  }
  for (const char* bad :
       {"", "en", "en_US", "en-USA", "e1-US", "en-U5", "eng-US", "en-US ", "\xC3\xA4n-US"}) {
    EXPECT_FALSE(LanguageTag(bad).is2LetterLangAnd2LetterCountry()) << bad;
  }
  EXPECT_NE(LanguageTag("en-US"), LanguageTag("en-us"));
  EXPECT_LT(LanguageTag(), LanguageTag("a"));
}

TEST(LocalizedTextFilter, TakesTheSetsAndCopiesTheVersion) {
  std::set<LocalizedTextRef> refs{LocalizedTextRef(Utf8("hr"))};
  const boost::optional<VersionCounter> version(VersionCounter(4));
  std::set<LanguageTag> languages{LanguageTag("de-DE")};
  std::set<LocalizedTextWidth> widths{LocalizedTextWidth::Small};
  std::set<Zalt::Localization::NumberOfLines> lines{2};

  const Zalt::Localization::LocalizedTextFilter filter(std::move(refs), version, std::move(languages),
                                                       std::move(widths), std::move(lines));

  EXPECT_TRUE(refs.empty() && languages.empty() && widths.empty() &&
              lines.empty());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(version, VersionCounter(4));
  EXPECT_EQ(filter.refs(), std::set<LocalizedTextRef>{LocalizedTextRef(Utf8("hr"))});
  EXPECT_EQ(filter.version(), VersionCounter(4));
  EXPECT_EQ(filter.languageTags().size(), 1U);
  EXPECT_EQ(filter.textWidths(), std::set<LocalizedTextWidth>{LocalizedTextWidth::Small});
  EXPECT_EQ(filter.numberOfLines(), std::set<Zalt::Localization::NumberOfLines>{2});
}

}  // namespace
