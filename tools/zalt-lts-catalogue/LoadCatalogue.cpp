#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <iostream>
#include <iterator>

namespace ZaltCatalogueTool {

boost::optional<std::vector<Zalt::Catalogue::CatalogueText>> loadCatalogue(
    const std::vector<std::string>& files) {
  std::vector<Zalt::Catalogue::CatalogueText> texts;
  bool failed = false;
  for (const std::string& file : files) {
    try {
      std::vector<Zalt::Catalogue::CatalogueText> read = Zalt::Catalogue::readCatalogueFile(file);
      texts.insert(texts.end(), std::make_move_iterator(read.begin()), std::make_move_iterator(read.end()));
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
