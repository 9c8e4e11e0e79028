// Zalt::Display::Private::codePoints: UTF-8 decoded for FriBidi and HarfBuzz,
// which both index a line by code point.
//
//   codePoints("Grüß");  // U"Grüß"
#pragma once

#include <string>
#include <string_view>

namespace Zalt {
namespace Display {
namespace Private {

// The code points of `utf8`; each malformed or truncated sequence, an overlong
// form or a surrogate becomes one U+FFFD.
std::u32string codePoints(std::string_view utf8);

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
