#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <iostream>

namespace ZaltCatalogueTool {

boost::optional<Zalt::Catalogue::CatalogueTexts> loadCatalogue(const std::vector<std::string>& files) {
  Zalt::Catalogue::CatalogueTexts texts;
  bool failed = false;
  for (const std::string& file : files) {
    try {
      texts.append(Zalt::Catalogue::readCatalogueFile(file));
    } catch (const Zalt::Catalogue::CatalogueError& error) {
      std::cerr << error.what() << '\n';
      failed = true;
    }
  }
  if (failed) {
    return boost::none;
  }
  return texts;
}

}  // namespace ZaltCatalogueTool
