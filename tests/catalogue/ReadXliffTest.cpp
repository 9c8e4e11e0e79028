#include "CatalogueTestSupport.h"

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
