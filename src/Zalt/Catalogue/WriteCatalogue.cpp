#include <Zalt/Catalogue/WriteCatalogue.h>

#include <Zalt/Catalogue/Private/CodePoints.h>
#include <Zalt/Catalogue/Private/ForbiddenCharacters.h>
#include <Zalt/Catalogue/TextWidthTokens.h>

#include <stdexcept>

namespace Zalt {
namespace Catalogue {
namespace {

const char* const participantNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant";

// Attribute values lose their tabs and line ends to XML's attribute-value
// normalisation unless they are written as character references; content
// loses only its carriage returns.
void appendEscaped(std::string& out, const std::string& text, bool attribute,
                   const Tovra::Mdib::LocalizedText& owner) {
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char c = text[index];
    if (Impl::startsForbiddenCharacter(text, index)) {
      throw std::invalid_argument("the text of reference '" + owner.ref().get().value() +
                                  "' holds a character that an XML file cannot carry");
    }
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

// The reader refuses a file whose reference or language is not UTF-8, as
// such a value cannot be compared or shown; writing one would make a file
// that cannot be read back.
void appendAttribute(std::string& out, const char* name, const std::string& value,
                     const Tovra::Mdib::LocalizedText& owner) {
  const char* const end = value.data() + value.size();
  if (Impl::malformedUtf8At(value.data(), end) != end) {
    throw std::invalid_argument(std::string("the ") + name + " of the text of reference '" +
                                owner.ref().get().value() + "' is not UTF-8");
  }
  out += ' ';
  out += name;
  out += "=\"";
  appendEscaped(out, value, true, owner);
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
    appendEscaped(out, text.text().value(), false, text);
    out += "</pm:LocalizedText>\n";
  }
  out += "</pm:LocalizedTexts>\n";
  return out;
}

}  // namespace Catalogue
}  // namespace Zalt
