#include <Zalt/Catalogue/Private/InputFile.h>

#include <Zalt/Catalogue/CatalogueError.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

// Windows refuses to open a directory with EACCES, which would send a user
// looking for a permission problem; the reason is the same as on Linux.
int openError(const std::string& path, int error) {
  std::error_code unknown;
  return std::filesystem::is_directory(path, unknown) ? EISDIR : error;
}

}  // namespace

File openFile(const std::string& path, std::size_t& size) {
  File file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    failToRead(path, openError(path, errno));
  }
  std::error_code unknown;
  const std::uintmax_t bytes = std::filesystem::file_size(path, unknown);
  size = unknown ? 0 : static_cast<std::size_t>(bytes);
  return file;
}

std::FILE* binaryStandardInput() {
#ifdef _WIN32
  // In text mode Windows would turn CR LF into LF and stop at the first Ctrl-Z,
  // so a UTF-16 document or one with CR LF line ends would not arrive as written.
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  return stdin;
}

// A lack of memory is the program's, not a problem of the file.
void failToRead(const std::string& path, int error) {
  if (error == ENOMEM) {
    throw std::bad_alloc();
  }
  throw CatalogueError(
      {Finding{Finding::Kind::File, {path, 0, 0}, std::string("cannot be read: ") + std::strerror(error)}},
      __FILE__, __LINE__);
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
