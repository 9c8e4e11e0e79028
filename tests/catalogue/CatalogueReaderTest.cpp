#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

std::ostream& operator<<(std::ostream& out, const SourceLocation& location) {
  return out << location.file << ':' << location.line << ':' << location.column;
}

std::ostream& operator<<(std::ostream& out, const Finding& finding) { return out << placed(finding); }

}  // namespace Catalogue
}  // namespace Zalt

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::CatalogueText;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::MisplacedElement;
using Zalt::Catalogue::readCatalogue;
using Zalt::Catalogue::SourceLocation;

std::string participant() { return "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant"; }
std::string message() { return "http://standards.ieee.org/downloads/11073/11073-10207-2017/message"; }
std::string open() { return "<c xmlns:pm='" + participant() + "'>\n"; }

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
  const auto texts = readCatalogue(open() + element + "</c>", "one.xml").texts;
  EXPECT_EQ(texts.size(), 1u);
  return texts.at(0);
}

std::vector<Finding> problemsOf(const std::string& content) {
  try {
    readCatalogue(content, "bad.xml");
  } catch (const CatalogueError& error) {
    return error.problems();
  }
  ADD_FAILURE() << "no CatalogueError for: " << content;
  return {};
}

Finding problem(std::int32_t line, std::int32_t column, const std::string& text) {
  return {Finding::Kind::File, {"bad.xml", line, column}, text};
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
      "  <inner xmlns=''><LocalizedText Ref='default-undeclared'/></inner>"
      "</x:Envelope>"
      "<LocalizedText Ref='last'/></root>";
  EXPECT_THAT(
      refs(readCatalogue(document, "a.xml").texts),
      testing::ElementsAre("default-namespace", "response-text", "prefixed", "nested-response", "last"));
}

TEST(CatalogueReader, ReadsAttributesAsXmlNormalisesThem) {
  const CatalogueText full = single(
      "<pm:LocalizedText Ref=' a\tb\r\nc&#9;d&#10;&#13;&quot;' Lang='de-DE' Version=' 18446744073709551615 '"
      " TextWidth='\txxl\n'/>");
  EXPECT_EQ(full.text.ref().get().value(), " a b c\td\n\r\"");
  EXPECT_EQ(full.text.lang()->tag(), "de-DE");
  EXPECT_EQ(full.text.version(), VersionCounter(18446744073709551615u));
  EXPECT_EQ(full.text.textWidth(), LocalizedTextWidth::ExtraExtraLarge);

  const CatalogueText bare = single("<pm:LocalizedText pm:Ref='prefixed attributes are others'/>");
  EXPECT_TRUE(bare.text.ref().get().empty());
  EXPECT_FALSE(bare.text.lang());
  EXPECT_FALSE(bare.text.version());
  EXPECT_FALSE(bare.text.textWidth());
}

TEST(CatalogueReader, TextIsTheCharacterDataWithXmlLineEnds) {
  const std::string element =
      "<pm:LocalizedText> a &lt;&amp;&gt;&apos;&quot; &#x2028;&#128512;<![CDATA[<b>&amp;\r\n]]><!-- not text "
      "-->"
      "\r\nb\rc&#13;\n<x>nested</x>]]</pm:LocalizedText>";
  EXPECT_EQ(single(element).text.text().value(),
            " a <&>'\" \xE2\x80\xA8\xF0\x9F\x98\x80<b>&amp;\n\nb\nc\r\n]]");
  EXPECT_EQ(single("<pm:LocalizedText>  </pm:LocalizedText>").text.text().value(), "  ");
  // Malformed UTF-8 in the content is the store's to reject, not the file's.
  EXPECT_EQ(single("<pm:LocalizedText>Temp\xE9rature</pm:LocalizedText>").text.text().value(),
            "Temp\xE9rature");
}

TEST(CatalogueReader, LocatesEachTextAtItsElement) {
  const std::string document =
      "\xEF\xBB\xBF<c xmlns:pm='" + participant() + "'><pm:LocalizedText/>\r\n" +
      "  <pm:LocalizedText/>\r\xC3\xA4\xC3\xB6<pm:LocalizedText/>\n<pm:LocalizedText\n/></c>";
  const auto texts = readCatalogue(document, "dir/texts.xml").texts;
  ASSERT_EQ(texts.size(), 4u);
  EXPECT_EQ(texts[0].location, (SourceLocation{"dir/texts.xml", 1, 86}));
  EXPECT_EQ(texts[1].location, (SourceLocation{"dir/texts.xml", 2, 3}));
  EXPECT_EQ(texts[2].location, (SourceLocation{"dir/texts.xml", 3, 3}));
  EXPECT_EQ(texts[3].location, (SourceLocation{"dir/texts.xml", 4, 1}));
}

