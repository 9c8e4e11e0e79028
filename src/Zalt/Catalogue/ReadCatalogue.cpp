#include <Zalt/Catalogue/ReadCatalogue.h>

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/Private/CodePoints.h>
#include <Zalt/Catalogue/Private/DocumentEncoding.h>
#include <Zalt/Catalogue/Private/FileContent.h>
#include <Zalt/Catalogue/Private/FileProblems.h>
#include <Zalt/Catalogue/Private/ForbiddenCharacters.h>
#include <Zalt/Catalogue/Private/LineIndex.h>
#include <Zalt/Catalogue/Private/NamespaceScope.h>
#include <Zalt/Catalogue/Private/ValueDecoder.h>
#include <Zalt/Catalogue/TextWidthTokens.h>

#include <pugixml.hpp>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

const std::string_view participantNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant";
const std::string_view messageNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/message";
const std::string_view xmlnsNamespace = "http://www.w3.org/2000/xmlns/";
const std::string_view xmlPrefixNamespace = "http://www.w3.org/XML/1998/namespace";

bool isXmlSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// XML Schema collapses the white space around a number or a token.
std::string_view collapsed(std::string_view value) {
  while (!value.empty() && isXmlSpace(value.front())) {
    value.remove_prefix(1);
  }
  while (!value.empty() && isXmlSpace(value.back())) {
    value.remove_suffix(1);
  }
  return value;
}

struct QualifiedName {
  std::string_view prefix;
  std::string_view local;
};

QualifiedName split(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string_view::npos) {
    return {{}, name};
  }
  return {name.substr(0, colon), name.substr(colon + 1)};
}

bool isNamespaceDeclaration(const QualifiedName& name) {
  return name.prefix == "xmlns" || (name.prefix.empty() && name.local == "xmlns");
}

// An attribute of the element being entered, its name split once.
struct Attribute {
  const char* qualified;
  QualifiedName name;
  const char* value;
  // With the local name, what two attributes of one element must not share:
  // the namespace ("" for none), or the prefix where it is undeclared.
  std::string_view xmlNamespace;
};

bool isSameAttribute(const Attribute& lhs, const Attribute& rhs) {
  return lhs.name.local == rhs.name.local && lhs.xmlNamespace == rhs.xmlNamespace;
}

bool operator<(const Attribute& lhs, const Attribute& rhs) {
  return std::tie(lhs.xmlNamespace, lhs.name.local, lhs.qualified) <
         std::tie(rhs.xmlNamespace, rhs.name.local, rhs.qualified);
}

// The unprefixed attributes of a text element, each the first of its name.
struct TextAttributes {
  const char* ref = nullptr;
  const char* lang = nullptr;
  const char* version = nullptr;
  const char* textWidth = nullptr;

  // The slot that an attribute of this name fills, or nullptr.
  const char** slotFor(std::string_view name) {
    const char** slot = name == "Ref"         ? &ref
                        : name == "Lang"      ? &lang
                        : name == "Version"   ? &version
                        : name == "TextWidth" ? &textWidth
                                              : nullptr;
    return slot != nullptr && *slot == nullptr ? slot : nullptr;
  }
};

// Reads one document, held as UTF-8 in a buffer that the parser may write
// into, in a single walk in document order.
class DocumentReader {
public:
  DocumentReader(char* document, std::size_t size, const std::string& fileName, Impl::FileProblems& problems)
      : m_document(document),
        m_size(size),
        m_fileName(fileName),
        m_problems(problems),
        m_lines(std::string_view(document, size)),
        m_decoder(document, problems) {}

  CatalogueTexts read() {
    if (Impl::reportForbiddenCharacters(std::string_view(m_document, m_size), m_problems)) {
      parseAndWalk();
      makeTexts();
    }
    if (!m_problems.empty()) {
      throw CatalogueError(m_problems.findings(m_lines, m_fileName), __FILE__, __LINE__);
    }
    m_catalogue.files.push_back(m_fileName);
    return std::move(m_catalogue);
  }

private:
  struct Frame {
    bool isResponse;
    bool isText;
  };

  // A text element as the walk finds it: where its parts lie in the document.
  // The parser's tree is about three times the file; the texts are made from
  // these once it is gone, so that the two never take memory at once.
  struct FoundText {
    std::size_t start;
    TextAttributes attributes;
    // Its character data and CDATA sections, pieces[firstPiece ...].
    std::size_t firstPiece;
    std::size_t pieceCount;
  };
  struct Piece {
    const char* data;
    bool isCdata;
  };

