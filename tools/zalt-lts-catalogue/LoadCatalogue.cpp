#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::CatalogueTexts;
using Zalt::Catalogue::Finding;

std::string readAllOfStandardInput() {
#ifdef _WIN32
  // In text mode Windows would turn CR LF into LF and stop at the first Ctrl-Z,
  // so a UTF-16 catalogue or one with CR LF line ends would not arrive as written.
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  std::string content;
  std::array<char, 1 << 16> buffer{};
  std::size_t count = 0;
  while ((count = std::fread(buffer.data(), 1, buffer.size(), stdin)) > 0) {
    content.append(buffer.data(), count);
  }
  if (std::ferror(stdin)) {
    throw CatalogueError({Finding{Finding::Kind::File,
                                  {standardInputName, 0, 0},
                                  std::string("cannot be read: ") + std::strerror(errno)}},
                         __FILE__, __LINE__);
  }
  return content;
}

CatalogueTexts read(const std::string& file) {
  if (file == "-") {
    return Zalt::Catalogue::readCatalogue(readAllOfStandardInput(), standardInputName);
  }
  return Zalt::Catalogue::readCatalogueFile(file);
}

}  // namespace

LoadedCatalogue loadCatalogue(const std::vector<std::string>& files) {
  LoadedCatalogue loaded;
  for (const std::string& file : files) {
    try {
      loaded.catalogue.append(read(file));
    } catch (const CatalogueError& error) {
      loaded.problems.insert(loaded.problems.end(), error.problems().begin(), error.problems().end());
    }
  }
  return loaded;
}

void printPlaced(std::ostream& out, const std::vector<Finding>& findings) {
  for (const Finding& finding : findings) {
    out << Zalt::Catalogue::placed(finding) << '\n';
  }
}

}  // namespace ZaltCatalogueTool
