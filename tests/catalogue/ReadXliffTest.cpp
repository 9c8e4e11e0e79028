#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/LanguageCase.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace CatalogueTestSupport;
using testing::ElementsAre;
using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::XliffImport;

// A document of one file in `language` around `units`, which start on line 3.
std::string xliffOf(const std::string& units, const std::string& language = "de-DE") {
  return "<xliff version='1.2' xmlns='urn:oasis:names:tc:xliff:document:1.2'>\n<file target-language='" +
         language + "' source-language='en-US' datatype='plaintext' original='a'><body>\n" + units +
         "</body></file></xliff>";
}

// The first problem of a document that yields nothing, placed.
std::string firstProblem(const std::string& content) {
  return placed(problemsReading(Zalt::Catalogue::readXliff, content, "x.xlf").at(0));
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
  EXPECT_EQ(firstProblem(xliffOf("<trans-unit id='1.-.1.outer'><source>a</source>\n <trans-unit "
                                 "id='1.-.1.inner'><target>b</target></trans-unit><target>c</target>"
                                 "</trans-unit>\n")),
            "x.xlf:4:2: a trans-unit inside another, where XLIFF 1.2 allows none");

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

TEST(XliffImport, BlankTargetsAndUnitsNotToTranslateYieldNothing) {
  const XliffImport imported = Zalt::Catalogue::readXliff(
      xliffOf("<trans-unit id='1.-.1.spaces'><target> \t </target></trans-unit>\n"
              "<trans-unit id='1.-.1.ideographic'><target>\u3000</target></trans-unit>\n"
              "<trans-unit id='1.-.1.nbsp'><target>\u00A0\u2007\u202F</target></trans-unit>\n"
              "<trans-unit id='1.-.2.separators'><target>\u2028\r\n\u2029</target></trans-unit>\n"
              "<trans-unit id='1.-.1.kept'><target>\u00A0x\u3000</target></trans-unit>\n"
              "<trans-unit id='1.-.1.fixed' translate='no'><source>ID</source></trans-unit>\n"
              "<trans-unit id='tool-comment' translate='no'><target/></trans-unit>\n"
              "<group translate='no'><trans-unit id='1.-.1.grouped'><target/></trans-unit>\n"
              "<group><trans-unit id='1.-.1.nested'><target/></trans-unit></group>\n"
              "<trans-unit id='1.-.1.opted-in' translate='yes'><target>y</target></trans-unit></group>\n"
              "<trans-unit id='1.-.1.after'><target>z</target></trans-unit>\n"),
      "x.xlf");
  EXPECT_THAT(described(imported),
              ElementsAre("kept@1/-/de-DE '\u00A0x\u3000' x.xlf:8:29", "opted-in@1/-/de-DE 'y' x.xlf:13:49",
                          "after@1/-/de-DE 'z' x.xlf:14:30",
                          "untranslated x.xlf:3:31: unit 'spaces' has a blank translation",
                          "untranslated x.xlf:4:36: unit 'ideographic' has a blank translation",
                          "untranslated x.xlf:5:29: unit 'nbsp' has a blank translation",
                          "untranslated x.xlf:6:35: unit 'separators' has a blank translation"));
}

TEST(XliffImport, TranslationsNoOneSignedOffAreReportedAndCanBeLeftOut) {
  const std::string units =
      "<trans-unit id='1.-.1.final'><target state='final'>a</target></trans-unit>\n"
      "<trans-unit id='1.-.1.review'><target state='needs-review-translation'>b</target></trans-unit>\n"
      "<trans-unit id='1.-.1.adapt'><target state='needs-adaptation'>c</target></trans-unit>\n"
      "<trans-unit id='1.-.1.l10n'><target state='needs-l10n'>d</target></trans-unit>\n"
      "<trans-unit id='1.-.1.rl10n'><target state='needs-review-l10n'>e</target></trans-unit>\n"
      "<trans-unit id='1.-.1.no' approved='no'><target state='translated'>f</target></trans-unit>\n"
      "<trans-unit id='1.-.1.yes' approved='yes'><target>g</target></trans-unit>\n"
      "<trans-unit id='1.-.1.mt'><target state-qualifier='leveraged-mt'>h</target></trans-unit>\n"
      "<trans-unit id='1.-.1.sug'><target state-qualifier='mt-suggestion'>i</target></trans-unit>\n"
      "<trans-unit id='1.-.1.tm' approved='yes'><target state-qualifier='exact-match'>j</target>"
      "</trans-unit>\n";
  XliffImport imported = Zalt::Catalogue::readXliff(xliffOf(units), "x.xlf");
  EXPECT_THAT(imported.unreviewed, ElementsAre(1, 2, 3, 4, 5, 7, 8));
  const std::vector<std::string> found = described(imported);
  ASSERT_EQ(found.size(), 17U);
  EXPECT_THAT(
      std::vector<std::string>(found.begin() + 10, found.end()),
      ElementsAre("unreviewed x.xlf:4:1: the translation of unit 'review' is not reviewed: its target's "
                  "state is 'needs-review-translation'",
                  "unreviewed x.xlf:5:1: the translation of unit 'adapt' is not reviewed: its target's "
                  "state is 'needs-adaptation'",
                  "unreviewed x.xlf:6:1: the translation of unit 'l10n' is not reviewed: its target's "
                  "state is 'needs-l10n'",
                  "unreviewed x.xlf:7:1: the translation of unit 'rl10n' is not reviewed: its target's "
                  "state is 'needs-review-l10n'",
                  "unreviewed x.xlf:8:1: the translation of unit 'no' is not reviewed: the unit is not "
                  "approved",
                  "unreviewed x.xlf:10:1: the translation of unit 'mt' is not reviewed: its target is a "
                  "machine translation ('leveraged-mt')",
                  "unreviewed x.xlf:11:1: the translation of unit 'sug' is not reviewed: its target is a "
                  "machine translation ('mt-suggestion')"));

  // Indexes of a later file count the texts of the files before it.
  imported.append(Zalt::Catalogue::readXliff(xliffOf(units), "y.xlf"));
  EXPECT_THAT(imported.unreviewed, ElementsAre(1, 2, 3, 4, 5, 7, 8, 11, 12, 13, 14, 15, 17, 18));
  const XliffImport reviewed = Zalt::Catalogue::withoutUnreviewed(std::move(imported));
  EXPECT_THAT(reviewed.unreviewed, testing::IsEmpty());
  EXPECT_EQ(reviewed.findings.size(), 14U);
  std::string texts;
  for (const auto& text : reviewed.catalogue.texts) {
    texts += text.text.text().value() + reviewed.catalogue.location(text).file;
  }
  EXPECT_EQ(texts, "ax.xlfgx.xlfjx.xlfay.xlfgy.xlfjy.xlf");
}

TEST(XliffImport, SegmentedUnitsAreTheirSegmentsUnwrapped) {
  const XliffImport imported = Zalt::Catalogue::readXliff(
      xliffOf(
          "<trans-unit id='1.-.1.two'><source>Stop. Go.</source><seg-source><mrk mtype='seg' mid='1'>Stop."
          "</mrk> <mrk mtype='seg' mid='2'>Go.</mrk></seg-source>\n<target state='translated'><mrk "
          "mtype='seg' mid='2'>Los.</mrk>  <mrk mid='1' mtype='seg'>Halt.</mrk></target></trans-unit>\n"
          "<trans-unit id='1.-.1.lost'><source>A. B.</source><seg-source><mrk mtype='seg' mid='1'>A.</mrk> "
          "<mrk mtype='seg' mid='2'>B.</mrk></seg-source><target><mrk mtype='seg' mid='1'>A. B.</mrk>"
          "</target></trans-unit>\n"
          "<trans-unit id='1.-.1.joined'><source>A.</source><seg-source><mrk mtype='seg' mid='1'>A.</mrk>"
          "</seg-source><target>A.</target></trans-unit>\n"
          "<trans-unit id='1.-.1.extra'><source>A.</source><target><mrk mtype='seg' mid='1'>A.</mrk>"
          "</target></trans-unit>\n"
          "<trans-unit id='1.-.1.protected'><seg-source><mrk mtype='seg' mid='1'>x</mrk></seg-source>"
          "<target><mrk mtype='seg' mid='1'>a <mrk mtype='protected'>b</mrk></mrk></target></trans-unit>\n"
          "<trans-unit id='1.-.1.nested'><target><mrk mtype='seg' mid='1'><mrk mtype='seg' mid='2'>b</mrk>"
          "</mrk></target></trans-unit>\n"),
      "x.xlf");
  EXPECT_THAT(
      described(imported),
      ElementsAre(
          "two@1/-/de-DE 'Los.  Halt.' x.xlf:4:1",
          "segments x.xlf:5:1: the translation of unit 'lost' has the segments '1' where its source has the "
          "segments '1', '2'",
          "segments x.xlf:6:1: the translation of unit 'joined' has no segments where its source has the "
          "segments '1'",
          "segments x.xlf:7:1: the translation of unit 'extra' has the segments '1' where its source has no "
          "segments",
          "markup x.xlf:8:126: the translation of unit 'protected' holds the element 'mrk': a text holds "
          "characters only",
          "markup x.xlf:9:64: the translation of unit 'nested' holds the element 'mrk': a text holds "
          "characters only"));
}

TEST(XliffImport, ATranslationKeepsThePlaceholdersAndMarkupOfItsSource) {
  const auto unit = [](const std::string& ref, const std::string& source, const std::string& target) {
    return "<trans-unit id='1.-.1." + ref + "'><source>" + source + "</source><target>" + target +
           "</target></trans-unit>\n";
  };
  const XliffImport imported = Zalt::Catalogue::readXliff(
      xliffOf(unit("lost", "%1$s of %2$d", "von %2$d") + unit("renamed", "{count} left", "{Anzahl} übrig") +
              unit("bold", "&lt;b&gt;Stop&lt;/b&gt; now", "Jetzt anhalten") +
              unit("swapped", "%1$s of %2$s", "%2$s: %1$s") + unit("twice", "%s or %s", "%s oder") +
              unit("plural", "{n, plural, one {# alarm for {bed}} other {# alarms for {bed}}}",
                   "{n, plural, one {# alarm dla {bed}} few {# alarmy dla {bed}} many {# alarmów dla {bed}} "
                   "other {# alarmu dla {bed}}}") +
              unit("flattened", "{n, plural, one {# alarm} other {# alarms}}", "# Alarme") +
              unit("both", "Bed %1$s: %2$s", "Bett %1$s {x}")),
      "x.xlf");
  EXPECT_THAT(
      described(imported),
      ElementsAre(
          "swapped@1/-/de-DE '%2$s: %1$s' x.xlf:6:61",
          "plural@1/-/de-DE '{n, plural, one {# alarm dla {bed}} few {# alarmy dla {bed}} many {# alarmów "
          "dla "
          "{bed}} other {# alarmu dla {bed}}}' x.xlf:8:111",
          "placeholder x.xlf:3:1: the translation of unit 'lost' lacks '%1$s'",
          "placeholder x.xlf:4:1: the translation of unit 'renamed' lacks '{count}' and adds '{Anzahl}'",
          "placeholder x.xlf:5:1: the translation of unit 'bold' lacks '<b>', '</b>'",
          "placeholder x.xlf:7:1: the translation of unit 'twice' lacks '%s'",
          "placeholder x.xlf:9:1: the translation of unit 'flattened' lacks '{n, plural'",
          "placeholder x.xlf:10:1: the translation of unit 'both' lacks '%2$s' and adds '{x}'"));
}

TEST(XliffImport, TakesTheTargetLanguageInCanonicalCase) {
  const auto languageOf = [](const std::string& language) {
    const XliffImport imported = Zalt::Catalogue::readXliff(
        xliffOf("<trans-unit id='1.-.1.a'><target>t</target></trans-unit>", language), "x.xlf");
    return imported.catalogue.texts.empty() ? std::string("-")
                                            : imported.catalogue.texts[0].text.lang()->tag();
  };
  EXPECT_EQ(languageOf("it-it"), "it-IT");
  EXPECT_EQ(languageOf("EN-xa"), "en-XA");
  EXPECT_EQ(languageOf("de-DE"), "de-DE");
  EXPECT_EQ(languageOf("it_IT"), "-");
  using Tovra::Locale::LanguageTag;
  EXPECT_TRUE(Zalt::Catalogue::sameLanguage(LanguageTag("it-it"), LanguageTag("IT-It")));
  EXPECT_FALSE(Zalt::Catalogue::sameLanguage(LanguageTag("it-IT"), LanguageTag("it-CH")));
  EXPECT_FALSE(Zalt::Catalogue::sameLanguage(LanguageTag("it-IT"), LanguageTag("it-IT-x")));
  EXPECT_EQ(Zalt::Catalogue::canonicalLanguage(LanguageTag("zh-hant-tw")).tag(), "zh-hant-tw");
}

// Older tools name the XLIFF 1.2 definition; it is never fetched, and nothing
// but the vocabulary is taken from a document type declaration.
TEST(XliffImport, PassesOverADocumentTypeThatOnlyNamesTheDefinition) {
  const std::string doctype =
      "<!DOCTYPE xliff PUBLIC \"-//XLIFF//DTD XLIFF//EN\" "
      "\"http://www.oasis-open.org/committees/xliff/documents/xliff.dtd\">\n";
  const std::string body =
      "<xliff version='1.2'><file target-language='it-IT'><body><trans-unit id='2.-.1.a'><source>A</source>"
      "<target>B</target></trans-unit></body></file></xliff>";
  EXPECT_THAT(described(Zalt::Catalogue::readXliff("<?xml version='1.0'?>\n" + doctype + body, "d.xlf")),
              ElementsAre("a@2/-/it-IT 'B' d.xlf:3:101"));
  EXPECT_EQ(firstProblem("<!DOCTYPE xliff SYSTEM 'x.dtd' [<!ENTITY e 'x'>]>" + body),
            "x.xlf:1:1: an internal subset is not allowed in an XLIFF file (nothing is expanded or fetched)");
  EXPECT_EQ(
      firstProblem(doctype + "<xliff><file><trans-unit id='1.-.1.a'><target>&nbsp;</target></trans-unit>"
                             "</file></xliff>"),
      "x.xlf:2:53: malformed XML: Entity 'nbsp' not defined");
  EXPECT_EQ(placed(problemsReading(Zalt::Catalogue::readCatalogue, doctype + "<c/>", "c.xml").at(0)),
            "c.xml:1:1: a document type declaration is not allowed in a catalogue file (nothing is expanded "
            "or fetched)");
}

}  // namespace
