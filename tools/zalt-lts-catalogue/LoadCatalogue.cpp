#include "LoadCatalogue.h"

#include "Terminal.h"

#include <ostream>

namespace ZaltCatalogueTool {

LoadedCatalogue loadCatalogue(const std::vector<std::string>& files) {
  try {
    return {Zalt::Catalogue::readCatalogueFiles(files), {}};
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    return {{}, error.problems()};
  }
}

void printPlaced(std::ostream& out, const std::vector<Zalt::Catalogue::Finding>& findings) {
  for (const Zalt::Catalogue::Finding& finding : findings) {
    out << escapedForTerminal(Zalt::Catalogue::placed(finding)) << '\n';
  }
}

}  // namespace ZaltCatalogueTool