TEST(CatalogueReader, RefusesWhatXmlOrACatalogueDoesNotAllowAtItsPlace) {
  const std::string text = "<pm:LocalizedText Ref='r'>";
  const std::string close = "</pm:LocalizedText></c>";
  const std::string undefined =
      "' is not defined: a catalogue file may use only &amp; &lt; &gt; &apos; &quot;";
  const struct {
    std::string content;
    std::vector<Finding> problems;
  } cases[] = {
      {open() + "<pm:LocalizedText Ref='a' Lang='en' Ref='b'/></c>",
       {problem(2, 37, "attribute 'Ref' appears twice on one element")}},
      {open() + "<e a='1' b='1' c='1' d='1' e='1' f='1' g='1' h='1' i='1' a='2' i='3'/></c>",
       {problem(2, 58, "attribute 'a' appears twice on one element"),
        problem(2, 64, "attribute 'i' appears twice on one element")}},
      {open() + "<e xmlns:a='urn:x' xmlns:b='urn:x' a:k='1' b:k='2'/></c>",
       {problem(2, 44, "attribute 'b:k' is the attribute 'a:k' again")}},
      {open() + text + "a&nbsp;b" + close, {problem(2, 28, "entity '&nbsp;" + undefined)}},
      {open() + "<e k='&x;'/></c>", {problem(2, 7, "entity '&x;" + undefined)}},
      {"<!DOCTYPE c [<!ENTITY x 'y'>]>\n" + open() + text + "&x;" + close,
       {problem(1, 1,
                "a document type declaration is not allowed in a catalogue file (nothing is expanded or "
                "fetched)"),
        problem(3, 27, "entity '&x;" + undefined)}},
      {open() + text + "x&#0;y" + close,
       {problem(2, 28, "character reference '&#0;' is not an XML character")}},
      {open() + "<e k='&#7;'/></c>", {problem(2, 7, "character reference '&#7;' is not an XML character")}},
      {open() + text + "&#xD800;" + close,
       {problem(2, 27, "character reference '&#xD800;' is not an XML character")}},
      {open() + text + "&#xFFFE;" + close,
       {problem(2, 27, "character reference '&#xFFFE;' is not an XML character")}},
      {open() + text + "&#x110000;" + close,
       {problem(2, 27, "character reference '&#x110000;' is not an XML character")}},
      {open() + text + "&#x;&#12a;" + close,
       {problem(2, 27, "malformed character reference '&#x;'"),
        problem(2, 31, "malformed character reference '&#12'")}},
      {open() + text + "\xC3\xA4\x01" + close, {problem(2, 28, "character U+0001 is not allowed in XML")}},
      {open() + "<!-- \xEF\xBF\xBF -->\n</c>", {problem(2, 6, "character U+FFFF is not allowed in XML")}},
      {open() + text + "fish & chips" + close,
       {problem(2, 32, "'&' starts no entity or character reference (write '&amp;')")}},
      {open() + text + "a]]>b" + close,
       {problem(2, 28, "']]>' is not allowed in character data (write ']]&gt;')")}},
      {open() + "<e k='a<b'/></c>",
       {problem(2, 8, "'<' is not allowed in an attribute value (write '&lt;')")}},
      {open() + "<x:e/></c>", {problem(2, 2, "prefix 'x' of 'x:e' has no namespace declaration")}},
      {open() + "<e x:k='1'/></c>", {problem(2, 4, "prefix 'x' of 'x:k' has no namespace declaration")}},
      {open() + "<e xmlns:x='urn:x'/><x:e/></c>",
       {problem(2, 22, "prefix 'x' of 'x:e' has no namespace declaration")}},
      {open() + "<pm:a:b/></c>", {problem(2, 2, "'pm:a:b' is not a name with namespaces (PREFIX:NAME)")}},
      {open() + "<e xmlns:x=''/></c>",
       {problem(2, 4, "'xmlns:x=\"\"' is not a namespace declaration that XML allows")}},
      {open() + "<pm:LocalizedText Ref='\xC3\xA4\xC3'/></c>",
       {problem(2, 25, "Ref '\xC3\xA4\xC3' is not valid UTF-8")}},
      {open() + "<pm:LocalizedText Lang='e\xE9'/></c>", {problem(2, 26, "Lang 'e\xE9' is not valid UTF-8")}},
      {open() + "\n<pm:LocalizedText Version='18446744073709551616'/></c>",
       {problem(3, 28, "Version '18446744073709551616' is not an unsigned 64-bit decimal")}},
      {open() + "<pm:LocalizedText Version='-1'/></c>",
       {problem(2, 28, "Version '-1' is not an unsigned 64-bit decimal")}},
      {open() + "<pm:LocalizedText Version='2a'/></c>",
       {problem(2, 28, "Version '2a' is not an unsigned 64-bit decimal")}},
      {open() + "<pm:LocalizedText Version=''/></c>",
       {problem(2, 28, "Version '' is not an unsigned 64-bit decimal")}},
      {open() + "<pm:LocalizedText TextWidth='M'/></c>",
       {problem(2, 30, "TextWidth 'M' is not one of xs, s, m, l, xl, xxl")}},
      {"<?xml version='1.0' encoding='Shift_JIS'?>\n<c/>",
       {problem(1, 31,
                "encoding 'Shift_JIS' is not supported: a catalogue file is UTF-8, UTF-16 or ISO-8859-1")}},
      {R"(<?xml version="1.0" encoding="windows-1252"?><c/>)",
       {problem(
           1, 31,
           "encoding 'windows-1252' is not supported: a catalogue file is UTF-8, UTF-16 or ISO-8859-1")}},
      {open() + "<pm:LocalizedText>\n</c>", {problem(3, 3, "malformed XML: Start-end tags mismatch")}},
      {"", {problem(1, 1, "malformed XML: No document element found")}},
      // The parser's terminator lands on the last byte, here inside a character.
      {"<c x\xC3\xBF", {problem(1, 6, "malformed XML: Error parsing element attribute")}},
      {"<a/>\n<b/>", {problem(2, 1, "a second root element: a catalogue file has one")}},
      {"<a/>\ntext", {problem(2, 1, "text outside the root element")}},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(problemsOf(each.content), each.problems) << each.content;
  }
}

