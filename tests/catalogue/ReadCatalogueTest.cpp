#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/ReadCatalogue.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace CatalogueTestSupport;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::CatalogueText;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::MisplacedElement;
using Zalt::Catalogue::readCatalogue;
using Zalt::Catalogue::SourceLocation;

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
  return problemsReading(readCatalogue, content, "bad.xml");
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
      "<pm:LocalizedText> a &lt;&amp;&gt;&apos;&quot; &#x2028;&#128512;<![CDATA[<b>&amp;\r\n\r]]><!-- not "
      "text "
      "-->"
      "\r\nb\r\nc&#13;\n]]</pm:LocalizedText>";
  EXPECT_EQ(single(element).text.text().value(),
            " a <&>'\" \xE2\x80\xA8\xF0\x9F\x98\x80<b>&amp;\n\n\nb\nc\r\n]]");
  EXPECT_EQ(single("<pm:LocalizedText>  </pm:LocalizedText>").text.text().value(), "  ");
  EXPECT_EQ(single("<pm:LocalizedText Ref='a&amp;b&#38;c&lt;'/>").text.ref().get().value(), "a&b&c<");
}

TEST(CatalogueReader, LocatesEachTextAtItsElement) {
  const std::string document = "\xEF\xBB\xBF<c xmlns:pm='" + participant() + "'><pm:LocalizedText/>\r\n" +
                               "  <pm:LocalizedText/>\n\xC3\xA4\xC3\xB6<pm:LocalizedText "
                               "Ref='\xC3\xA9'/>\n\xC3\xA4<pm:LocalizedText\n/>  "
                               "<pm:LocalizedText\n  Ref='x'\r\n/></c>";
  const auto catalogue = readCatalogue(document, "dir/texts.xml");
  ASSERT_EQ(catalogue.texts.size(), 5u);
  const auto at = [&](std::size_t index) { return catalogue.location(catalogue.texts.at(index)); };
  EXPECT_EQ(at(0), (SourceLocation{"dir/texts.xml", 1, 86}));
  EXPECT_EQ(at(1), (SourceLocation{"dir/texts.xml", 2, 3}));
  EXPECT_EQ(at(2), (SourceLocation{"dir/texts.xml", 3, 3}));
  EXPECT_EQ(at(3), (SourceLocation{"dir/texts.xml", 4, 2}));
  EXPECT_EQ(at(4), (SourceLocation{"dir/texts.xml", 5, 5}));
  // A start tag over several lines at the very start, after a byte-order mark.
  const auto first =
      readCatalogue("\xEF\xBB\xBF<pm:LocalizedText xmlns:pm='" + participant() + "'\n/>", "b.xml");
  EXPECT_EQ(first.location(first.texts.at(0)), (SourceLocation{"b.xml", 1, 1}));
}

