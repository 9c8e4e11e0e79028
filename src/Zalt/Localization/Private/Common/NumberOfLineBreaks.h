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

// Throws std::out_of_range ("Invalid UTF-8 sequence encountered while trying to
// encode UTF-32 character") for malformed UTF-8. Decodes once; allocates nothing.
ZALT_LTS_EXPORT unsigned int numberOfLineBreaks(const Tovra::Locale::Utf8& text);

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