TEST(CatalogueReader, ReportsEveryProblemOfAFileInDocumentOrder) {
  const std::vector<Finding> problems =
      problemsOf(open() +
                 "<pm:LocalizedText Ref='a' Ref='b' Version='x'>&bad;</pm:LocalizedText>\n"
                 "<y:e/>\x02<pm:LocalizedText TextWidth='huge'/></c>");
  EXPECT_THAT(problems,
              testing::ElementsAre(problem(2, 27, "attribute 'Ref' appears twice on one element"),
                                   testing::Field(&Finding::location, SourceLocation{"bad.xml", 2, 44}),
                                   testing::Field(&Finding::location, SourceLocation{"bad.xml", 2, 47}),
                                   testing::Field(&Finding::location, SourceLocation{"bad.xml", 3, 2}),
                                   testing::Field(&Finding::location, SourceLocation{"bad.xml", 3, 7}),
                                   testing::Field(&Finding::location, SourceLocation{"bad.xml", 3, 37})));
  try {
    readCatalogue(open() + "<e a='&x;' b='&y;'/></c>", "bad.xml");
  } catch (const CatalogueError& error) {
    EXPECT_THAT(error.what(), testing::StartsWith("bad.xml:2:7: entity '&x;' is not defined"));
    EXPECT_THAT(error.what(), testing::EndsWith(" (and 1 more problem)"));
    EXPECT_THAT(error.file(), testing::EndsWith("Catalogue/ReadCatalogue.cpp"));
  }
  // Past its first error, malformed XML is not known; the characters before are.
  EXPECT_THAT(problemsOf(open() + "<e k='&x;'/>\x01<e>\x01</c>\x01"),
              testing::ElementsAre(testing::Field(&Finding::location, SourceLocation{"bad.xml", 2, 13}),
                                   testing::Field(&Finding::location, SourceLocation{"bad.xml", 2, 17}),
                                   problem(2, 20, "malformed XML: Start-end tags mismatch")));
}

struct Outcome {
  std::vector<CatalogueText> texts;
  std::vector<Finding> problems;
};

