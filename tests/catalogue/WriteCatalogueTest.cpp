#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Catalogue::readCatalogue;

TEST(CatalogueReader, ReadsBackWhatItWrites) {
  const std::vector<LocalizedText> texts = {
      LocalizedText(Utf8("line\r\nbreaks\rand\ttabs \"quoted\" 'x' <b> & ]]> \xC3\xA4\xF0\x9F\x98\x80 &amp;"),
                    LanguageTag("de-DE"), LocalizedTextRef(Utf8(" a\tb\nc\r\"'<&>")), VersionCounter(7),
                    LocalizedTextWidth::ExtraSmall),
      LocalizedText(Utf8(""), boost::none, LocalizedTextRef(Utf8("")), boost::none, boost::none),
      LocalizedText(Utf8("  \n  "), LanguageTag(" en\tUS "), LocalizedTextRef(Utf8("r")),
                    VersionCounter(18446744073709551615u), LocalizedTextWidth::ExtraExtraLarge),
  };
  const auto read = readCatalogue(Zalt::Catalogue::writeCatalogue(texts), "w.xml").texts;
  ASSERT_EQ(read.size(), texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(read[i].text, texts[i]);
  }
  EXPECT_THROW(Zalt::Catalogue::writeCatalogue({LocalizedText(Utf8("bell\a"))}), std::invalid_argument);
  EXPECT_THROW(Zalt::Catalogue::writeCatalogue({LocalizedText(Utf8("\xEF\xBF\xBE"))}), std::invalid_argument);
  EXPECT_THROW(Zalt::Catalogue::writeCatalogue({LocalizedText(Utf8("Temp\xE9rature"))}),
               std::invalid_argument);
  EXPECT_THROW(Zalt::Catalogue::writeCatalogue({LocalizedText(Utf8("t"), LanguageTag("e\xE9"),
                                                              LocalizedTextRef(), boost::none, boost::none)}),
               std::invalid_argument);
}

}  // namespace