// One case per family of what XML 1.0 with namespaces forbids, and what a
// catalogue file may not hold; each stops the file at the parser's place.
TEST(CatalogueReader, RefusesWhatXmlOrACatalogueDoesNotAllowAtItsPlace) {
  const std::string text = "<pm:LocalizedText Ref='r'>";
  const std::string close = "</pm:LocalizedText></c>";
  const std::string doctype =
      "a document type declaration is not allowed in a catalogue file (nothing is expanded or fetched)";
  const std::string encoding =
      "' is not supported: a catalogue file is UTF-8, UTF-16, ISO-8859-1 or US-ASCII";
  const struct {
    std::string content;
    std::int32_t line;
    std::int32_t column;
    std::string message;
  } cases[] = {
      {open() + "<pm:LocalizedText Ref='a' Lang='en' Ref='b'/></c>", 2, 44,
       "malformed XML: Attribute Ref redefined"},
      {open() + "<e xmlns:a='urn:x' xmlns:b='urn:x' a:k='1' b:k='2'/></c>", 2, 51,
       "malformed XML: Namespaced Attribute k in 'urn:x' redefined"},
      {open() + text + "a&nbsp;b" + close, 2, 34, "malformed XML: Entity 'nbsp' not defined"},
      {open() + "<e k='&x;'/></c>", 2, 10, "malformed XML: Entity 'x' not defined"},
      {"<!DOCTYPE c [<!ENTITY x 'y'>]>\n" + open() + text + "&x;" + close, 1, 1, doctype},
      {"<?xml version='1.0'?>\n <!DOCTYPE c SYSTEM 'http://example.invalid/c.dtd'><c/>", 2, 2, doctype},
      {open() + text + "x&#0;y" + close, 2, 32, "malformed XML: xmlParseCharRef: invalid xmlChar value 0"},
      {open() + text + "&#xD800;" + close, 2, 35,
       "malformed XML: xmlParseCharRef: invalid xmlChar value 55296"},
      {open() + text + "&#xFFFE;" + close, 2, 35,
       "malformed XML: xmlParseCharRef: invalid xmlChar value 65534"},
      {open() + text + "\xC3\xA4\x01" + close, 2, 28, "malformed XML: PCDATA invalid Char value 1"},
      {open() + "<!-- \xEF\xBF\xBF -->\n</c>", 2, 6, "malformed XML: Char 0xFFFF out of allowed range"},
      {open() + text + "fish & chips" + close, 2, 33, "malformed XML: xmlParseEntityRef: no name"},
      {open() + text + "a]]>b" + close, 2, 28, "malformed XML: Sequence ']]>' not allowed in content"},
      {open() + "<e k='a<b'/></c>", 2, 8, "malformed XML: Unescaped '<' not allowed in attributes values"},
      {open() + "<e xmlns:x='urn:x'/><x:e/></c>", 2, 25,
       "malformed XML: Namespace prefix x on e is not defined"},
      {open() + "<e x:k='1'/></c>", 2, 11, "malformed XML: Namespace prefix x for k on e is not defined"},
      {open() + "<pm:a:b/></c>", 2, 6, "malformed XML: Failed to parse QName 'pm:a:'"},
      {open() + "<e xmlns:x=''/></c>", 2, 14, "malformed XML: xmlns:x: Empty XML namespace is not allowed"},
      {open() + text + "Temp\xE9rature" + close, 2, 31,
       "malformed XML: Input is not proper UTF-8, indicate encoding ! Bytes: 0xE9 0x72 0x61 0x74"},
      {open() + text + "\xED\xA0\x80" + close, 2, 27, "malformed XML: Char 0xD800 out of allowed range"},
      {open() + text + "<![CDATA[x\xC1\xB8]]>" + close, 2, 36,
       "malformed XML: a CDATA section holds what is not UTF-8"},
      {open() + "<!-- a -- b --></c>", 2, 8, "malformed XML: Double hyphen within comment"},
      {" <?xml version='1.0'?><c/>", 1, 7,
       "malformed XML: XML declaration allowed only at the start of the document"},
      {open() + "<?XmL x?></c>", 2, 6, "malformed XML: Invalid PI name"},
      {"<![CDATA[x]]><c/>", 1, 2, "malformed XML: StartTag: invalid element name"},
      {"<c>\n<\xCC\x81"
       "a/></c>",
       2, 2, "malformed XML: StartTag: invalid element name"},
      {"<a/>\n<b/>", 2, 1, "malformed XML: Extra content at the end of the document"},
      {open() + text + "\n</c>", 3, 5,
       "malformed XML: Opening and ending tag mismatch: LocalizedText line 2 and c"},
      {open() + text, 2, 27, "malformed XML: the file ends inside the element 'LocalizedText'"},
      {"", 1, 1, "malformed XML: no root element"},
      {"<?xml version='1.0' encoding='Shift_JIS'?>\n<c/>", 1, 1, "encoding 'Shift_JIS" + encoding},
      {"<?xml version='1.0' encoding='latin1'?>\n<c/>", 1, 1, "encoding 'latin1" + encoding},
      {"<?xml version='1.1'?>\n<c/>", 1, 1, "XML 1.1 is not supported: a catalogue file is XML 1.0"},
  };
  for (const auto& each : cases) {
    EXPECT_THAT(problemsOf(each.content), testing::ElementsAre(problem(each.line, each.column, each.message)))
        << each.content;
  }
}