  void parseAndWalk() {
    const std::size_t outsideRoot = textOutsideTheRoot();
    // Escapes and line ends stay as the file has them, so that each value
    // lies where it stands in the file and every problem in it has a place;
    // ValueDecoder decodes them. White space alone is a text like any other.
    const unsigned int options = pugi::parse_cdata | pugi::parse_ws_pcdata | pugi::parse_doctype;
    pugi::xml_document tree;
    const pugi::xml_parse_result parsed =
        tree.load_buffer_inplace(m_document, m_size, options, pugi::encoding_utf8);
    if (!parsed) {
      const auto offset = static_cast<std::size_t>(parsed.offset);
      m_problems.dropFrom(offset);
      m_problems.add(offset, std::string("malformed XML: ") + parsed.description());
      return;
    }
    if (outsideRoot != m_size) {
      m_problems.add(outsideRoot, "text outside the root element");
    }
    walk(tree);
  }

  // The parser drops text before the first tag and after the last one
  // without a word; it must be found before the parser overwrites the tags.
  std::size_t textOutsideTheRoot() const {
    const std::string_view document(m_document, m_size);
    const std::size_t firstTag = std::min(document.find('<'), m_size);
    for (std::size_t at = 0; at < firstTag; ++at) {
      if (!isXmlSpace(document[at])) {
        return at;
      }
    }
    const std::size_t lastTag = document.rfind('>');
    for (std::size_t at = lastTag == std::string_view::npos ? m_size : lastTag + 1; at < m_size; ++at) {
      if (!isXmlSpace(document[at])) {
        return at;
      }
    }
    return m_size;
  }

  // Iterative, so that no depth of nesting exhausts the stack.
  void walk(const pugi::xml_document& tree) {
    pugi::xml_node node = tree.first_child();
    while (node) {
      if (visit(node) && node.first_child()) {
        node = node.first_child();
        continue;
      }
      for (; node != tree; node = node.parent()) {
        if (node.type() == pugi::node_element) {
          leaveElement();
        }
        if (node.next_sibling()) {
          node = node.next_sibling();
          break;
        }
      }
      if (node == tree) {
        return;
      }
    }
  }

  // Returns whether the walk descends into the node's children.
  bool visit(const pugi::xml_node& node) {
    switch (node.type()) {
      case pugi::node_element:
        enterElement(node);
        return true;
      case pugi::node_pcdata:
        // A text's own character data was decoded with its element.
        if (m_frames.empty() || !m_frames.back().isText) {
          m_decoder.appendContent(node.value(), nullptr);
        }
        return false;
      case pugi::node_doctype:
        m_problems.add(
            doctypeOffset(node),
            "a document type declaration is not allowed in a catalogue file (nothing is expanded or "
            "fetched)");
        return false;
      default:
        return false;
    }
  }

  std::size_t doctypeOffset(const pugi::xml_node& doctype) const {
    const char* at = doctype.value();
    while (at > m_document && *at != '<') {
      --at;
    }
    return offsetOf(at);
  }

  void enterElement(const pugi::xml_node& element) {
    m_scope.enterElement();
    collectAttributes(element);
    declareNamespaces();
    const QualifiedName name = qualifiedName(element.name());
    const std::string* const xmlNamespace = namespaceOfPrefix(name, element.name());
    const bool parentIsResponse = !m_frames.empty() && m_frames.back().isResponse;
    const Frame frame{isIn(xmlNamespace, messageNamespace) && name.local == "GetLocalizedTextResponse",
                      (isIn(xmlNamespace, participantNamespace) && name.local == "LocalizedText") ||
                          (isIn(xmlNamespace, messageNamespace) && name.local == "Text" && parentIsResponse)};
    if (m_frames.empty() && ++m_roots > 1) {
      m_problems.add(startOf(element), "a second root element: a catalogue file has one");
    }
    TextAttributes textAttributes;
    checkAttributes(frame.isText ? &textAttributes : nullptr);
    reportDuplicateAttributes();
    if (frame.isText) {
      m_found.push_back(found(element, textAttributes));
    } else if (name.local == "LocalizedText" ||
               (name.local == "Text" && !isIn(xmlNamespace, messageNamespace))) {
      noteMisplaced(element, name.local, xmlNamespace);
    }
    m_frames.push_back(frame);
  }

  void leaveElement() {
    m_frames.pop_back();
    m_scope.leaveElement();
  }

  static bool isIn(const std::string* xmlNamespace, std::string_view wanted) {
    return xmlNamespace != nullptr && *xmlNamespace == wanted;
  }

  QualifiedName qualifiedName(const char* written) {
    const QualifiedName name = split(written);
    const bool valid = !name.local.empty() && name.local.find(':') == std::string_view::npos &&
                       (name.prefix.data() == nullptr || !name.prefix.empty());
    if (!valid) {
      m_problems.add(offsetOf(written),
                     "'" + std::string(written) + "' is not a name with namespaces (PREFIX:NAME)");
    }
    return name;
  }

