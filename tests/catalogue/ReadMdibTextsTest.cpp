#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/ReadMdibTexts.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace CatalogueTestSupport;
using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::MdibTexts;
using Zalt::Catalogue::MdibTextUse;
using Zalt::Catalogue::readMdibTexts;
using Kind = Finding::Kind;

// One line per use: "REF@VERSION/LANG L:C" or "ELEMENT='TEXT'/LANG L:C" inline.
std::vector<std::string> described(const MdibTexts& texts) {
  std::vector<std::string> result;
  for (const MdibTextUse& use : texts.uses) {
    std::string line = use.isInline ? use.element + "='" + use.text + "'" : use.ref;
    line += use.version ? '@' + std::to_string(*use.version) : "";
    line += use.lang ? '/' + *use.lang : "";
    result.push_back(line + ' ' + std::to_string(use.line) + ':' + std::to_string(use.column));
  }
  return result;
}

std::vector<Finding> problemsOf(const std::string& content) {
  return problemsReading(readMdibTexts, content, "mdib.xml");
}

TEST(MdibTexts, TakesEveryRefOfBothNamespacesWhateverThePrefixAndDepth) {
  const MdibTexts texts = readMdibTexts(
      "<Mdib xmlns='" + participant() + "' xmlns:p='" + participant() + "' xmlns:m='" + message() +
          "' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>\n"
          "<MdDescription><p:Mds Handle='mds'><Type Code='1'><ConceptDescription Ref='mds.type' "
          "Lang='en-US'/>"
          "</Type>\n"
          "  <AlertSystem><AlertCondition xsi:type='p:LimitAlertConditionDescriptor'>"
          "<p:Label Ref='alert.hr' Version=' 7 '/></AlertCondition></AlertSystem></p:Mds></MdDescription>\n"
          "<MdState><State xsi:type='EnumStringMetricState'><m:Anything Ref='message.text'/>"
          "<x:Label xmlns:x='urn:other' Ref='other.namespace'/><Label p:Ref='prefixed.attribute'/></State>"
          "</MdState></Mdib>",
      "mdib.xml");
  EXPECT_THAT(described(texts),
              testing::ElementsAre("mds.type/en-US 2:51", "alert.hr@7 3:75", "message.text 4:50"));
  EXPECT_EQ(texts.files, std::vector<std::string>{"mdib.xml"});
}

TEST(MdibTexts, KeepsTextsGivenInlineWithTheirLanguage) {
  const MdibTexts texts =
      readMdibTexts(mdib("<pm:Label Lang='de-DE'>Herz<![CDATA[frequenz]]></pm:Label><pm:Description>\n  "
                         "<pm:Unit>beats</pm:Unit></pm:Description>\n"
                         "<pm:Documentation><pm:Label>inner</pm:Label> outer</pm:Documentation>"
                         "<pm:Manufacturer Ref='maker'>fallback</pm:Manufacturer>"
                         "<Label xmlns='urn:other'>elsewhere</Label><msg:ErrorInfo>failed</msg:ErrorInfo>"),
                    "mdib.xml");
  EXPECT_THAT(described(texts),
              testing::ElementsAre("Label='Herzfrequenz'/de-DE 2:1", "Label='inner' 4:19",
                                   "Documentation=' outer' 4:1", "maker 4:70", "ErrorInfo='failed' 4:167"));
}

TEST(MdibTexts, ReportsFileProblemsAsCataloguesDo) {
  EXPECT_THAT(
      problemsOf(mdib("<pm:Label Ref='a' Version='1x'/><pm:Label Ref='b' Version='-2'/>")),
      testing::ElementsAre(
          Finding{Kind::File, {"mdib.xml", 2, 28}, "Version '1x' is not an unsigned 64-bit decimal"},
          Finding{Kind::File, {"mdib.xml", 2, 60}, "Version '-2' is not an unsigned 64-bit decimal"}));
  EXPECT_THAT(
      problemsOf(mdib("<pm:Label Ref='a'>")),
      testing::ElementsAre(testing::Field(&Finding::message, testing::StartsWith("malformed XML: "))));
  EXPECT_THAT(problemsOf("<!DOCTYPE m [<!ENTITY e 'x'>]><m/>"),
              testing::ElementsAre(Finding{Kind::File,
                                           {"mdib.xml", 1, 1},
                                           "a document type declaration is not allowed in an MDIB file "
                                           "(nothing is expanded or fetched)"}));
}

