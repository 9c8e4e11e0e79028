// Zalt::Localization::Impl::numberOfLineBreaks: counts the line breaks of a
// UTF-8 text, as LineBreakRule splits it. A text's number of lines is this
// count plus one.
//
//   numberOfLineBreaks(Utf8("Alarm\r\nsilenced"));  // 1
//   numberOfLineBreaks(Utf8("Alarm\r\rsilenced"));  // 1
//   numberOfLineBreaks(Utf8("Alarm\n\rsilenced"));  // 2
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
