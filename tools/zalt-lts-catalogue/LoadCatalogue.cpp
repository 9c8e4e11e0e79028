#include "LoadCatalogue.h"

#include "Terminal.h"

#include <ostream>

namespace ZaltCatalogueTool {

void printPlaced(std::ostream& out, const std::vector<Zalt::Catalogue::Finding>& findings) {
  for (const Zalt::Catalogue::Finding& finding : findings) {
    out << escapedForTerminal(Zalt::Catalogue::placed(finding)) << '\n';
  }
}

}  // namespace ZaltCatalogueTool