Outcome outcomeOf(const std::string& content) {
  try {
    return {readCatalogue(content, "f.xml").texts, {}};
  } catch (const CatalogueError& error) {
    return {{}, error.problems()};
  }
}

// Each code point of `utf8` (at most U+FFFF, or a four-byte sequence) in
// UTF-16 with a byte-order mark.
std::string utf16(const std::string& utf8, bool bigEndian) {
  std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  const auto put = [&](char32_t unit) {
    const char high = static_cast<char>(unit >> 8U);
    const char low = static_cast<char>(unit & 0xFFU);
    bytes += bigEndian ? std::string{high, low} : std::string{low, high};
  };
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t codePoint = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k) {
      codePoint = codePoint << 6U | (static_cast<unsigned char>(utf8[i + k]) & 0x3FU);
    }
    if (codePoint >= 0x10000) {
      put(0xD800 + ((codePoint - 0x10000) >> 10U));
      put(0xDC00 + ((codePoint - 0x10000) & 0x3FFU));
    } else {
      put(codePoint);
    }
    i += length;
  }
  return bytes;
}

// `utf8` whose non-ASCII characters are all Latin-1, in ISO-8859-1.
std::string latin1(const std::string& utf8) {
  std::string bytes;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    bytes += lead < 0x80
                 ? utf8[i]
                 : static_cast<char>((lead & 0x3U) << 6U | (static_cast<unsigned char>(utf8[++i]) & 0x3FU));
  }
  return bytes;
}

TEST(CatalogueReader, ReadsEachEncodingAsItsUtf8Twin) {
  const std::string body =
      "<c xmlns:pm='" + participant() +
      "'>\r\n"
      "<pm:LocalizedText Ref='gr\xC3\xBC\xC3\x9F' Lang='de-DE'>\xC2\xBD \xC3\xBF</pm:LocalizedText>"
      "\xC3\xA4<pm:LocalizedText Ref='\xC3\xA9'>&#xE9;\r</pm:LocalizedText></c>";
  const std::string withBadVersion =
      "<c xmlns='" + participant() + "'>\n\xC3\xA4\xC3\xB6<e/><LocalizedText Version='x\xC3\xA4'/></c>";
  const std::string beyondLatin1 =
      "<c xmlns='" + participant() + "'>\n\xE2\x82\xAC<LocalizedText>\xF0\x9F\x98\x80</LocalizedText></c>";
  // As long as the Latin-1 declarations, so that all places are the same.
  const std::string utf8Declaration = "<?xml version='1.0' encoding='UTF-8'     ?>";
  const struct {
    std::string twin;
    std::string file;
  } cases[] = {
      {body, "\xEF\xBB\xBF" + body},
      {body, utf16(body, false)},
      {body, utf16(body, true)},
      {withBadVersion, utf16(withBadVersion, false)},
      {beyondLatin1, utf16(beyondLatin1, true)},
      {"<?xml version='1.0' encoding='UTF-8'?>" + body,
       utf16("<?xml version='1.0' encoding='UTF-16'?>" + body, false)},
      {utf8Declaration + body, latin1("<?xml version='1.0' encoding='ISO-8859-1'?>" + body)},
      {utf8Declaration + body, latin1("<?xml version='1.0' encoding=\"latin1\"    ?>" + body)},
      {utf8Declaration + withBadVersion,
       latin1("<?xml version='1.0' encoding='iso-8859-1'?>" + withBadVersion)},
  };
  for (const auto& each : cases) {
    const Outcome twin = outcomeOf(each.twin);
    const Outcome file = outcomeOf(each.file);
    EXPECT_EQ(file.problems, twin.problems) << each.twin;
    ASSERT_EQ(file.texts.size(), twin.texts.size()) << each.twin;
    EXPECT_TRUE(twin.texts.size() + twin.problems.size() > 0) << each.twin;
    for (std::size_t i = 0; i < twin.texts.size(); ++i) {
      EXPECT_EQ(file.texts[i].text, twin.texts[i].text) << each.twin;
      EXPECT_EQ(file.texts[i].location, twin.texts[i].location) << each.twin;
    }
  }
  EXPECT_THAT(problemsOf(std::string("\xFF\xFE<\0c\0>\0\n\0\xA4\0\x00\xD8<\0/\0c\0>\0", 22)),
              testing::ElementsAre(problem(2, 2, "unpaired UTF-16 surrogate U+D800")));
}

