#include <Zalt/Catalogue/ReadCatalogue.h>

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/Private/LineIndex.h>
#include <Zalt/Catalogue/TextWidthTokens.h>

#include <pugixml.hpp>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

const char* const participantNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant";
const char* const messageNamespace = "http://standards.ieee.org/downloads/11073/11073-10207-2017/message";

const char* localName(const pugi::xml_node& element) {
  const char* colon = std::strchr(element.name(), ':');
  return colon != nullptr ? colon + 1 : element.name();
}

// pugixml does not resolve namespaces: look for the nearest declaration of
// the element's prefix (or of the default namespace) on it or an ancestor.
std::string namespaceOf(const pugi::xml_node& element) {
  const char* colon = std::strchr(element.name(), ':');
  const std::string declaration =
      colon != nullptr ? "xmlns:" + std::string(element.name(), colon) : std::string("xmlns");
  for (pugi::xml_node node = element; node; node = node.parent()) {
    if (const pugi::xml_attribute declared = node.attribute(declaration.c_str())) {
      return declared.value();
    }
  }
  return {};
}

bool isElement(const pugi::xml_node& node, const char* name, const char* xmlNamespace) {
  return node.type() == pugi::node_element && std::strcmp(localName(node), name) == 0 &&
         namespaceOf(node) == xmlNamespace;
}

bool isTextElement(const pugi::xml_node& node) {
  return isElement(node, "LocalizedText", participantNamespace) ||
         (isElement(node, "Text", messageNamespace) &&
          isElement(node.parent(), "GetLocalizedTextResponse", messageNamespace));
}

// The node after `node` in document order, or a null node at the end.
pugi::xml_node nextInDocument(pugi::xml_node node) {
  if (const pugi::xml_node child = node.first_child()) {
    return child;
  }
  while (node && !node.next_sibling()) {
    node = node.parent();
  }
  return node ? node.next_sibling() : node;
}

// XML Schema collapses the white space around a number or a token.
std::string collapsed(const char* value) {
  std::string text(value);
  const char* const space = " \t\n\r";
  const std::size_t first = text.find_first_not_of(space);
  if (first == std::string::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

[[noreturn]] void failAt(const std::string& problem, const SourceLocation& location) {
  throw CatalogueError({Finding{Finding::Kind::File, location, problem}}, __FILE__, __LINE__);
}

class Reader {
public:
  Reader(const std::string& content, const std::string& fileName)
      : m_content(content), m_fileName(fileName), m_lines(content) {}

  CatalogueTexts read() {
    pugi::xml_document document;
    // Keep text that is only white space: it is a text like any other.
    const unsigned int options = pugi::parse_default | pugi::parse_ws_pcdata;
    const pugi::xml_parse_result parsed =
        document.load_buffer(m_content.data(), m_content.size(), options, pugi::encoding_utf8);
    if (!parsed) {
      fail(std::string("malformed XML: ") + parsed.description(), static_cast<std::size_t>(parsed.offset));
    }
    CatalogueTexts catalogue;
    catalogue.files.push_back(m_fileName);
    for (pugi::xml_node node = document.first_child(); node; node = nextInDocument(node)) {
      if (isTextElement(node)) {
        catalogue.texts.push_back(textOf(node));
      }
    }
    return catalogue;
  }

private:
  CatalogueText textOf(const pugi::xml_node& element) {
    // offset_debug is the offset of the element's name, just after its '<'.
    const SourceLocation location = locate(static_cast<std::size_t>(element.offset_debug()) - 1);
    const pugi::xml_attribute lang = element.attribute("Lang");
    Tovra::Mdib::LocalizedText text(Utf8(characterData(element)),
                                    lang ? boost::make_optional(LanguageTag(lang.value())) : boost::none,
                                    LocalizedTextRef(Utf8(element.attribute("Ref").value())),
                                    version(element, location), width(element, location));
    return {std::move(text), location};
  }

  static std::string characterData(const pugi::xml_node& element) {
    std::string data;
    for (const pugi::xml_node child : element.children()) {
      if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
        data += child.value();
      }
    }
    return data;
  }

  static boost::optional<VersionCounter> version(const pugi::xml_node& element,
                                                 const SourceLocation& location) {
    const pugi::xml_attribute attribute = element.attribute("Version");
    if (!attribute) {
      return boost::none;
    }
    const std::string digits = collapsed(attribute.value());
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) {
      failAt(std::string("Version '") + attribute.value() + "' is not an unsigned 64-bit decimal", location);
    }
    return VersionCounter(value);
  }

  static boost::optional<LocalizedTextWidth> width(const pugi::xml_node& element,
                                                   const SourceLocation& location) {
    const pugi::xml_attribute attribute = element.attribute("TextWidth");
    if (!attribute) {
      return boost::none;
    }
    const boost::optional<LocalizedTextWidth> known = textWidthFromToken(collapsed(attribute.value()));
    if (!known) {
      failAt(std::string("TextWidth '") + attribute.value() + "' is not one of xs, s, m, l, xl, xxl",
             location);
    }
    return known;
  }

  SourceLocation locate(std::size_t offset) {
    const Impl::SourcePosition position = m_lines.locate(offset);
    return {m_fileName, position.line, position.column};
  }

  [[noreturn]] void fail(const std::string& problem, std::size_t offset) { failAt(problem, locate(offset)); }

  const std::string& m_content;
  const std::string& m_fileName;
  Impl::LineIndex m_lines;
};

}  // namespace

CatalogueTexts readCatalogue(std::string content, const std::string& fileName) {
  return Reader(content, fileName).read();
}

CatalogueTexts readCatalogueFile(const std::string& path) {
  const SourceLocation file{path, 0, 0};
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    failAt("cannot be read: it is a directory", file);
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    failAt(std::string("cannot be read: ") + std::strerror(errno), file);
  }
  std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) {
    failAt("cannot be read: read error", file);
  }
  return readCatalogue(std::move(content), path);
}

}  // namespace Catalogue
}  // namespace Zalt
