// Zalt::Catalogue::Impl::findByte: the reader's fast search for the rare
// bytes of a document (line ends, controls, the lead byte of U+FFFE), which
// looks at eight bytes at a time: the passes over a whole file before
// parsing then cost little beside the parse.
//
//   const std::size_t end = findByte(document, at, 0x0E, 0x0D);  // next byte <= CR
#pragma once

#include <cstddef>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Impl {

// The first offset from `from` on whose byte is below `below` (at most
// 0x80) or equal to `equal`; text.size() if there is none.
std::size_t findByte(std::string_view text, std::size_t from, unsigned char below, unsigned char equal);

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
