// Zalt::Localization::Impl::numberOfLineBreaks: counts the line breaks of a
// UTF-8 text. A text's number of lines is this count plus one.
//
// Breaks are U+000A, U+000B, U+000C, U+000D, U+0085, U+2028 and U+2029.
// A carriage return followed by a line feed is one break, and so are two
// carriage returns in a row; a pending carriage return before any other break
// character is a break of its own.
//
//   numberOfLineBreaks(Utf8("Alarm\r\nsilenced"));  // 1
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Zalt/LtsExport.h>

namespace Zalt {
namespace Localization {
namespace Impl {

// Whether `codePoint` is a line break on its own, that is one other than the
// carriage return and the line feed, whose pairing the count settles. Shared
// with whatever must split a text into the lines that the store counts.
inline bool isLineBreakOtherThanCrLf(char32_t codePoint) {
  switch (codePoint) {
    case 0x0B:
    case 0x0C:
    case 0x85:
    case 0x2028:
    case 0x2029:
      return true;
    default:
      return false;
  }
}

// Throws std::out_of_range ("Invalid UTF-8 sequence encountered while trying to
// encode UTF-32 character") for malformed UTF-8. Decodes once; allocates nothing.
ZALT_LTS_EXPORT unsigned int numberOfLineBreaks(const Tovra::Locale::Utf8& text);

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
