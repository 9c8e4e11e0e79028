#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::CatalogueText;
using Zalt::Catalogue::readCatalogue;
using Zalt::Catalogue::SourceLocation;

std::string participant() { return "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant"; }
std::string message() { return "http://standards.ieee.org/downloads/11073/11073-10207-2017/message"; }

std::vector<std::string> refs(const std::vector<CatalogueText>& texts) {
  std::vector<std::string> result;
  result.reserve(texts.size());
  for (const CatalogueText& entry : texts) {
    result.push_back(entry.text.ref().get().value());
  }
  return result;
}

// The text of the one element in `element`, read from a document around it.
CatalogueText single(const std::string& element) {
  const auto texts =
      readCatalogue("<c xmlns:pm='" + participant() + "'>" + element + "</c>", "one.xml").texts;
  EXPECT_EQ(texts.size(), 1u);
  return texts.at(0);
}

CatalogueError errorOf(const std::string& content) {
  try {
    readCatalogue(content, "bad.xml");
  } catch (const CatalogueError& error) {
    return error;
  }
  ADD_FAILURE() << "no CatalogueError for: " << content;
  return CatalogueError({Zalt::Catalogue::Finding{Zalt::Catalogue::Finding::Kind::File, {"", 0, 0}, ""}}, "",
                        0);
}

TEST(CatalogueReader, FindsBothElementFormsInDocumentOrderWhateverThePrefix) {
  const std::string document =
      "<root xmlns='" + participant() + "' xmlns:m='" + message() +
      "'>"
      "<LocalizedText Ref='default-namespace'/>"
      "<m:GetLocalizedTextResponse><m:Text Ref='response-text'/>"
      "  <m:Other><m:Text Ref='not-a-child-of-the-response'/></m:Other></m:GetLocalizedTextResponse>"
      "<x:Envelope xmlns:x='urn:other' xmlns:pm='" +
      participant() +
      "'>"
      "  <pm:LocalizedText Ref='prefixed'/>"
      "  <x:LocalizedText Ref='other-namespace'/>"
      "  <msg:GetLocalizedTextResponse xmlns:msg='" +
      message() +
      "'><msg:Text Ref='nested-response'/>"
      "  </msg:GetLocalizedTextResponse>"
      "  <pm:GetLocalizedTextResponse><pm:Text Ref='participant-response'/></pm:GetLocalizedTextResponse>"
      "  <inner xmlns='urn:other'><LocalizedText Ref='default-redeclared'/></inner>"
      "</x:Envelope>"
      "<LocalizedText Ref='last'/></root>";
  EXPECT_THAT(
      refs(readCatalogue(document, "a.xml").texts),
      testing::ElementsAre("default-namespace", "response-text", "prefixed", "nested-response", "last"));
}

TEST(CatalogueReader, ReadsAttributesAndLeavesMissingOnesToTheStore) {
  const CatalogueText full =
      single("<pm:LocalizedText Ref='hr' Lang='de-DE' Version=' 18446744073709551615 ' TextWidth='xxl'/>");
  EXPECT_EQ(full.text.ref().get().value(), "hr");
  EXPECT_EQ(full.text.lang()->tag(), "de-DE");
  EXPECT_EQ(full.text.version(), VersionCounter(18446744073709551615u));
  EXPECT_EQ(full.text.textWidth(), LocalizedTextWidth::ExtraExtraLarge);

  const CatalogueText bare = single("<pm:LocalizedText pm:Ref='prefixed attributes are others'/>");
  EXPECT_TRUE(bare.text.ref().get().empty());
  EXPECT_FALSE(bare.text.lang());
  EXPECT_FALSE(bare.text.version());
  EXPECT_FALSE(bare.text.textWidth());

  const std::pair<const char*, LocalizedTextWidth> widths[] = {{"xs", LocalizedTextWidth::ExtraSmall},
                                                               {"s", LocalizedTextWidth::Small},
                                                               {"m", LocalizedTextWidth::Medium},
                                                               {"l", LocalizedTextWidth::Large},
                                                               {"xl", LocalizedTextWidth::ExtraLarge}};
  for (const auto& width : widths) {
    EXPECT_EQ(single(std::string("<pm:LocalizedText TextWidth='") + width.first + "'/>").text.textWidth(),
              width.second);
  }
}