  // The namespace of a qualified element or attribute name; nullptr for none.
  const std::string* namespaceOfPrefix(const QualifiedName& name, const char* written) {
    const std::string* const found = m_scope.namespaceOf(name.prefix);
    if (found == nullptr && !name.prefix.empty()) {
      m_problems.add(offsetOf(written), "prefix '" + std::string(name.prefix) + "' of '" + written +
                                            "' has no namespace declaration");
    }
    return found == nullptr || found->empty() ? nullptr : found;
  }

  void collectAttributes(const pugi::xml_node& element) {
    m_attributes.clear();
    for (const pugi::xml_attribute attribute : element.attributes()) {
      m_attributes.push_back({attribute.name(), qualifiedName(attribute.name()), attribute.value(), {}});
    }
  }

  // A declaration applies to the element that holds it and to its other
  // attributes, so all of them come first.
  void declareNamespaces() {
    for (Attribute& attribute : m_attributes) {
      if (!isNamespaceDeclaration(attribute.name)) {
        continue;
      }
      const std::string_view prefix =
          attribute.name.prefix.empty() ? std::string_view() : attribute.name.local;
      std::string uri;
      m_decoder.appendAttributeValue(attribute.value, &uri);
      checkDeclaration(prefix, uri, attribute.qualified);
      attribute.xmlNamespace = xmlnsNamespace;
      m_scope.declare(prefix, std::move(uri));
    }
  }

  void checkDeclaration(std::string_view prefix, const std::string& uri, const char* written) {
    const bool misbound = prefix == "xmlns" || (prefix == "xml") != (uri == xmlPrefixNamespace) ||
                          uri == xmlnsNamespace || (!prefix.empty() && uri.empty());
    if (misbound) {
      m_problems.add(offsetOf(written), "'" + std::string(written) + "=\"" + uri +
                                            "\"' is not a namespace declaration that XML allows");
    }
  }

  // Checks every attribute but the namespace declarations; keeps the text
  // attributes of a text element for textOf, which decodes them.
  void checkAttributes(TextAttributes* textAttributes) {
    for (Attribute& attribute : m_attributes) {
      const QualifiedName& name = attribute.name;
      if (isNamespaceDeclaration(name)) {
        continue;
      }
      const std::string* const xmlNamespace =
          name.prefix.empty() ? nullptr : namespaceOfPrefix(name, attribute.qualified);
      attribute.xmlNamespace = xmlNamespace != nullptr ? std::string_view(*xmlNamespace) : name.prefix;
      const char** slot =
          textAttributes != nullptr && name.prefix.empty() ? textAttributes->slotFor(name.local) : nullptr;
      if (slot != nullptr) {
        *slot = attribute.value;
      } else {
        m_decoder.appendAttributeValue(attribute.value, nullptr);
      }
    }
  }

  // An element has a handful of attributes, whose names mostly differ in
  // length, so comparing each with each costs less than sorting; sorting
  // keeps an element with a great many of them linear.
  void reportDuplicateAttributes() {
    const std::size_t fewAttributes = 8;
    if (m_attributes.size() <= fewAttributes) {
      for (std::size_t again = 1; again < m_attributes.size(); ++again) {
        for (std::size_t first = 0; first < again; ++first) {
          if (isSameAttribute(m_attributes[first], m_attributes[again])) {
            reportDuplicate(m_attributes[first], m_attributes[again]);
            break;
          }
        }
      }
      return;
    }
    std::sort(m_attributes.begin(), m_attributes.end());
    for (std::size_t again = 1; again < m_attributes.size(); ++again) {
      if (isSameAttribute(m_attributes[again - 1], m_attributes[again])) {
        reportDuplicate(m_attributes[again - 1], m_attributes[again]);
      }
    }
  }

  void reportDuplicate(const Attribute& first, const Attribute& again) {
    const std::string name = again.qualified;
    m_problems.add(offsetOf(again.qualified),
                   std::strcmp(first.qualified, again.qualified) == 0
                       ? "attribute '" + name + "' appears twice on one element"
                       : "attribute '" + name + "' is the attribute '" + first.qualified + "' again");
  }

