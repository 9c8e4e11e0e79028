#include <Zalt/Catalogue/Private/ForbiddenCharacters.h>

#include <Zalt/Catalogue/Private/ByteSearch.h>
#include <Zalt/Catalogue/Private/CodePoints.h>

namespace Zalt {
namespace Catalogue {
namespace Impl {
namespace {

bool isForbiddenControl(unsigned char byte) {
  return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

// EF BF BE and EF BF BF encode U+FFFE and U+FFFF.
bool isNonCharacterAt(std::string_view document, std::size_t at) {
  return at + 2 < document.size() && static_cast<unsigned char>(document[at]) == 0xEF &&
         static_cast<unsigned char>(document[at + 1]) == 0xBF &&
         (static_cast<unsigned char>(document[at + 2]) & 0xFEU) == 0xBE;
}

void reportForbidden(std::size_t offset, char32_t codePoint, FileProblems& problems) {
  problems.add(offset, "character " + codePointName(codePoint) + " is not allowed in XML");
}

}  // namespace

bool startsForbiddenCharacter(std::string_view text, std::size_t at) {
  return isForbiddenControl(static_cast<unsigned char>(text[at])) || isNonCharacterAt(text, at);
}

bool reportForbiddenCharacters(std::string_view document, FileProblems& problems) {
  bool parseable = true;
  for (std::size_t at = findByte(document, 0, 0x20, 0xEF); at < document.size();
       at = findByte(document, at + 1, 0x20, 0xEF)) {
    const auto byte = static_cast<unsigned char>(document[at]);
    if (isForbiddenControl(byte)) {
      reportForbidden(at, byte, problems);
      parseable = parseable && byte != 0;
    } else if (isNonCharacterAt(document, at)) {
      reportForbidden(at, 0xFFFE + (static_cast<unsigned char>(document[at + 2]) & 1U), problems);
    }
  }
  return parseable;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