TEST(CatalogueReader, ReportsEveryOtherProblemOfAFileInDocumentOrder) {
  EXPECT_THAT(
      problemsOf(open() +
                 "<pm:LocalizedText Version='x' TextWidth='huge'>Press <b>OK</b></pm:LocalizedText>\n"
                 "<pm:LocalizedText\n Version=' 18446744073709551616 '/><pm:LocalizedText Version=''/>"
                 "<pm:LocalizedText TextWidth='M'/></c>"),
      testing::ElementsAre(
          problem(2, 28, "Version 'x' is not an unsigned 64-bit decimal"),
          problem(2, 42, "TextWidth 'huge' is not one of xs, s, m, l, xl, xxl"),
          problem(2, 54, "element 'b' inside a localized text: a text holds characters only"),
          problem(4, 11, "Version ' 18446744073709551616 ' is not an unsigned 64-bit decimal"),
          problem(4, 63, "Version '' is not an unsigned 64-bit decimal"),
          problem(4, 95, "TextWidth 'M' is not one of xs, s, m, l, xl, xxl")));
  EXPECT_THAT(problemsOf(open() + "<pm:LocalizedText Version='2a'/></c>"),
              testing::ElementsAre(problem(2, 28, "Version '2a' is not an unsigned 64-bit decimal")));
  try {
    readCatalogue(open() + "<pm:LocalizedText Version='-1'/><x:e/></c>", "bad.xml");
    ADD_FAILURE() << "read a file with problems";
  } catch (const CatalogueError& error) {
    EXPECT_EQ(error.problems().size(), 2u);
    EXPECT_THAT(error.what(), testing::StartsWith("bad.xml:2:28: Version '-1' is not"));
    EXPECT_THAT(error.what(), testing::EndsWith(" (and 1 more problem)"));
    EXPECT_THAT(error.file(), testing::EndsWith("Catalogue/ReadCatalogue.cpp"));
  }
  // A file of many problems lists a thousand, and garbage stops at once.
  std::string many = open();
  for (int index = 0; index < 1500; ++index) {
    many += "<pm:LocalizedText Version='v'/>\n";
  }
  const std::vector<Finding> listed = problemsOf(many + "<x:e/></c>");
  ASSERT_EQ(listed.size(), 1001u);
  EXPECT_EQ(listed[999].location.line, 1502);
  EXPECT_THAT(listed[999].message, testing::StartsWith("malformed XML: Namespace prefix x"));
  EXPECT_EQ(listed[1000],
            (Finding{Finding::Kind::File, {"bad.xml", 0, 0}, "501 more problems are not listed"}));
  EXPECT_EQ(problemsOf(std::string(std::size_t{5} << 20U, '\0')).size(), 1u);
}

struct Outcome {
  Zalt::Catalogue::Catalogue catalogue;
  std::vector<Finding> problems;
};

Outcome outcomeOf(const std::string& content) {
  try {
    return {readCatalogue(content, "f.xml"), {}};
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
  const std::string ascii =
      "<c xmlns:pm='" + participant() + "'>\r\n<pm:LocalizedText Ref='a'>&#xE9;\r</pm:LocalizedText></c>";
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
      {utf8Declaration + ascii, "<?xml version='1.0' encoding='US-ASCII'  ?>" + ascii},
      {utf8Declaration + withBadVersion,
       latin1("<?xml version='1.0' encoding='iso-8859-1'?>" + withBadVersion)},
  };
  for (const auto& each : cases) {
    const Outcome twin = outcomeOf(each.twin);
    const Outcome file = outcomeOf(each.file);
    EXPECT_EQ(file.problems, twin.problems) << each.twin;
    const std::vector<CatalogueText>& texts = file.catalogue.texts;
    ASSERT_EQ(texts.size(), twin.catalogue.texts.size()) << each.twin;
    EXPECT_TRUE(texts.size() + twin.problems.size() > 0) << each.twin;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      EXPECT_EQ(texts[i].text, twin.catalogue.texts[i].text) << each.twin;
      EXPECT_EQ(file.catalogue.location(texts[i]), twin.catalogue.location(twin.catalogue.texts[i]))
          << each.twin;
    }
  }
  // An unpaired surrogate, and a UTF-32 file, which the parser would read.
  EXPECT_THAT(
      problemsOf(std::string("\xFF\xFE<\0c\0>\0\n\0\xA4\0\x00\xD8<\0/\0c\0>\0", 22)),
      testing::ElementsAre(problem(1, 4,
                                   "malformed XML: input conversion failed due to input error, bytes 0x00 "
                                   "0xD8 0x3C 0x00")));
  EXPECT_THAT(
      problemsOf(std::string("\0\0\0<\0\0\0c\0\0\0/\0\0\0>", 16)),
      testing::ElementsAre(testing::Field(
          &Finding::message, testing::EndsWith("' is not supported: a catalogue file is UTF-8, UTF-16, "
                                               "ISO-8859-1 or US-ASCII"))));
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
  const auto catalogue = readCatalogue(document, "deep.xml");
  ASSERT_EQ(catalogue.texts.size(), depth);
  EXPECT_EQ(catalogue.texts.back().text.ref().get().value(), std::to_string(depth - 1));
  EXPECT_EQ(catalogue.location(catalogue.texts.back()),
            (SourceLocation{"deep.xml", static_cast<std::int32_t>(depth), 86}));
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

