#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace CatalogueTestSupport;
using testing::ElementsAre;
using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextWidth;
using Zalt::Catalogue::Catalogue;
using Zalt::Catalogue::XliffImport;

LocalizedText text(const std::string& ref, const std::string& lang, std::uint64_t version,
                   boost::optional<LocalizedTextWidth> width, const std::string& content) {
  return LocalizedText(Tovra::Locale::Utf8(content), LanguageTag(lang),
                       Tovra::Mdib::LocalizedTextRef(Tovra::Locale::Utf8(ref)),
                       Tovra::Mdib::VersionCounter(version), width);
}

Catalogue catalogueOf(const std::vector<LocalizedText>& texts) {
  Catalogue catalogue{{"texts.xml"}, {}, {}};
  for (const LocalizedText& each : texts) {
    catalogue.texts.push_back({each, 0, static_cast<std::int32_t>(catalogue.texts.size() + 1), 1});
  }
  return catalogue;
}

std::string exported(const std::vector<LocalizedText>& texts, const std::string& to = "de-DE") {
  const Catalogue catalogue = catalogueOf(texts);
  return writeXliff(catalogue, checkCatalogue(catalogue), LanguageTag("en-US"), LanguageTag(to), "texts.xml");
}

// Each unit's target set to its source, as a translator who keeps every text would.
std::string translatedAsIs(std::string xliff) {
  for (std::size_t at = 0; (at = xliff.find("<source>", at)) != std::string::npos;) {
    const std::size_t end = xliff.find("</source>", at) + 9;
    const std::string target = "<target>" + xliff.substr(at + 8, end - at - 17) + "</target>";
    xliff.insert(end, target);
    at = end + target.size();
  }
  return xliff;
}

TEST(XliffExport, OneUnitPerSourceTextWithItsKeyInTheIdAndTheTranslationWhereTheKeyMatches) {
  const std::string xliff = exported({
      text("label.hr", "en-US", 2, LocalizedTextWidth::Medium, "Heart\nrate"),
      text("label.hr", "fr-FR", 2, LocalizedTextWidth::Medium, "Fréquence\ncardiaque"),
      text("menu title", "de-DE", 7, LocalizedTextWidth::Small, "Menü"),
      text("label.hr", "de-DE", 2, LocalizedTextWidth::Medium, "Puls"),
      text("label.hr", "de-DE", 2, LocalizedTextWidth::Medium, "Herz-\nfrequenz"),
      text("menu title", "en-US", 7, boost::none, "Menu & <b>\r"),
      text("label.hr", "de-DE", 1, LocalizedTextWidth::Medium, "Puls\nalt"),
  });
  EXPECT_EQ(xliff, R"(<?xml version="1.0" encoding="UTF-8"?>
<xliff xmlns="urn:oasis:names:tc:xliff:document:1.2" version="1.2">
  <file original="texts.xml" source-language="en-US" target-language="de-DE" datatype="plaintext">
    <body>
      <trans-unit id="2.m.2.label.hr" resname="label.hr" xml:space="preserve" maxwidth="49" size-unit="char">
        <source>Heart
rate</source>
        <target state="translated">Herz-
frequenz</target>
        <note>Width m (Medium): at most 24 narrow characters a line, a wide one counting as two. Exactly 2 lines.</note>
      </trans-unit>
      <trans-unit id="7.-.2.menu%20title" resname="menu title" xml:space="preserve">
        <source>Menu &amp; &lt;b&gt;&#13;</source>
        <note>Exactly 2 lines.</note>
      </trans-unit>
    </body>
  </file>
</xliff>
)");
  EXPECT_THAT(described(Zalt::Catalogue::readXliff(xliff, "de.xlf")),
              ElementsAre("label.hr@2/2/de-DE 'Herz-\nfrequenz' de.xlf:8:9",
                          "untranslated de.xlf:12:7: unit 'menu title' has no translation"));
}

