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
//   - a catalogue without any text, or a file without any among files with
//     texts, with a hint: an XLIFF file or an MDIB by its root element, or
//     elements named like texts in another namespace or in none;
//   - each kept text whose declared TextWidth is narrower than its widest
//     line needs (measureText); a text without a TextWidth is not compared;
//   - each kept text, declared width or not, that holds a control character
//     no display can place (a tab, say), at its first one.
//
//   const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile("texts.xml");
//   const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(catalogue);
//   for (const Zalt::Catalogue::Finding& finding : check.findings) {
//     std::cerr << Zalt::Catalogue::placed(finding) << '\n';
//   }
//   store->add(Zalt::Catalogue::keptTexts(catalogue, check));  // what the store keeps
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/TextMeasure.h>

#include <cstddef>
#include <vector>

namespace Zalt {
namespace Catalogue {

struct CatalogueCheck {
  // The files without texts in file order, then the others in the order of
  // the texts they stand at; the failed language check, if any, comes last
  // and stands at the first text of the offending reference and version.
  // Empty exactly when every file holds texts and a device store takes every
  // one of them in one add without an error.
  std::vector<Finding> findings;
  // The indexes, ascending, of the texts that the store keeps.
  std::vector<std::size_t> kept;
  // The same indexes in the order of the store's keys: reference, language,
  // version newest first, absent width first, then number of lines.
  std::vector<std::size_t> keyOrder;
};

// The verdicts are those of the device store's own checks, with its messages,
// without building a store per text; widths are measured in `unit`. Throws
// only what allocation throws.
ZALT_LTSCATALOGUE_EXPORT CatalogueCheck checkCatalogue(const Catalogue& catalogue,
                                                       WidthUnit unit = WidthUnit::Fullwidth);

// Copies of the texts of `catalogue` that the store keeps, by `check` of it,
// in the store's key order, so that one add files each at the end of the
// store's table: what one add of them files without an error of its own.
ZALT_LTSCATALOGUE_EXPORT std::vector<Tovra::Mdib::LocalizedText> keptTexts(const Catalogue& catalogue,
                                                                           const CatalogueCheck& check);

}  // namespace Catalogue
}  // namespace Zalt
