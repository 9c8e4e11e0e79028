#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextWidth;
using Zalt::Catalogue::Catalogue;
using Zalt::Catalogue::CatalogueError;
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

// "REF@VERSION/WIDTH/LANG 'TEXT' FILE:L:C" per text, "KIND FILE:L:C: MESSAGE" per finding.
std::vector<std::string> described(const XliffImport& imported) {
  std::vector<std::string> lines;
  for (const auto& each : imported.catalogue.texts) {
    const auto where = imported.catalogue.location(each);
    const auto& width = each.text.textWidth();
    lines.push_back(each.text.ref().get().value() + '@' + std::to_string(each.text.version()->get()) + '/' +
                    (width ? std::to_string(static_cast<int>(*width)) : "-") + '/' + each.text.lang()->tag() +
                    " '" + each.text.text().value() + "' " + where.file + ':' + std::to_string(where.line) +
                    ':' + std::to_string(where.column));
  }
  for (const auto& finding : imported.findings) {
    lines.push_back(std::string(name(finding.kind)) + ' ' + placed(finding));
  }
  return lines;
}

// The first problem of a document that yields nothing, placed.
std::string firstProblem(const std::string& content) {
  return placed(CatalogueTestSupport::problemsReading(Zalt::Catalogue::readXliff, content, "x.xlf").at(0));
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
      <trans-unit id="2.m.2.label.hr" resname="label.hr" xml:space="preserve" maxwidth="24" size-unit="char">
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
  EXPECT_THAT(exported({text("xs", "en-US", 1, LocalizedTextWidth::ExtraSmall, "x"),
                        text("xxl", "en-US", 1, LocalizedTextWidth::ExtraExtraLarge, "x")}),
              testing::AllOf(testing::HasSubstr("maxwidth=\"8\""), testing::Not(testing::HasSubstr("\"40\"")),
                             testing::HasSubstr("Width xxl (ExtraExtraLarge): no limit to a line.")));
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

TEST(XliffImport, ReadsWhatTranslationToolsSave) {
  const XliffImport plain = Zalt::Catalogue::readXliff(R"(<?xml version="1.0"?>
<xliff version="1.2">
 <file original="a" source-language="en-US" target-language="de-DE" datatype="plaintext">
  <body>
   <group id="g1"><group>
     <trans-unit id="3.s.1.label.a">
      <source>A</source>
      <target>Ä</target>
     </trans-unit>
   </group></group>
  </body>
 </file>
 <file original="b" target-language="fr-FR">
  <header><tool tool-id="t" tool-name="t"/></header>
  <body>
   <trans-unit approved="yes" resname="label.b" id="1.-.2.label.b">
    <source>B
b</source>
    <alt-trans><target>not this</target></alt-trans>
    <target xml:lang="fr-FR" state="final">B
b fr</target>
   </trans-unit>
  </body>
 </file>
</xliff>)",
                                                       "plain.xlf");
  EXPECT_THAT(described(plain), ElementsAre("label.a@3/1/de-DE 'Ä' plain.xlf:8:7",
                                            "label.b@1/-/fr-FR 'B\nb fr' plain.xlf:20:5"));
  const XliffImport prefixed = Zalt::Catalogue::readXliff(
      "<x:xliff xmlns:x='urn:oasis:names:tc:xliff:document:1.2' xmlns:t='urn:tool'>\r\n"
      "<x:file target-language='ja-JP'><x:body><x:trans-unit id='1.xs.2.k'><t:meta><x:target>no</x:target>"
      "</t:meta>\r\n<x:target "
      "state='signed-off'>キ\r\nー</x:target></x:trans-unit></x:body></x:file></x:xliff>",
      "prefixed.xlf");
  EXPECT_THAT(described(prefixed), ElementsAre("k@1/0/ja-JP 'キ\nー' prefixed.xlf:3:1"));
}

