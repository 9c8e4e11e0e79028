#include <Zalt/Catalogue/WriteCatalogue.h>

#include <Zalt/Catalogue/Catalogue.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <stdexcept>

namespace Zalt {
namespace Catalogue {
namespace {

// XML 1.0's characters: tab, LF, CR, U+0020 to U+D7FF, U+E000 to U+FFFD and
// beyond U+FFFF. Surrogates never decode from UTF-8.
bool isXmlCharacter(char32_t codePoint) {
  return codePoint == '\t' || codePoint == '\n' || codePoint == '\r' ||
         (codePoint >= 0x20 && codePoint <= 0xFFFD) || codePoint > 0xFFFF;
}

// A reader refuses a file that is not UTF-8 or holds what XML forbids, so
// the writer refuses to make one.
void requireXmlText(const std::string& text, const char* part, const Tovra::Mdib::LocalizedText& owner) {
  using Decoder = boost::u8_to_u32_iterator<std::string::const_iterator, char32_t>;
  try {
    const Decoder end(text.end(), text.begin(), text.end());
    for (Decoder it(text.begin(), text.begin(), text.end()); it != end; ++it) {
      if (!isXmlCharacter(*it)) {
        throw std::out_of_range("not an XML character");
      }
    }
  } catch (const std::out_of_range&) {
    throw std::invalid_argument(std::string("the ") + part + " of the text of reference '" +
                                owner.ref().get().value() + "' is not UTF-8 that an XML file can carry");
  }
}

// Attribute values lose their tabs and line ends to XML's attribute-value
// normalisation unless they are written as character references; content
// loses only its carriage returns.
void appendEscaped(std::string& out, const std::string& text, bool attribute) {
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

void appendAttribute(std::string& out, const char* name, const std::string& value,
                     const Tovra::Mdib::LocalizedText& owner) {
  requireXmlText(value, name, owner);
  out += ' ';
  out += name;
  out += "=\"";
  appendEscaped(out, value, true);
  out += '"';
}

}  // namespace

std::string writeCatalogue(const std::vector<Tovra::Mdib::LocalizedText>& texts) {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<pm:LocalizedTexts xmlns:pm=\"";
  out += participantNamespace;
  out += "\">\n";
  for (const Tovra::Mdib::LocalizedText& text : texts) {
    out += "  <pm:LocalizedText";
    appendAttribute(out, "Ref", text.ref().get().value(), text);
    if (text.lang()) {
      appendAttribute(out, "Lang", text.lang()->tag(), text);
    }
    if (text.version()) {
      appendAttribute(out, "Version", std::to_string(text.version()->get()), text);
    }
    if (text.textWidth()) {
      appendAttribute(out, "TextWidth", textWidthToken(*text.textWidth()), text);
    }
    out += '>';
    requireXmlText(text.text().value(), "content", text);
    appendEscaped(out, text.text().value(), false);
    out += "</pm:LocalizedText>\n";
  }
  out += "</pm:LocalizedTexts>\n";
  return out;
}

}  // namespace Catalogue
}  // namespace Zalt
