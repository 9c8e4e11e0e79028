// Zalt::Catalogue::Private input files: the documents that the readers take
// from the file system or from standard input, read as bytes.
//
//   std::size_t size = 0;
//   const File file = openFile("de.xml", size);  // throws CatalogueError if it cannot be read
//   std::fread(buffer, 1, sizeof buffer, file.get());
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace Zalt {
namespace Catalogue {
namespace Private {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Opens `path` for reading in binary mode, with its size in bytes where it is
// known (else 0); throws as failToRead does where it cannot.
File openFile(const std::string& path, std::size_t& size);

// Standard input, switched to binary mode where the system distinguishes it.
std::FILE* binaryStandardInput();

// Throws CatalogueError ("PATH: cannot be read: REASON") for the errno value
// `error`, or std::bad_alloc where it is ENOMEM.
[[noreturn]] void failToRead(const std::string& path, int error);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
