// Zalt::Catalogue::Impl::fileContent: the bytes of a catalogue file, read once
// into the string that the reader then parses in place.
//
//   std::string content = fileContent("texts/de.xml");
#pragma once

#include <string>

namespace Zalt {
namespace Catalogue {
namespace Impl {

// Throws CatalogueError "PATH: cannot be read: REASON" with the system's
// reason ("Is a directory" for a directory).
std::string fileContent(const std::string& path);

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
