// Zalt::Catalogue::checkCatalogue: finds, in one pass, every problem that a
// device store would meet if it were given the catalogue in one add, where
// the store itself reports only the first and drops duplicates in silence:
//
//   - each text that the store rejects, with the store's message;
//   - each text that the store drops because an earlier one has the same
//     reference, language, version, width and number of lines;
//   - each reference and version whose languages differ from those that most
//     others have;
//   - the store's own message if its language check fails.
//
//   CatalogueCheck check = checkCatalogue(readCatalogueFile("texts.xml"));
//   for (const Finding& finding : check.findings) { ... }
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CatalogueText.h>
#include <Zalt/Catalogue/Finding.h>

#include <vector>

namespace Zalt {
namespace Catalogue {

struct CatalogueCheck {
  // In the order of the texts they stand at; the failed language check, if
  // any, comes last and stands at the first text of the offending reference
  // and version. Empty exactly when a device store takes every text in one
  // add without an error.
  std::vector<Finding> findings;
  // The texts that the store keeps, in catalogue order.
  std::vector<CatalogueText> kept;
};

// Texts from several files form one catalogue in the order given. Throws only
// what allocation throws.
ZALT_LTSCATALOGUE_EXPORT CatalogueCheck checkCatalogue(const std::vector<CatalogueText>& texts);

}  // namespace Catalogue
}  // namespace Zalt
