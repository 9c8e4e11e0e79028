// Zalt::Catalogue::Impl::toUtf8Document: turns the bytes of a catalogue file
// into the UTF-8 document that the reader parses. A UTF-8 file stays where it
// is; a UTF-16 file (known by its byte-order mark) and one that declares
// ISO-8859-1 are converted. A declared encoding that a catalogue file may not
// use is a problem at the place of its name.
//
//   const std::size_t start = toUtf8Document(content, problems);
//   const std::string_view document(content.data() + start, content.size() - start);
#pragma once

#include <Zalt/Catalogue/Private/FileProblems.h>

#include <cstddef>
#include <string>

namespace Zalt {
namespace Catalogue {
namespace Impl {

// Returns where the document begins in `content`: past a UTF-8 byte-order
// mark, which belongs to no line and no column. Offsets of the problems
// added count from there.
std::size_t toUtf8Document(std::string& content, FileProblems& problems);

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