TEST(CatalogueReader, ReadsSeveralFilesAsOneCatalogueOrReportsTheProblemsOfAll) {
  const std::string walkthrough = ZALT_CATALOGUE_EXAMPLES_DIR "/walkthrough.xml";
  const std::string mistakes = ZALT_CATALOGUE_EXAMPLES_DIR "/mistakes.xml";
  const auto catalogue = Zalt::Catalogue::readCatalogueFiles({walkthrough, mistakes});
  EXPECT_EQ(catalogue.files, (std::vector<std::string>{walkthrough, mistakes}));
  EXPECT_EQ(catalogue.texts.size(), 54u + 25u);
  EXPECT_EQ(catalogue.location(catalogue.texts.back()).file, mistakes);
  EXPECT_EQ(catalogue.location(catalogue.texts.front()).file, walkthrough);
  try {
    Zalt::Catalogue::readCatalogueFiles({"no/such.xml", walkthrough, "no/other.xml"});
    ADD_FAILURE() << "read missing files";
  } catch (const CatalogueError& error) {
    EXPECT_THAT(
        error.problems(),
        testing::ElementsAre(testing::Field(&Finding::location, SourceLocation{"no/such.xml", 0, 0}),
                             testing::Field(&Finding::location, SourceLocation{"no/other.xml", 0, 0})));
  }
}

// The parser would follow the declaration and garble every non-ASCII
// character; a mark and a declaration that agree read as ever.
TEST(CatalogueReader, RefusesAByteOrderMarkThatTheDeclarationContradicts) {
  const std::string body = open() + "<pm:LocalizedText Ref='r'>\xC3\xA4</pm:LocalizedText></c>";
  const auto declared = [&](const std::string& encoding) {
    return "<?xml version='1.0' encoding='" + encoding + "'?>" + body;
  };
  const std::string utf8Mark = "\xEF\xBB\xBF";
  const std::pair<std::string, std::string> refused[] = {
      {utf8Mark + declared("ISO-8859-1"), "UTF-8 but the declaration says 'ISO-8859-1'"},
      {utf16(declared("UTF-8"), false), "UTF-16LE but the declaration says 'UTF-8'"},
      {utf16(declared("utf-8"), true), "UTF-16BE but the declaration says 'utf-8'"},
      {utf16(declared("UTF-16BE"), false), "UTF-16LE but the declaration says 'UTF-16BE'"},
  };
  for (const auto& each : refused) {
    EXPECT_THAT(problemsOf(each.first),
                testing::ElementsAre(problem(1, 1, "the byte-order mark says " + each.second)))
        << each.first;
  }
  const std::string agreeing[] = {utf8Mark + declared("utf-8"),       utf8Mark + body,
                                  utf16(declared("UTF-16"), false),   utf16(declared("UTF16"), true),
                                  utf16(declared("UTF-16LE"), false), latin1(declared("ISO-8859-1"))};
  for (const std::string& each : agreeing) {
    EXPECT_EQ(outcomeOf(each).catalogue.texts.at(0).text.text().value(), "\xC3\xA4") << each;
  }
}

}  // namespace
