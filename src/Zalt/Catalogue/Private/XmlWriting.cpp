#include <Zalt/Catalogue/Private/XmlWriting.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <stdexcept>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

// Surrogates never decode from UTF-8, so they need no test of their own.
bool isXmlCharacter(char32_t codePoint) {
  return codePoint == '\t' || codePoint == '\n' || codePoint == '\r' ||
         (codePoint >= 0x20 && codePoint <= 0xFFFD) || codePoint > 0xFFFF;
}

}  // namespace

bool isXmlText(std::string_view text) {
  using Decoder = boost::u8_to_u32_iterator<std::string_view::const_iterator, char32_t>;
  try {
    const Decoder end(text.end(), text.begin(), text.end());
    for (Decoder it(text.begin(), text.begin(), text.end()); it != end; ++it) {
      if (!isXmlCharacter(*it)) {
        return false;
      }
    }
  } catch (const std::out_of_range&) {
    return false;
  }
  return true;
}

void requireXmlText(std::string_view value, const char* part, const Tovra::Mdib::LocalizedText& owner) {
  if (!isXmlText(value)) {
    throw std::invalid_argument(std::string("the ") + part + " of the text of reference '" +
                                owner.ref().get().value() + "' is not UTF-8 that an XML file can carry");
  }
}

// Attribute values lose their tabs and line ends to XML's attribute-value
// normalisation unless they are written as character references; content
// loses only its carriage returns. '>' is escaped everywhere so that no text
// can hold "]]>".
void appendEscaped(std::string& out, std::string_view text, bool attribute) {
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += attribute ? "&quot;" : "\"";
        break;
      case '\r':
        out += "&#13;";
        break;
      case '\n':
        out += attribute ? "&#10;" : "\n";
        break;
      case '\t':
        out += attribute ? "&#9;" : "\t";
        break;
      default:
        out += c;
    }
  }
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
