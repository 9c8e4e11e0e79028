#include <Zalt/Catalogue/WriteCatalogue.h>

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/Private/XmlWriting.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Catalogue/XmlNamespaces.h>

namespace Zalt {
namespace Catalogue {
namespace {

void appendAttribute(std::string& out, const char* name, const std::string& value,
                     const Tovra::Mdib::LocalizedText& owner) {
  Private::requireXmlText(value, name, owner);
  out += ' ';
  out += name;
  out += "=\"";
  Private::appendEscaped(out, value, true);
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
    Private::requireXmlText(text.text().value(), "content", text);
    Private::appendEscaped(out, text.text().value(), false);
    out += "</pm:LocalizedText>\n";
  }
  out += "</pm:LocalizedTexts>\n";
  return out;
}

}  // namespace Catalogue
}  // namespace Zalt