TEST(XliffImport, ReportsEachUnitThatYieldsNoTextAtItsPlace) {
  const std::vector<std::string> badIds = {"01.-.1.a",
                                           "1.M.1.a",
                                           "1.m.0.a",
                                           "1.m.1.",
                                           "1.m.1",
                                           "1.m.1.a%2",
                                           "1.m.1.a%7E",
                                           "1.m.1.a%0a",
                                           "1.m.1.a b",
                                           "-1.-.1.a",
                                           "+1.-.1.a",
                                           "1.xxs.1.a",
                                           "18446744073709551616.-.1.a",
                                           "1.m.1.a%12",
                                           "1.m.1.a%FF"};
  std::string document = R"(<xliff xmlns="urn:oasis:names:tc:xliff:document:1.2">
<file original="x"><body><trans-unit id="1.-.1.a"><target>t</target></trans-unit></body></file>
<file target-language="de"><body><trans-unit id="1.-.1.a"><target>t</target></trans-unit></body></file>
<file target-language="de-DE"><body>
<trans-unit id="1.-.1.none"><source>s</source></trans-unit>
<trans-unit id="1.-.1.empty"><target/></trans-unit>
<trans-unit id="1.-.1.new"><target state="new">t</target></trans-unit>
<trans-unit id="1.-.1.needs"><target state="needs-translation">t</target></trans-unit>
<trans-unit id="1.-.1.g"><target>a <g id="1">b</g><x id="2"/></target></trans-unit>
<trans-unit id="1.-.1.x"><target><x id="1"/></target></trans-unit>
<trans-unit id="1.-.2.lines"><target>one line</target></trans-unit>
<trans-unit><target>t</target></trans-unit>
<trans-unit id="1.-.1.a%20b"><target>fine</target></trans-unit>
)";
  for (const std::string& id : badIds) {
    document += "<trans-unit id=\"" + id + "\"><target>t</target></trans-unit>\n";
  }
  const std::vector<std::string> found =
      described(Zalt::Catalogue::readXliff(document + "</body></file></xliff>", "x.xlf"));
  EXPECT_THAT(
      std::vector<std::string>(found.begin(), found.begin() + 10),
      ElementsAre(
          "a b@1/-/de-DE 'fine' x.xlf:13:30",
          "language x.xlf:2:1: the file has no target-language: its units yield no texts",
          "language x.xlf:3:1: target-language 'de' is not a language of the store (ll-CC): its units yield "
          "no "
          "texts",
          "untranslated x.xlf:5:1: unit 'none' has no translation",
          "untranslated x.xlf:6:30: unit 'empty' has an empty translation",
          "untranslated x.xlf:7:28: unit 'new' is not translated: its target's state is 'new'",
          "untranslated x.xlf:8:30: unit 'needs' is not translated: its target's state is "
          "'needs-translation'",
          "markup x.xlf:9:36: the translation of unit 'g' holds the element 'g': a text holds characters "
          "only",
          "markup x.xlf:10:34: the translation of unit 'x' holds the element 'x': a text holds characters "
          "only",
          "lines x.xlf:11:30: the translation of unit 'lines' has 1 line where the source has 2 lines"));
  ASSERT_EQ(found.size(), 11 + badIds.size());
  EXPECT_EQ(found[10], "id x.xlf:12:1: the unit has no id");
  for (std::size_t at = 0; at < badIds.size(); ++at) {
    EXPECT_EQ(found[11 + at], "id x.xlf:" + std::to_string(14 + at) + ":1: unit id '" + badIds[at] +
                                  "' is not of the form VERSION.WIDTH.LINES.REFERENCE");
  }
}

TEST(XliffImport, AFileThatIsNotXliffIsAFileProblem) {
  EXPECT_EQ(firstProblem("<xliff>\n<file></xliff>"),
            "x.xlf:2:15: malformed XML: Opening and ending tag mismatch: file line 2 and xliff");
  EXPECT_EQ(firstProblem("<html><file/></html>"),
            "x.xlf:1:1: not an XLIFF 1.2 file: the root element is 'html' in no namespace");
  EXPECT_EQ(firstProblem("<?xml version='1.0'?>\n <xliff xmlns='urn:oasis:names:tc:xliff:document:2.0'/>"),
            "x.xlf:2:2: not an XLIFF 1.2 file: the root element is 'xliff' in the namespace "
            "'urn:oasis:names:tc:xliff:document:2.0'");
  EXPECT_EQ(firstProblem("<xliff version='1.1'/>"),
            "x.xlf:1:1: XLIFF version '1.1' is not supported: an XLIFF file is version 1.2");
  EXPECT_EQ(firstProblem("<xliff><file target-language='it-IT'><trans-unit id='1.-.1.a'>"
                         "<target>x</target>\n<target>y</target></trans-unit></file></xliff>"),
            "x.xlf:2:1: a second target in one trans-unit, where XLIFF 1.2 allows one");

  const std::string path = (std::filesystem::temp_directory_path() / "zalt-xliff-test.xlf").string();
  std::ofstream(path) << "<xliff><file target-language='it-IT'><trans-unit id='1.-.1.a'/></file></xliff>";
  const XliffImport two = Zalt::Catalogue::readXliffFiles({path, path});
  EXPECT_EQ(two.catalogue.files, (std::vector<std::string>{path, path}));
  EXPECT_THAT(two.findings, testing::SizeIs(2));
  try {
    Zalt::Catalogue::readXliffFiles({"missing.xlf", path});
    ADD_FAILURE() << "a missing file is read";
  } catch (const CatalogueError& error) {
    EXPECT_EQ(placed(error.problems().at(0)).rfind("missing.xlf: cannot be read: ", 0), 0U);
  }
  std::remove(path.c_str());
}

}  // namespace
