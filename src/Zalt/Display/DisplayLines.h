// Zalt::Display::displayLines: a text cut into the lines that a display shows,
// at the breaks that the device store counts (LF, CR LF, a lone CR, VT, FF,
// NEL, LS, PS), so that a text of n lines for the store is n lines on screen.
//
//   Zalt::Display::displayLines("Heart rate\r\ntoo high");  // {"Heart rate", "too high"}
#pragma once

#include <Zalt/Display/DisplayExport.h>

#include <string_view>
#include <vector>

namespace Zalt {
namespace Display {

// The lines of `text` (UTF-8) without their breaks, views into `text`; one
// empty line for an empty text.
ZALT_LTSDISPLAY_EXPORT std::vector<std::string_view> displayLines(std::string_view text);

}  // namespace Display
}  // namespace Zalt