TEST(MdibTexts, ReadsFilesInOrderAndNamesEachUsesFile) {
  const std::string path = (std::filesystem::temp_directory_path() / "zalt-mdib-texts-test.xml").string();
  std::ofstream(path) << mdib("<pm:Label Ref='a'/>");
  const MdibTexts texts = Zalt::Catalogue::readMdibTextsFiles({path, path});
  ASSERT_EQ(texts.uses.size(), 2u);
  EXPECT_EQ(texts.uses[1].file, 1u);
  EXPECT_EQ(texts.location(texts.uses[1]), (Zalt::Catalogue::SourceLocation{path, 2, 1}));
  try {
    Zalt::Catalogue::readMdibTextsFiles({path, "no-such-mdib.xml"});
    ADD_FAILURE() << "read a file that does not exist";
  } catch (const CatalogueError& error) {
    EXPECT_THAT(error.problems(), testing::ElementsAre(testing::Field(
                                      &Finding::message, testing::StartsWith("cannot be read: "))));
  }
  std::filesystem::remove(path);
}

TEST(MdibTexts, RefusesACatalogueButReadsTextsAmongMdibContent) {
  const Finding catalogue{
      Kind::File, {"mdib.xml", 0, 0}, "holds localized texts and no MDIB content: is it a catalogue?"};
  const std::string pm = "xmlns:pm='" + participant() + "'";
  const std::string text = "<pm:LocalizedText Ref='a' Lang='en-US' Version='1'>A</pm:LocalizedText>";
  const std::vector<std::string> catalogues = {
      "<c " + pm + ">" + text + "</c>", "<pm:LocalizedTexts " + pm + ">" + text + "</pm:LocalizedTexts>",
      "<msg:GetLocalizedTextResponse xmlns:msg='" + message() +
          "'><msg:Text Ref='a'>A</msg:Text></msg:GetLocalizedTextResponse>"};
  for (const std::string& content : catalogues) {
    EXPECT_THAT(problemsOf(content), testing::ElementsAre(catalogue)) << content;
  }
  EXPECT_EQ(readMdibTexts("<c " + pm + ">" + text + "<pm:Label Ref='b'/></c>", "mdib.xml").uses.size(), 2u);
  EXPECT_TRUE(readMdibTexts("<c xmlns='urn:other'><LocalizedText Ref='a'/></c>", "mdib.xml").uses.empty());
}

// One line per identifier: "VALUE mds=HANDLE L:C".
std::vector<std::string> identifiers(const MdibTexts& texts) {
  std::vector<std::string> result;
  for (const Zalt::Catalogue::CatalogueIdentifier& id : texts.catalogueIds) {
    result.push_back(id.value + " mds=" + id.mds.value_or("-") + ' ' + std::to_string(id.line) + ':' +
                     std::to_string(id.column));
  }
  return result;
}

std::string productionEntry(const std::string& specType, const std::string& value) {
  return "<pm:ProductionSpecification><pm:SpecType " + specType + "/><pm:ProductionSpec>" + value +
         "</pm:ProductionSpec></pm:ProductionSpecification>\n";
}

TEST(MdibTexts, TakesTheTextCatalogueThatEachMdsDeclaresInItsOwnProductionEntry) {
  const std::string mds = "<pm:Mds Handle='mds.a'>\n" + productionEntry("Code='68008'", " urn:oid:1.2.3 \n") +
                          productionEntry("Code='68009'", "urn:oid:9") +
                          productionEntry("Code='68008' CodingSystem='urn:other'", "urn:oid:8") + "<pm:Vmd>" +
                          productionEntry("Code='68008'", "urn:oid:7") + "<pm:Channel>" +
                          productionEntry("Code='68008'", "urn:oid:6") + "</pm:Channel></pm:Vmd></pm:Mds>\n";
  const std::string second =
      "<p:Mds xmlns:p='" + participant() +
      "'><p:ProductionSpecification><p:SpecType Code='68008' "
      "CodingSystem='urn:oid:1.2.840.10004.1.1.1.0.0.1'/><p:ProductionSpec>urn:uuid:x</p:ProductionSpec>"
      "</p:ProductionSpecification></p:Mds>\n";
  const MdibTexts texts = readMdibTexts(mdib(mds + second), "mdib.xml");
  EXPECT_THAT(identifiers(texts),
              testing::ElementsAre("urn:oid:1.2.3 mds=mds.a 3:56", "urn:uuid:x mds=- 10:191"));
  EXPECT_EQ(texts.location(texts.catalogueIds.at(1)), (Zalt::Catalogue::SourceLocation{"mdib.xml", 10, 191}));
  EXPECT_TRUE(readMdibTexts(mdib("<pm:Vmd>" + productionEntry("Code='68008'", "urn:oid:1.2") + "</pm:Vmd>"),
                            "mdib.xml")
                  .catalogueIds.empty());
}

}  // namespace
