// Zalt::Catalogue::checkCatalogue: finds, in one pass, every problem that a
// device store would meet if it were given the catalogue in one add, where
// the store itself reports only the first and drops duplicates in silence:
//
//   - each text that the store rejects, with the store's message;
//   - each text that the store drops because an earlier one has the same
//     reference, language, version, width and number of lines;
//   - each reference and version that lacks a language which at least half of
//     all references and versions have, or has one which fewer than half have;
//   - the store's own message if its language check fails;
//   - a catalogue without any text, with a hint where elements named like
//     texts stand in another namespace or in none;
//   - each kept text whose declared TextWidth is narrower than its widest
//     line needs (measureText); a text without a TextWidth is not compared.
//
//   CatalogueCheck check = checkCatalogue(readCatalogueFile("texts.xml"));
//   for (const Finding& finding : check.findings) { ... }
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CatalogueTexts.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/TextMeasure.h>

#include <cstddef>
#include <vector>

namespace Zalt {
namespace Catalogue {

struct CatalogueCheck {
  // In the order of the texts they stand at; the failed language check, if
  // any, comes last and stands at the first text of the offending reference
  // and version. Empty exactly when the catalogue holds texts and a device
  // store takes every one of them in one add without an error.
  std::vector<Finding> findings;
  // The indexes, ascending, of the texts that the store keeps.
  std::vector<std::size_t> kept;
};

// The verdicts are those of the device store's own checks, with its messages,
// without building a store per text; widths are measured in `unit`. Throws
// only what allocation throws.
ZALT_LTSCATALOGUE_EXPORT CatalogueCheck checkCatalogue(const CatalogueTexts& catalogue,
                                                       WidthUnit unit = WidthUnit::Fullwidth);

}  // namespace Catalogue
}  // namespace Zalt
