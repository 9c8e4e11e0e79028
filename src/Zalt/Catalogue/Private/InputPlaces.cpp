#include <Zalt/Catalogue/Private/InputPlaces.h>

#include <algorithm>
#include <cstring>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

bool startsCharacter(xmlChar byte) { return (byte & 0xC0U) != 0x80U; }

std::int32_t charactersIn(const xmlChar* begin, const xmlChar* end) {
  return static_cast<std::int32_t>(std::count_if(begin, end, startsCharacter));
}

}  // namespace

// No '<' can stand inside a tag or a document type's name, so the markup's
// start is the last one before where the parser stands.
const xmlChar* markupStart(const xmlParserInput& input) {
  const xmlChar* at = input.cur;
  while (at > input.base && *at != '<') {
    --at;
  }
  return at;
}

bool isRead(const xmlParserInput& input, const xmlChar* at) { return at >= input.base && at <= input.cur; }

// The parser counts lines and columns where it stands, at the end of the
// markup just read, which is still in its buffer together with a stretch
// before it; an earlier place is counted back from there.
Place placeOf(const xmlParserInput& input, const xmlChar* at) {
  const auto breaks = static_cast<std::int32_t>(std::count(at, input.cur, '\n'));
  if (breaks == 0) {
    return {input.line, input.col - charactersIn(at, input.cur)};
  }
  const xmlChar* lineStart = at;
  while (lineStart > input.base && lineStart[-1] != '\n') {
    --lineStart;
  }
  const bool byteOrderMark = input.consumed == 0 && lineStart == input.base && at - lineStart >= 3 &&
                             std::memcmp(lineStart, "\xEF\xBB\xBF", 3) == 0;
  return {input.line - breaks, 1 + charactersIn(lineStart + (byteOrderMark ? 3 : 0), at)};
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
