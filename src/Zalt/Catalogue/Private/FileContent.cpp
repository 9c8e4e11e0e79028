#include <Zalt/Catalogue/Private/FileContent.h>

#include <Zalt/Catalogue/CatalogueError.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Zalt {
namespace Catalogue {
namespace Impl {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

[[noreturn]] void failToRead(const std::string& path, int error) {
  throw CatalogueError(
      {Finding{Finding::Kind::File, {path, 0, 0}, std::string("cannot be read: ") + std::strerror(error)}},
      __FILE__, __LINE__);
}

// A pipe or a file that grows while it is read has no size to trust; the
// size is a guess that makes the common case a single read into a buffer of
// the right size, with one byte more to see the end.
std::size_t expectedSize(const std::string& path) {
  std::error_code unknown;
  const std::uintmax_t size = std::filesystem::file_size(path, unknown);
  const std::size_t chunk = std::size_t{64} * 1024;
  return unknown ? chunk : static_cast<std::size_t>(size) + 1;
}

// Windows refuses to open a directory as a file with EACCES, which would send
// the user looking for a permission problem; the reason is the same as on
// Linux instead.
int openError(const std::string& path, int error) {
  std::error_code unknown;
  return std::filesystem::is_directory(path, unknown) ? EISDIR : error;
}

}  // namespace

std::string fileContent(const std::string& path) {
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    failToRead(path, openError(path, errno));
  }
  std::string content(expectedSize(path), '\0');
  std::size_t filled = 0;
  for (;;) {
    filled += std::fread(&content[filled], 1, content.size() - filled, file.get());
    if (filled < content.size()) {
      break;
    }
    content.resize(content.size() * 2);
  }
  if (std::ferror(file.get()) != 0) {
    failToRead(path, errno);
  }
  content.resize(filled);
  return content;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
