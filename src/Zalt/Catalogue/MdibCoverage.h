// Zalt::Catalogue MDIB coverage: the texts that a device's MDIB names by
// reference, read from its XML document, and whether a catalogue holds each of
// them in the version and the languages the device will ask for.
//
//   const Zalt::Catalogue::MdibTexts mdib = Zalt::Catalogue::readMdibTextsFile("mdib.xml");
//   const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile("texts.xml");
//   const Zalt::Catalogue::CoverageCheck coverage =
//       Zalt::Catalogue::checkCoverage(mdib, catalogue, Zalt::Catalogue::checkCatalogue(catalogue));
//   for (const Zalt::Catalogue::Finding& finding : coverage.findings) {
//     std::cerr << Zalt::Catalogue::placed(finding) << '\n';
//   }
//
//
// ReadMdibTexts.h reads the MDIB; the check is here.
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/ReadMdibTexts.h>

#include <cstddef>
#include <vector>

namespace Zalt {
namespace Catalogue {

struct CoverageCheck {
  // Empty where the MDIB names no text; the findings of the uses in their
  // order (Missing, Version, Language and Inline), then the Unused ones in catalogue order.
  std::vector<Finding> findings;
  // The distinct references that the uses name, each counted once.
  std::size_t referencesNamed = 0;
  // The uses that name a text by reference: a reference named in a
  // descriptor and in its state is two.
  std::size_t uses = 0;
  // The references of which the catalogue holds every use's version in every
  // language it holds.
  std::size_t covered = 0;
};

// Checks the uses of `mdib` against the texts of `catalogue` that a store keeps
// by `check` of it; the languages of the catalogue are those of its kept texts.
//   - Missing: a reference in its version (without a Version, the latest one
//     the catalogue holds for it) lacks some of those languages, once per
//     reference and version, or the catalogue has no text for it at all;
//   - Version: the catalogue holds the reference, but not in the version named;
//   - Language: a use's Lang is not one of the catalogue's languages;
//   - Unused: a reference of the catalogue that no use names, at its first
//     kept text; left out with `allowUnused`;
//   - Inline: each text given inline;
//   - Empty: the MDIB names no text at all, by reference or inline; or the
//     catalogue holds no text, with the findings of `check` that say why,
//     in place of a Missing finding for every reference.
// Sorts the kept texts once and looks each use up in them: the cost grows as
// n log n in the kept texts and as log n per use.
ZALT_LTSCATALOGUE_EXPORT CoverageCheck checkCoverage(const MdibTexts& mdib, const Catalogue& catalogue,
                                                     const CatalogueCheck& check, bool allowUnused = false);

}  // namespace Catalogue
}  // namespace Zalt
