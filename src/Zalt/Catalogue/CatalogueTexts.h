// Zalt::Catalogue::CatalogueTexts: what the reader takes from catalogue files:
// the localized texts in document order, the files they come from, and the
// elements that look like texts but stand in another namespace. The texts of
// several files form one catalogue in the order the files are read:
//
//   CatalogueTexts catalogue = readCatalogueFile("texts/de.xml");
//   catalogue.append(readCatalogueFile("texts/en.xml"));
//   store->add(mdibTexts(catalogue.texts));
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CatalogueText.h>
#include <Zalt/Catalogue/MisplacedElement.h>

#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

struct ZALT_LTSCATALOGUE_EXPORT CatalogueTexts {
  // The files read, as their names were given, in order.
  std::vector<std::string> files;
  std::vector<CatalogueText> texts;
  // At most the first element of each name and namespace per file.
  std::vector<MisplacedElement> misplaced;

  // Moves the files, texts and misplaced elements of `other` behind these.
  void append(CatalogueTexts&& other);
};

}  // namespace Catalogue
}  // namespace Zalt