TEST(CatalogueReader, TextIsTheCharacterDataWithXmlLineEnds) {
  const std::string element =
      "<pm:LocalizedText> a &lt;&amp;&gt; &#x2028;<![CDATA[<b>&amp;\r\n]]><!-- not text -->\r\nb\rc&#13;\n"
      "</pm:LocalizedText>";
  EXPECT_EQ(single(element).text.text().value(), " a <&> \xE2\x80\xA8<b>&amp;\n\nb\nc\r\n");
  EXPECT_EQ(single("<pm:LocalizedText>  </pm:LocalizedText>").text.text().value(), "  ");
}

TEST(CatalogueReader, LocatesEachTextAtItsElement) {
  const std::string document = "<c xmlns:pm='" + participant() + "'>\r\n  <pm:LocalizedText/>\r" +
                               "\xC3\xA4\xC3\xB6<pm:LocalizedText/>\n<pm:LocalizedText\n/></c>";
  const auto texts = readCatalogue(document, "dir/texts.xml").texts;
  ASSERT_EQ(texts.size(), 3u);
  EXPECT_EQ(texts[0].location, (SourceLocation{"dir/texts.xml", 2, 3}));
  EXPECT_EQ(texts[1].location, (SourceLocation{"dir/texts.xml", 3, 3}));
  EXPECT_EQ(texts[2].location, (SourceLocation{"dir/texts.xml", 4, 1}));
}

TEST(CatalogueReader, ReportsEachProblemOfTheFileAtItsLine) {
  const std::string open = "<c xmlns:pm='" + participant() + "'>\n";
  const struct {
    std::string content;
    std::int32_t line;
    std::string problem;
  } cases[] = {
      {open + "<pm:LocalizedText>\n</c>", 3, "malformed XML: Start-end tags mismatch"},
      {"", 1, "malformed XML: No document element found"},
      {open + "\n<pm:LocalizedText Version='18446744073709551616'/></c>", 3,
       "Version '18446744073709551616' is not an unsigned 64-bit decimal"},
      {open + "<pm:LocalizedText Version='-1'/></c>", 2, "Version '-1' is not an unsigned 64-bit decimal"},
      {open + "<pm:LocalizedText Version='2a'/></c>", 2, "Version '2a' is not an unsigned 64-bit decimal"},
      {open + "<pm:LocalizedText Version=''/></c>", 2, "Version '' is not an unsigned 64-bit decimal"},
      {open + "<pm:LocalizedText TextWidth='M'/></c>", 2, "TextWidth 'M' is not one of xs, s, m, l, xl, xxl"},
  };
  for (const auto& each : cases) {
    const CatalogueError error = errorOf(each.content);
    ASSERT_EQ(error.problems().size(), 1u);
    EXPECT_EQ(error.problems()[0].message, each.problem);
    EXPECT_EQ(error.problems()[0].location.line, each.line) << each.problem;
    EXPECT_EQ(error.problems()[0].location.file, "bad.xml");
  }
  const CatalogueError copy = errorOf(open + "<pm:LocalizedText TextWidth='wide'/></c>");
  EXPECT_STREQ(copy.what(), "bad.xml:2:1: TextWidth 'wide' is not one of xs, s, m, l, xl, xxl");
  EXPECT_EQ(copy.problems()[0].location.column, 1);
  EXPECT_THAT(copy.file(), testing::EndsWith("Catalogue/ReadCatalogue.cpp"));
}

TEST(CatalogueReader, ReportsAFileThatCannotBeRead) {
  try {
    Zalt::Catalogue::readCatalogueFile("no/such/catalogue.xml");
    FAIL() << "read a file that does not exist";
  } catch (const Zalt::Exception& error) {
    EXPECT_STREQ(error.what(), "no/such/catalogue.xml: cannot be read: No such file or directory");
  }
}

}  // namespace
