// Zalt::Catalogue::Private: the encodings that a document may be in, by the
// names its declaration gives them, and the encoding that a byte-order mark
// at its start says it is in. XmlDocumentReader refuses the others, and a
// document whose mark and declaration disagree.
//
//   isReadEncoding("iso-8859-1");                          // true
//   markedEncoding(std::string_view("\xFF\xFE<\0", 4));    // "UTF-16LE"
//   fitsMark("UTF-16LE", "UTF-8");                         // false
#pragma once

#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {

// Whether the parser converts the encoding called `name`, in any case, itself.
bool isReadEncoding(std::string_view name);

// "UTF-8", "UTF-16LE" or "UTF-16BE" where `firstBytes`, a document's first
// bytes, open with that encoding's byte-order mark; else empty.
std::string_view markedEncoding(std::string_view firstBytes);

// Whether a declaration of `declared`, in any case, names the encoding that
// the mark says, `marked` as markedEncoding gives it.
bool fitsMark(std::string_view marked, std::string_view declared);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
