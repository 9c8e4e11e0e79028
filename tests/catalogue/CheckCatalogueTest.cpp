#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Zalt::Catalogue::Catalogue;
using Zalt::Catalogue::checkCatalogue;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::mdibTexts;
using Zalt::Localization::Device::LocalizedTextStore;

// One text per line, from line 2 on, so that a text's line is its index + 2.
Catalogue catalogue(const std::vector<std::string>& elements) {
  std::string document = "<c xmlns='" + CatalogueTestSupport::participant() + "'>\n";
  for (const std::string& element : elements) {
    document += element + "\n";
  }
  return Zalt::Catalogue::readCatalogue(document + "</c>", "c.xml");
}

std::string text(const std::string& ref, const std::string& lang, const std::string& more = "") {
  return "<LocalizedText Ref='" + ref + "' Lang='" + lang + "' Version='1' " + more + ">" + ref +
         "</LocalizedText>";
}

std::vector<std::string> shown(const std::vector<Finding>& findings) {
  std::vector<std::string> lines;
  lines.reserve(findings.size());
  for (const Finding& finding : findings) {
    lines.push_back(std::to_string(finding.location.line) + " " + name(finding.kind) + ": " +
                    finding.message);
  }
  return lines;
}

TEST(CatalogueCheck, ACatalogueWithoutFindingsLoadsInOneAdd) {
  const auto texts = catalogue({text("a", "de-DE"), text("a", "en-US"), text("a", "en-US", "TextWidth='s'"),
                                text("b", "en-US"), text("b", "de-DE")});
  const auto check = checkCatalogue(texts);
  EXPECT_THAT(shown(check.findings), testing::IsEmpty());
  EXPECT_THAT(check.kept, testing::ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(check.keyOrder, testing::ElementsAre(0, 1, 2, 4, 3));
  const std::vector<Tovra::Mdib::LocalizedText> all = mdibTexts(texts.texts);
  EXPECT_EQ(Zalt::Catalogue::keptTexts(texts, check),
            (std::vector<Tovra::Mdib::LocalizedText>{all[0], all[1], all[2], all[4], all[3]}));
  EXPECT_NO_THROW(LocalizedTextStore::createLocalizedTextStore()->add(mdibTexts(texts.texts)));
}

TEST(CatalogueCheck, ReportsEveryProblemAtItsTextInCatalogueOrder) {
  auto texts = catalogue({
      text("a", "de-DE"),
      text("a", "en-US"),
      "<LocalizedText Lang='en-US' Version='1'/>",
      text("b", "de-DE"),
      text("a", "de-DE"),
      "<LocalizedText Ref='c' Lang='de-DE'/>",
      text("b", "de"),
      text("a", "de-DE", "TextWidth='s'") + text("a", "de-DE", "TextWidth='s'"),
      "<LocalizedText Ref='d' Lang='en-US' Version='1'>d</LocalizedText>",
      text("c", "en-US") + text("c", "de-DE") + text("c", "it-IT"),
  });
  // Texts made in memory may hold what no file can.
  for (Zalt::Catalogue::CatalogueText& each : texts.texts) {
    if (each.text.ref().get().value() == "d") {
      each.text = Tovra::Mdib::LocalizedText(Tovra::Locale::Utf8("\xC3"), each.text.lang(), each.text.ref(),
                                             each.text.version(), each.text.textWidth());
    }
  }
  const auto check = checkCatalogue(texts);
  EXPECT_THAT(
      shown(check.findings),
      testing::ElementsAre(
          "4 rejected: Cannot add localized text without reference",
          "5 languages: reference 'b' version 1 lacks en-US, which the other references have",
          "6 dropped: dropped: the text at c.xml:2 has the same reference, language, version, width and "
          "number of lines",
          "7 rejected: Cannot add localized text without version",
          "8 rejected: Invalid language tag (expected ll-CC (language + country), like 'en-US'), got: de",
          "9 dropped: dropped: the text at c.xml:9 has the same reference, language, version, width and "
          "number of lines",
          "10 rejected: Invalid UTF-8 sequence encountered while trying to encode UTF-32 character",
          "11 languages: reference 'c' version 1 has it-IT, which the other references lack",
          "5 inconsistent: (ref: b, ver:1) has inconsistent languages <de-DE> in relation to (ref: a, ver:1) "
          "with <de-DE,en-US>"));
  EXPECT_EQ(check.kept.size(), 7u);

  try {
    LocalizedTextStore::createLocalizedTextStore()->add(Zalt::Catalogue::keptTexts(texts, check));
    FAIL() << "a store took inconsistent languages";
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    EXPECT_EQ(check.findings.back().message, failure.what());
  }
}

TEST(CatalogueCheck, NamesBothTheMissingAndTheExtraLanguagesOfOneReference) {
  const auto check = checkCatalogue(catalogue({text("a", "de-DE"), text("a", "en-US"), text("b", "de-DE"),
                                               text("b", "en-US"), text("c", "de-DE"), text("c", "en-us")}));
  ASSERT_EQ(check.findings.size(), 2u);
  EXPECT_EQ(check.findings[0].message,
            "reference 'c' version 1 lacks en-US, which the other references have, and has en-us, which they "
            "lack");
  EXPECT_EQ(check.findings[0].location.line, 6);
  EXPECT_EQ(check.findings[1].kind, Finding::Kind::Inconsistent);

  // Half of the references is enough to expect a language: a missing one is the likelier mistake.
  EXPECT_EQ(checkCatalogue(catalogue({text("a", "de-DE"), text("a", "en-US"), text("b", "de-DE")}))
                .findings.at(0)
                .message,
            "reference 'b' version 1 lacks en-US, which the other references have");
}

TEST(CatalogueCheck, ACatalogueWithoutTextsIsAFindingThatPointsAtMisplacedElements) {
  Catalogue nothing;
  nothing.files = {"a.xml", "b.xml"};
  const auto bare = checkCatalogue(nothing);
  ASSERT_EQ(bare.findings.size(), 1u);
  EXPECT_EQ(bare.findings[0].kind, Finding::Kind::Empty);
  EXPECT_EQ(bare.findings[0].location, (Zalt::Catalogue::SourceLocation{"a.xml", 0, 0}));
  EXPECT_THAT(bare.findings[0].message, testing::HasSubstr("11073-10207-2017/participant'"));

  Catalogue misplaced = nothing;
  misplaced.misplaced = {{{"a.xml", 2, 3}, "LocalizedText", "urn:typo"}, {{"b.xml", 5, 1}, "Text", ""}};
  EXPECT_THAT(
      shown(checkCatalogue(misplaced).findings),
      testing::ElementsAre(testing::MatchesRegex("2 empty: .*LocalizedText is in the namespace "
                                                 "'urn:typo', not in .*11073-10207-2017/participant'"),
                           testing::MatchesRegex("5 empty: .*Text is in no namespace, "
                                                 "not in .*11073-10207-2017/message'")));

  Catalogue someText = catalogue({text("a", "de-DE")});
  someText.misplaced = misplaced.misplaced;
  EXPECT_THAT(checkCatalogue(someText).findings, testing::IsEmpty());
}

TEST(CatalogueCheck, ReportsKeptTextsDeclaredNarrowerThanTheyMeasure) {
  const std::string fiveWide = "\xE5\xBF\x83\xE6\x8B\x8D\xE6\x95\xB0\xE9\xAB\x98\xE3\x81\x84";
  const auto sized = [](const std::string& ref, const std::string& width, const std::string& content) {
    return "<LocalizedText " + ref + " Lang='de-DE' Version='1' " + width + ">" + content +
           "</LocalizedText>";
  };
  const std::string twoLines = "ab&#10;abcdefghijklmnopq";
  const auto texts = catalogue({
      sized("Ref='a'", "TextWidth='xs'", "abcdefgh"),
      sized("Ref='b'", "TextWidth='s'", twoLines),
      sized("Ref='b'", "TextWidth='s'", twoLines),
      sized("Ref='c'", "", "abcdefghijklmnopqrstuvwxyz"),
      sized("Ref='d'", "TextWidth='xs'", fiveWide),
      sized("", "TextWidth='xs'", "abcdefghijklmnopqrstuvwxyz"),
  });
  EXPECT_THAT(
      shown(checkCatalogue(texts).findings),
      testing::ElementsAre("3 width: TextWidth 's' holds at most 8 fullwidth characters a line, but line 2 "
                           "is 9 wide and needs 'm'",
                           "4 dropped: dropped: the text at c.xml:3 has the same reference, language, "
                           "version, width and number of lines",
                           "6 width: TextWidth 'xs' holds at most 4 fullwidth characters a line, but line 1 "
                           "is 5 wide and needs 's'",
                           "7 rejected: Cannot add localized text without reference"));
  EXPECT_EQ(checkCatalogue(texts, Zalt::Catalogue::WidthUnit::Characters).findings.at(0).message,
            "TextWidth 'xs' holds at most 4 characters a line, but line 1 is 8 wide and needs 's'");
}

TEST(CatalogueCheck, ReportsControlCharactersInEveryKeptTextWhateverItsWidth) {
  const auto german = [](const std::string& ref, const std::string& width, const std::string& content) {
    return "<LocalizedText Ref='" + ref + "' Lang='de-DE' Version='1' " + width + ">" + content +
           "</LocalizedText>";
  };
  const auto texts = catalogue({
      german("a", "", "Alarm&#9;aus"),
      german("a", "", "Alarm&#9;stumm"),
      german("b", "TextWidth='xs'", "HF&#10;hoch&#x7F;und mehr"),
      german("c", "TextWidth='xl'", "SpO2&#x85;&#x9F;"),
      german("d", "", "SpO2&#x85;tief"),
  });
  EXPECT_THAT(
      shown(checkCatalogue(texts).findings),
      testing::ElementsAre(
          "2 width: line 1 holds U+0009, a control character that a display cannot place",
          "3 dropped: dropped: the text at c.xml:2 has the same reference, language, version, width and "
          "number of lines",
          "4 width: line 2 holds U+007F, a control character that a display cannot place",
          "4 width: TextWidth 'xs' holds at most 4 fullwidth characters a line, but line 2 is 6 wide and "
          "needs 's'",
          "5 width: line 2 holds U+009F, a control character that a display cannot place"));
}

TEST(CatalogueCheck, AFileWithoutTextsAmongOthersIsAFindingThatTellsWhatTheFileIs) {
  const std::string pm = "xmlns:pm='" + CatalogueTestSupport::participant() + "'";
  const std::string msg = "xmlns:msg='" + CatalogueTestSupport::message() + "'";
  const std::vector<std::pair<std::string, std::string>> files = {
      {"texts.xml",
       "<c " + pm + "><pm:LocalizedText Ref='a' Lang='en-US' Version='1'>A</pm:LocalizedText></c>"},
      {"de.xlf", "<xliff version='1.2' xmlns='urn:oasis:names:tc:xliff:document:1.2'><file/></xliff>"},
      {"response.xml", "<msg:GetMdibResponse " + msg + "/>"},
      {"mdib.xml", "<pm:Mdib " + pm + "><pm:MdDescription/></pm:Mdib>"},
      {"typo.xml", "<c>\n<LocalizedText xmlns='urn:typo' Ref='b'/></c>"},
      {"written.xml", "<pm:LocalizedTexts " + pm + "/>"},
      {"reply.xml", "<msg:GetLocalizedTextResponse " + msg + "/>"},
  };
  Catalogue all;
  for (const auto& [name, content] : files) {
    all.append(Zalt::Catalogue::readCatalogue(content, name));
  }
  const std::string noText = "no localized text found: ";
  const std::string namespaces =
      "texts are LocalizedText elements of '" + CatalogueTestSupport::participant();
  std::vector<std::string> placed;
  for (const Finding& finding : checkCatalogue(all).findings) {
    placed.push_back(std::string(name(finding.kind)) + ' ' + Zalt::Catalogue::placed(finding));
  }
  EXPECT_THAT(placed,
              testing::ElementsAre("empty de.xlf: " + noText + "an XLIFF file: use xliff import",
                                   "empty response.xml: " + noText + "an MDIB: use coverage --mdib",
                                   "empty mdib.xml: " + noText + "an MDIB: use coverage --mdib",
                                   testing::StartsWith("empty typo.xml:2:1: " + noText +
                                                       "this LocalizedText is in the namespace 'urn:typo'"),
                                   testing::StartsWith("empty written.xml: " + noText + namespaces),
                                   testing::StartsWith("empty reply.xml: " + noText + namespaces)));

  // Without any text, the first file's kind is the one finding.
  const auto alone = checkCatalogue(Zalt::Catalogue::readCatalogue(files[1].second, "de.xlf")).findings;
  EXPECT_THAT(alone,
              testing::ElementsAre(Finding{
                  Finding::Kind::Empty, {"de.xlf", 0, 0}, noText + "an XLIFF file: use xliff import"}));
}

}  // namespace