TEST(CatalogueReader, ReadsAnyDepthOfNesting) {
  // Quadratic work at this depth would take minutes.
  const std::size_t depth = 100000;
  std::string document;
  for (std::size_t level = 0; level < depth; ++level) {
    document += "<e xmlns:p" + std::to_string(level % 3) + "='" + participant() + "'><p" +
                std::to_string(level % 3) + ":LocalizedText Ref='" + std::to_string(level) + "'/>\n";
  }
  for (std::size_t level = 0; level < depth; ++level) {
    document += "</e>";
  }
  const auto texts = readCatalogue(std::move(document), "deep.xml").texts;
  ASSERT_EQ(texts.size(), depth);
  EXPECT_EQ(texts.back().text.ref().get().value(), std::to_string(depth - 1));
  EXPECT_EQ(texts.back().location, (SourceLocation{"deep.xml", static_cast<std::int32_t>(depth), 86}));
}

TEST(CatalogueReader, NamesTheFirstTextLikeElementOfEachOtherNamespace) {
  const std::string document = "<c xmlns:pm='" + participant() + "' xmlns:m='" + message() +
                               "' xmlns:x='urn:x'>\n"
                               "<LocalizedText/><x:LocalizedText/><LocalizedText/>\n"
                               "<x:e xmlns='urn:x'><LocalizedText/><Text/></x:e>\n"
                               "<m:Text/><pm:Text/><m:LocalizedText/><pm:LocalizedText Ref='read'/></c>";
  const auto catalogue = readCatalogue(document, "m.xml");
  EXPECT_THAT(refs(catalogue.texts), testing::ElementsAre("read"));
  EXPECT_EQ(catalogue.files, std::vector<std::string>{"m.xml"});
  const auto is = [](std::int32_t line, std::int32_t column, const std::string& name,
                     const std::string& uri) {
    return testing::AllOf(testing::Field(&MisplacedElement::location, SourceLocation{"m.xml", line, column}),
                          testing::Field(&MisplacedElement::name, name),
                          testing::Field(&MisplacedElement::xmlNamespace, uri));
  };
  EXPECT_THAT(catalogue.misplaced,
              testing::ElementsAre(is(2, 1, "LocalizedText", ""), is(2, 17, "LocalizedText", "urn:x"),
                                   is(3, 36, "Text", "urn:x"), is(4, 10, "Text", participant()),
                                   is(4, 20, "LocalizedText", message())));
}

TEST(CatalogueReader, ReadsBackWhatItWrites) {
  const std::vector<LocalizedText> texts = {
      LocalizedText(Utf8("line\r\nbreaks\rand\ttabs \"quoted\" 'x' <b> & ]]> \xC3\xA4\xF0\x9F\x98\x80 &amp;"),
                    LanguageTag("de-DE"), LocalizedTextRef(Utf8(" a\tb\nc\r\"'<&>")), VersionCounter(7),
                    LocalizedTextWidth::ExtraSmall),
      LocalizedText(Utf8(""), boost::none, LocalizedTextRef(Utf8("")), boost::none, boost::none),
      LocalizedText(Utf8("Temp\xE9rature"), LanguageTag("fr-FR"), LocalizedTextRef(Utf8("t")), boost::none,
                    boost::none),
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
  EXPECT_THROW(Zalt::Catalogue::writeCatalogue({LocalizedText(Utf8("t"), LanguageTag("e\xE9"),
                                                              LocalizedTextRef(), boost::none, boost::none)}),
               std::invalid_argument);
}

TEST(CatalogueReader, ReportsAFileThatCannotBeRead) {
  const std::pair<std::string, std::string> cases[] = {
      {"no/such/catalogue.xml", "no/such/catalogue.xml: cannot be read: No such file or directory"},
      {ZALT_CATALOGUE_EXAMPLES_DIR, ZALT_CATALOGUE_EXAMPLES_DIR ": cannot be read: Is a directory"},
  };
  for (const auto& each : cases) {
    try {
      Zalt::Catalogue::readCatalogueFile(each.first);
      ADD_FAILURE() << "read " << each.first;
    } catch (const CatalogueError& error) {
      EXPECT_EQ(error.what(), each.second);
      EXPECT_EQ(error.problems().at(0).location, (SourceLocation{each.first, 0, 0}));
    }
  }
}

}  // namespace
