// Zalt::Display::Private::fileBytes: the whole of a file that a profile or
// font is read from, named in UTF-8 as profiles name files, also where the
// system's narrow file names are not.
//
//   const std::string bytes = fileBytes("monitor.json");  // throws std::system_error
#pragma once

#include <string>

namespace Zalt {
namespace Display {
namespace Private {

// Every byte of the file at `path`; an empty file has none. Throws
// std::system_error with the system's reason where the file cannot be opened
// or is a folder.
std::string fileBytes(const std::string& path);

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