  FoundText found(const pugi::xml_node& element, const TextAttributes& attributes) {
    const std::size_t firstPiece = m_pieces.size();
    for (const pugi::xml_node child : element.children()) {
      if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
        m_pieces.push_back({child.value(), child.type() == pugi::node_cdata});
      }
    }
    return {startOf(element), attributes, firstPiece, m_pieces.size() - firstPiece};
  }

  // The values still lie in the document, where the parser left them.
  void makeTexts() {
    m_catalogue.texts.reserve(m_found.size());
    for (const FoundText& text : m_found) {
      m_catalogue.texts.push_back(textOf(text));
    }
    m_found = {};
    m_pieces = {};
  }

  CatalogueText textOf(const FoundText& found) {
    const SourceLocation location = locate(found.start);
    const TextAttributes& attributes = found.attributes;
    Tovra::Mdib::LocalizedText text(Utf8(content(found)), lang(attributes.lang),
                                    LocalizedTextRef(Utf8(utf8Value(attributes.ref, "Ref"))),
                                    version(attributes.version), width(attributes.textWidth));
    return {std::move(text), location};
  }

  std::string content(const FoundText& found) {
    std::string data;
    for (std::size_t piece = found.firstPiece; piece < found.firstPiece + found.pieceCount; ++piece) {
      if (m_pieces[piece].isCdata) {
        Impl::ValueDecoder::appendCdata(m_pieces[piece].data, data);
      } else {
        m_decoder.appendContent(m_pieces[piece].data, &data);
      }
    }
    return data;
  }

  std::string decoded(const char* value) {
    std::string text;
    m_decoder.appendAttributeValue(value, &text);
    return text;
  }

  // A reference or language is compared and written out byte for byte, so
  // unlike a text's content it must be UTF-8 to mean anything.
  std::string utf8Value(const char* value, const char* attribute) {
    if (value == nullptr) {
      return {};
    }
    const char* const end = value + std::strlen(value);
    const char* const malformed = Impl::malformedUtf8At(value, end);
    std::string text = decoded(value);
    if (malformed != end) {
      m_problems.add(offsetOf(malformed), std::string(attribute) + " '" + text + "' is not valid UTF-8");
    }
    return text;
  }

  boost::optional<LanguageTag> lang(const char* value) {
    if (value == nullptr) {
      return boost::none;
    }
    return LanguageTag(utf8Value(value, "Lang"));
  }

  boost::optional<VersionCounter> version(const char* value) {
    if (value == nullptr) {
      return boost::none;
    }
    const std::string text = decoded(value);
    const std::string_view digits = collapsed(text);
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) {
      m_problems.add(offsetOf(value), "Version '" + text + "' is not an unsigned 64-bit decimal");
      return boost::none;
    }
    return VersionCounter(number);
  }

  boost::optional<LocalizedTextWidth> width(const char* value) {
    if (value == nullptr) {
      return boost::none;
    }
    const std::string text = decoded(value);
    const boost::optional<LocalizedTextWidth> known = textWidthFromToken(std::string(collapsed(text)));
    if (!known) {
      m_problems.add(offsetOf(value), "TextWidth '" + text + "' is not one of xs, s, m, l, xl, xxl");
    }
    return known;
  }

  // The first element of each name and namespace is enough to tell a user
  // which namespace the texts were meant to have.
  void noteMisplaced(const pugi::xml_node& element, std::string_view local, const std::string* xmlNamespace) {
    const std::string_view uri =
        xmlNamespace != nullptr ? std::string_view(*xmlNamespace) : std::string_view();
    for (const MisplacedElement& known : m_catalogue.misplaced) {
      if (known.name == local && known.xmlNamespace == uri) {
        return;
      }
    }
    m_catalogue.misplaced.push_back({locate(startOf(element)), std::string(local), std::string(uri)});
  }

  // An element's '<', just before its name.
  std::size_t startOf(const pugi::xml_node& element) const { return offsetOf(element.name()) - 1; }

  std::size_t offsetOf(const char* at) const { return static_cast<std::size_t>(at - m_document); }

  SourceLocation locate(std::size_t offset) {
    const Impl::SourcePosition position = m_lines.locate(offset);
    return {m_fileName, position.line, position.column};
  }

  char* m_document;
  std::size_t m_size;
  const std::string& m_fileName;
  Impl::FileProblems& m_problems;
  Impl::LineIndex m_lines;
  Impl::ValueDecoder m_decoder;
  Impl::NamespaceScope m_scope;
  std::vector<Frame> m_frames;
  std::vector<Attribute> m_attributes;
  int m_roots = 0;
  std::vector<FoundText> m_found;
  std::vector<Piece> m_pieces;
  CatalogueTexts m_catalogue;
};

}  // namespace

CatalogueTexts readCatalogue(std::string content, const std::string& fileName) {
  Impl::FileProblems problems;
  const std::size_t start = Impl::toUtf8Document(content, problems);
  return DocumentReader(&content[start], content.size() - start, fileName, problems).read();
}

CatalogueTexts readCatalogueFile(const std::string& path) {
  return readCatalogue(Impl::fileContent(path), path);
}

}  // namespace Catalogue
}  // namespace Zalt
