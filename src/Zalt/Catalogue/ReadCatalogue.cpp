#include <Zalt/Catalogue/ReadCatalogue.h>

#include <Zalt/Catalogue/Private/AttributeValues.h>
#include <Zalt/Catalogue/Private/ReadDocument.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Catalogue/XmlNamespaces.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Private::Attribute;
using Private::Element;
using Private::Place;
using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

// A text element's parts until its end tag.
struct PendingText {
  Place place;
  std::string ref;
  boost::optional<LanguageTag> lang;
  boost::optional<VersionCounter> version;
  boost::optional<LocalizedTextWidth> width;
  std::string content;
};

enum class Open : char { Other, Response, Text };

// Takes the texts from the parser's events.
class DocumentReader : public Private::XmlDocumentReader {
public:
  using Result = Catalogue;

  DocumentReader(std::string fileName, std::size_t expectedSize)
      : XmlDocumentReader(std::move(fileName), expectedSize, "a catalogue file") {}

  Catalogue result() && {
    giveBackRoom();
    m_catalogue.files.push_back(fileName());
    m_catalogue.contents.push_back(
        {0, std::move(m_rootName), std::move(m_rootNamespace), m_catalogue.texts.size()});
    return std::move(m_catalogue);
  }

private:
  void startElement(const Element& element) override {
    if (m_open.empty()) {
      m_rootName = element.name;
      m_rootNamespace = element.xmlNamespace;
    }
    const bool parentIsResponse = !m_open.empty() && m_open.back() == Open::Response;
    Open kind = Open::Other;
    if (element.xmlNamespace == messageNamespace && element.name == "GetLocalizedTextResponse") {
      kind = Open::Response;
    } else if ((element.xmlNamespace == participantNamespace && element.name == "LocalizedText") ||
               (element.xmlNamespace == messageNamespace && element.name == "Text" && parentIsResponse)) {
      kind = Open::Text;
    } else if (element.name == "LocalizedText" ||
               (element.name == "Text" && element.xmlNamespace != messageNamespace)) {
      noteMisplaced(element.name, element.xmlNamespace);
    }
    if (m_inText) {
      problem(markupPlace(), "element '" + element.qualifiedName() +
                                 "' inside a localized text: a text holds characters only");
    } else if (kind == Open::Text) {
      beginText(element);
    }
    m_open.push_back(kind);
  }

  void endElement() override {
    m_open.pop_back();
    if (m_inText && m_open.size() == m_textLevel) {
      m_inText = false;
      endText();
    }
  }

  void characters(std::string_view data) override {
    if (m_inText && m_open.size() == m_textLevel + 1) {
      m_text.content += data;
    }
  }

  void dropResults() override { m_catalogue.texts = {}; }

  void beginText(const Element& element) {
    m_inText = true;
    m_textLevel = m_open.size();
    m_text = PendingText{markupPlace(), {}, {}, {}, {}, {}};
    for (const Attribute& attribute : element.attributes) {
      if (attribute.prefix.empty()) {
        textAttribute(attribute);
      }
    }
  }

  void textAttribute(const Attribute& attribute) {
    const std::string_view name = attribute.localName;
    const std::string_view value = attribute.value;
    if (name == "Ref") {
      m_text.ref = value;
    } else if (name == "Lang") {
      m_text.lang = LanguageTag(std::string(value));
    } else if (name == "Version") {
      if (const auto number = Private::versionNumber(value)) {
        m_text.version = VersionCounter(*number);
      } else {
        problem(placeOfValue(attribute, m_text.place), Private::badVersionMessage(value));
      }
    } else if (name == "TextWidth") {
      m_text.width = textWidthFromToken(Private::collapsed(value));
      if (!m_text.width) {
        problem(placeOfValue(attribute, m_text.place),
                "TextWidth '" + std::string(value) + "' is not one of " + textWidthTokenList());
      }
    }
  }

  void endText() {
    // A file with a problem yields no texts: none are kept past the first.
    if (hasProblems()) {
      return;
    }
    PendingText& text = m_text;
    m_catalogue.texts.push_back(
        {Tovra::Mdib::LocalizedText(Utf8(std::move(text.content)), std::move(text.lang),
                                    LocalizedTextRef(Utf8(std::move(text.ref))), text.version, text.width),
         0, text.place.line, text.place.column});
  }

  // Growing the texts as they come would copy them some twenty times into
  // ever larger blocks at a million texts. A file's first chunk tells how
  // densely it holds texts, so the whole file's room is taken at once.
  void firstChunkFed(std::size_t fileSize, std::size_t readSoFar) override {
    std::vector<CatalogueText>& texts = m_catalogue.texts;
    if (fileSize > readSoFar && !texts.empty()) {
      const std::size_t expected = texts.size() * (fileSize / readSoFar + 1);
      texts.reserve(expected + expected / 16);
    }
  }

  // What a guess took beyond the texts is given back, where it is worth a copy.
  void giveBackRoom() {
    std::vector<CatalogueText>& texts = m_catalogue.texts;
    if (texts.capacity() > texts.size() + texts.size() / 4 + 64) {
      texts.shrink_to_fit();
    }
  }

  // The first element of each name and namespace is enough to tell a user
  // which namespace the texts were meant to have.
  void noteMisplaced(std::string_view name, std::string_view xmlNamespace) {
    const auto known = std::find_if(m_catalogue.misplaced.begin(), m_catalogue.misplaced.end(),
                                    [&](const MisplacedElement& element) {
                                      return element.name == name && element.xmlNamespace == xmlNamespace;
                                    });
    if (known == m_catalogue.misplaced.end()) {
      const Place place = markupPlace();
      m_catalogue.misplaced.push_back(
          {{fileName(), place.line, place.column}, std::string(name), std::string(xmlNamespace)});
    }
  }

  std::vector<Open> m_open;
  bool m_inText = false;
  std::size_t m_textLevel = 0;
  PendingText m_text;
  std::string m_rootName;
  std::string m_rootNamespace;
  Catalogue m_catalogue;
};

}  // namespace

Catalogue readCatalogue(std::string_view content, const std::string& fileName) {
  return Private::readDocument<DocumentReader>(content, fileName);
}

Catalogue readCatalogueFile(const std::string& path) {
  return Private::readDocumentFile<DocumentReader>(path);
}

Catalogue readCatalogueFiles(const std::vector<std::string>& paths) {
  return Private::readDocumentFiles<DocumentReader>(paths);
}

}  // namespace Catalogue
}  // namespace Zalt