TEST(XliffExport, MaxwidthLimitsTheWholeTargetInTheWidthUnit) {
  const Catalogue catalogue =
      catalogueOf({text("xs", "en-US", 1, LocalizedTextWidth::ExtraSmall, "x"),
                   text("m3", "en-US", 1, LocalizedTextWidth::Medium, "a\nb\nc"),
                   text("xxl", "en-US", 1, LocalizedTextWidth::ExtraExtraLarge, "x")});
  const auto check = checkCatalogue(catalogue);
  const auto units = [&](Zalt::Catalogue::WidthUnit unit) {
    const std::string xliff =
        writeXliff(catalogue, check, LanguageTag("en-US"), LanguageTag("de-DE"), "texts.xml", unit);
    std::vector<std::string> lines;
    for (std::size_t at = 0; (at = xliff.find("<trans-unit", at)) != std::string::npos; ++at) {
      const std::size_t note = xliff.find("<note>", at);
      lines.push_back(xliff.substr(at, xliff.find('>', at) - at) + " | " +
                      xliff.substr(note + 6, xliff.find("</note>", note) - note - 6));
    }
    return lines;
  };
  EXPECT_THAT(
      units(Zalt::Catalogue::WidthUnit::Fullwidth),
      ElementsAre(
          R"(<trans-unit id="1.xs.1.xs" resname="xs" xml:space="preserve" maxwidth="8" size-unit="char" | )"
          "Width xs (ExtraSmall): at most 8 narrow characters a line, a wide one counting as two. Exactly "
          "1 line.",
          R"(<trans-unit id="1.m.3.m3" resname="m3" xml:space="preserve" maxwidth="74" size-unit="char" | )"
          "Width m (Medium): at most 24 narrow characters a line, a wide one counting as two. Exactly 3 "
          "lines.",
          R"(<trans-unit id="1.xxl.1.xxl" resname="xxl" xml:space="preserve" | )"
          "Width xxl (ExtraExtraLarge): no limit to a line. Exactly 1 line."));
  EXPECT_THAT(
      units(Zalt::Catalogue::WidthUnit::Characters),
      ElementsAre(
          R"(<trans-unit id="1.xs.1.xs" resname="xs" xml:space="preserve" maxwidth="4" size-unit="char" | )"
          "Width xs (ExtraSmall): at most 4 characters a line, a wide one counting as one. Exactly 1 "
          "line.",
          R"(<trans-unit id="1.m.3.m3" resname="m3" xml:space="preserve" maxwidth="38" size-unit="char" | )"
          "Width m (Medium): at most 12 characters a line, a wide one counting as one. Exactly 3 lines.",
          R"(<trans-unit id="1.xxl.1.xxl" resname="xxl" xml:space="preserve" | )"
          "Width xxl (ExtraExtraLarge): no limit to a line. Exactly 1 line."));
}

TEST(XliffExport, RefusesWhatTheImportCouldNotReadBack) {
  const auto en = text("a", "en-US", 1, boost::none, "a");
  EXPECT_THROW(exported({en}, "de"), std::invalid_argument);
  EXPECT_THROW(exported({en, text("b", "en-US", 1, boost::none, "bell \a")}), std::invalid_argument);
  EXPECT_THROW(exported({en, text("a", "de-DE", 1, boost::none, "\x01")}), std::invalid_argument);
  EXPECT_THROW(exported({text("\x7F\x01", "en-US", 1, boost::none, "a")}), std::invalid_argument);
  const Catalogue catalogue = catalogueOf({en});
  const auto check = checkCatalogue(catalogue);
  EXPECT_THROW(writeXliff(catalogue, check, LanguageTag("en"), LanguageTag("de-DE"), "a"),
               std::invalid_argument);
  EXPECT_THROW(writeXliff(catalogue, check, LanguageTag("en-US"), LanguageTag("de-DE"), "\x1B.xml"),
               std::invalid_argument);
}

TEST(XliffRoundTrip, TranslationsComeBackByteForByteUnderTheTargetLanguage) {
  const std::vector<LocalizedText> sources = {
      text("crlf", "en-US", 1, LocalizedTextWidth::ExtraSmall, "Alarm\r\nsilenced"),
      text("lone cr", "en-US", 1, LocalizedTextWidth::Small, "Alarm\rsilenced\r"),
      text("separators", "en-US", 1, LocalizedTextWidth::Large, "line\xE2\x80\xA8sep\xE2\x80\xA9\tend\n"),
      text("markup", "en-US", 1, LocalizedTextWidth::ExtraLarge, "<b>Bold</b> &amp; <br/> ]]> \"q\" 'a'"),
      text("placeholders", "en-US", 1, boost::none, "%1$s of {0} %% ${x}"),
      text("50% odd\r\n\t\"ref\" <&>", "en-US", 18446744073709551615U, LocalizedTextWidth::ExtraExtraLarge,
           "x"),
      text("日本.ラベル", "en-US", 0, LocalizedTextWidth::Medium, "  spaces kept  "),
  };
  const XliffImport imported =
      Zalt::Catalogue::readXliff(translatedAsIs(exported(sources, "ja-JP")), "ja.xlf");
  std::vector<LocalizedText> expected;
  expected.reserve(sources.size());
  for (const LocalizedText& source : sources) {
    expected.emplace_back(source.text(), LanguageTag("ja-JP"), source.ref(), source.version(),
                          source.textWidth());
  }
  EXPECT_THAT(described(imported), testing::SizeIs(sources.size()));
  EXPECT_EQ(Zalt::Catalogue::mdibTexts(imported.catalogue.texts), expected);
}

}  // namespace
