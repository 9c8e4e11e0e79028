#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/MdibCoverage.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using namespace CatalogueTestSupport;
using Zalt::Catalogue::CoverageCheck;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::readMdibTexts;
using Kind = Finding::Kind;

TEST(MdibCoverage, NamesTheNewKindsForJson) {
  EXPECT_STREQ(name(Kind::Missing), "missing");
  EXPECT_STREQ(name(Kind::Version), "version");
  EXPECT_STREQ(name(Kind::Language), "language");
  EXPECT_STREQ(name(Kind::Unused), "unused");
  EXPECT_STREQ(name(Kind::Inline), "inline");
}

// The catalogue of the checks: reference a in versions 1 and 2 in both
// languages, b in version 1 in both and in version 2 in English alone, c in
// both, and d whose only text the store rejects for its missing version.
std::string catalogueContent() {
  return "<c xmlns:pm='" + participant() +
         "'>\n"
         "<pm:LocalizedText Ref='a' Version='1' Lang='en-US'>A</pm:LocalizedText>"
         "<pm:LocalizedText Ref='a' Version='1' Lang='de-DE'>A</pm:LocalizedText>\n"
         "<pm:LocalizedText Ref='a' Version='2' Lang='en-US'>A</pm:LocalizedText>"
         "<pm:LocalizedText Ref='a' Version='2' Lang='de-DE' TextWidth='m'>A</pm:LocalizedText>\n"
         "<pm:LocalizedText Ref='b' Version='1' Lang='en-US'>B</pm:LocalizedText>"
         "<pm:LocalizedText Ref='b' Version='1' Lang='de-DE'>B</pm:LocalizedText>\n"
         "<pm:LocalizedText Ref='b' Version='2' Lang='en-US'>B</pm:LocalizedText>\n"
         "<pm:LocalizedText Ref='d' Lang='en-US'>D</pm:LocalizedText>\n"
         "<pm:LocalizedText Ref='c' Version='1' Lang='de-DE'>C</pm:LocalizedText>"
         "<pm:LocalizedText Ref='c' Version='1' Lang='en-US'>C</pm:LocalizedText>\n"
         "</c>";
}

CoverageCheck coverageOf(const std::string& body, bool allowUnused = true) {
  const auto catalogue = Zalt::Catalogue::readCatalogue(catalogueContent(), "texts.xml");
  return checkCoverage(readMdibTexts(mdib(body), "mdib.xml"), catalogue,
                       Zalt::Catalogue::checkCatalogue(catalogue), allowUnused);
}

Finding at(Kind kind, std::int32_t column, const std::string& text) {
  return {kind, {"mdib.xml", 2, column}, text};
}

TEST(MdibCoverage, FindsWhatTheCatalogueLacksForEachUse) {
  struct Case {
    std::string body;
    std::vector<Finding> findings;
  };
  const std::vector<Case> cases = {
      {"<pm:Label Ref='a'/><pm:Label Ref='a' Version='1' Lang='de-DE'/><pm:Label Ref='b' Version='1'/>", {}},
      {"<pm:Label Ref='b'/><pm:Label Ref='b' Version='2'/><pm:Label Ref='b' Lang='en-US'/>",
       {at(Kind::Missing, 1, "reference 'b' version 2 lacks de-DE")}},
      {"<pm:Label Ref='a' Version='3'/><pm:Text Ref='z'/><pm:Text Ref='z' Version='1'/>",
       {at(Kind::Version, 1, "the catalogue has reference 'a' in versions 1, 2, not in version 3"),
        at(Kind::Missing, 32, "the catalogue has no text for reference 'z'")}},
      {"<pm:Label Ref='c' Version='2'/>",
       {at(Kind::Version, 1, "the catalogue has reference 'c' in version 1, not in version 2")}},
      {"", {Finding{Kind::Empty, {"mdib.xml", 0, 0}, "the MDIB names no text"}}},
      {"<pm:Label Ref='d' Version='0'/>",
       {at(Kind::Missing, 1, "the catalogue has no text for reference 'd'")}},
      {"<pm:Label Ref='a' Lang='fr-FR'/>",
       {at(Kind::Language, 1,
           "Lang 'fr-FR' of reference 'a' is not a language of the catalogue (it has de-DE, en-US)")}},
      {"<pm:Label Lang='fr-FR'>Pouls</pm:Label><pm:ModelName>X-1</pm:ModelName>",
       {at(Kind::Inline, 1,
           "the text of 'Label' (Lang 'fr-FR') is given inline, where no catalogue can localize it"),
        at(Kind::Inline, 40, "the text of 'ModelName' is given inline, where no catalogue can localize it")}},
  };
  for (const Case& each : cases) {
    EXPECT_THAT(coverageOf(each.body).findings, testing::ElementsAreArray(each.findings)) << each.body;
  }
}

// A reference is covered only where every use of it is: b's latest version lacks de-DE.
TEST(MdibCoverage, CountsDistinctReferencesNamedAndCoveredAndTheirUses) {
  const CoverageCheck check = coverageOf(
      "<pm:Label Ref='a'/><pm:Label Ref='b'/><pm:Label Ref='b' Version='1'/><pm:Label Ref='a'/>"
      "<pm:Label Ref='c'/><pm:Label>x</pm:Label>");
  EXPECT_EQ(check.referencesNamed, 3u);
  EXPECT_EQ(check.uses, 5u);
  EXPECT_EQ(check.covered, 2u);
}

TEST(MdibCoverage, ReportsReferencesNeverNamedAtTheirFirstKeptText) {
  const std::string body = "<pm:Label Ref='a' Version='1'/><pm:Label Ref='z'/>";
  EXPECT_THAT(coverageOf(body, false).findings,
              testing::ElementsAre(
                  at(Kind::Missing, 32, "the catalogue has no text for reference 'z'"),
                  Finding{Kind::Unused, {"texts.xml", 4, 1}, "reference 'b' is not named by the MDIB"},
                  Finding{Kind::Unused, {"texts.xml", 7, 1}, "reference 'c' is not named by the MDIB"}));
  EXPECT_THAT(coverageOf(body, true).findings, testing::SizeIs(1));
}

// An MDIB given as the catalogue yields no text: one finding says so, not a
// missing one per reference.
TEST(MdibCoverage, ACatalogueWithoutTextsIsOneFindingAtItsFile) {
  const std::string body = "<pm:Label Ref='a'/><pm:Label Ref='b'/><pm:Label Ref='a'/>";
  const auto catalogue = Zalt::Catalogue::readCatalogue(mdib(body), "texts.xml");
  const CoverageCheck check = checkCoverage(readMdibTexts(mdib(body), "mdib.xml"), catalogue,
                                            Zalt::Catalogue::checkCatalogue(catalogue));
  EXPECT_THAT(
      check.findings,
      testing::ElementsAre(Finding{
          Kind::Empty, {"texts.xml", 0, 0}, "no localized text found: an MDIB: use coverage --mdib"}));
  EXPECT_EQ(check.referencesNamed, 2u);
  EXPECT_EQ(check.uses, 3u);
  EXPECT_EQ(check.covered, 0u);
}

}  // namespace
