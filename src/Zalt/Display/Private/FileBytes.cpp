#include <Zalt/Display/Private/FileBytes.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace Zalt {
namespace Display {
namespace Private {

// Windows refuses to open a folder as a permission problem, which would send
// a maker looking for the wrong cause: a folder is told as one everywhere.
std::string fileBytes(const std::string& path) {
  const std::filesystem::path name = std::filesystem::u8path(path);
  std::ifstream in(name, std::ios::binary);
  const int openError = errno;
  std::error_code unknown;
  if (std::filesystem::is_directory(name, unknown)) {
    throw std::system_error(EISDIR, std::generic_category());
  }
  if (!in) {
    throw std::system_error(openError, std::generic_category());
  }
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
