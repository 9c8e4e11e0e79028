// Zalt::Catalogue::Private XML writing: what every document that the catalogue
// library writes needs, so that a conforming reader gives back exactly the
// characters written, carriage returns, tabs and line feeds included:
//
//   std::string out = "<text note=\"";
//   Private::appendEscaped(out, "a\tb", true);   // a&#9;b
//   out += "\">";
//   Private::appendEscaped(out, "x < y\r\n", false);  // x &lt; y&#13;\n
//   out += "</text>";
//
// A text that isXmlText refuses cannot be written at all: no escaping makes it
// XML.
#pragma once

#include <Tovra/Mdib/LocalizedText.h>

#include <string>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {

// Whether `text` is UTF-8 made only of characters that XML 1.0 allows: tab,
// LF, CR, U+0020 to U+D7FF, U+E000 to U+FFFD and beyond U+FFFF.
bool isXmlText(std::string_view text);

// Throws std::invalid_argument, naming the reference of `owner`, unless
// `value`, its `part` ("content", "Ref", ...), is XML text. A reader refuses
// a file that is not UTF-8 or holds what XML forbids, so no writer makes one.
void requireXmlText(std::string_view value, const char* part, const Tovra::Mdib::LocalizedText& owner);

// Appends `text` to `out` as attribute value (`attribute`) or as element
// content, so that an XML reader reads `text` back unchanged.
void appendEscaped(std::string& out, std::string_view text, bool attribute);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
