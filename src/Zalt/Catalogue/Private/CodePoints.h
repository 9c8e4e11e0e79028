// Zalt::Catalogue::Impl code point helpers for the reader: which code points
// XML allows, their UTF-8 form, where a byte string stops being UTF-8, and
// how problems name a code point.
//
//   appendUtf8(text, 0x2028);                       // E2 80 A8
//   malformedUtf8At(value.data(), value.data() + value.size());
//   codePointName(0xFFFE);                          // "U+FFFE"
#pragma once

#include <string>

namespace Zalt {
namespace Catalogue {
namespace Impl {

// XML 1.0's Char: tab, LF, CR, U+0020 to U+D7FF, U+E000 to U+FFFD and
// U+10000 to U+10FFFF.
bool isXmlCharacter(char32_t codePoint);

// `codePoint` must be at most U+10FFFF.
void appendUtf8(std::string& out, char32_t codePoint);

// The first byte of [begin, end) that starts no well-formed UTF-8 sequence
// (overlong forms, surrogates and code points past U+10FFFF included), or
// `end` when all of it is UTF-8.
const char* malformedUtf8At(const char* begin, const char* end);

// "U+0001", "U+1F600".
std::string codePointName(char32_t codePoint);

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
