// Zalt::Catalogue::Private empty-catalogue findings: why a catalogue, or one
// of its files, holds no text, for checkCatalogue to report. A file's root
// element tells an XLIFF file or an MDIB given in a catalogue's place; else
// elements named like texts in another namespace tell the likely mistake.
//
//   if (catalogue.texts.empty()) {
//     findings = Private::emptyCatalogueFindings(catalogue);
//   }
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/Finding.h>

#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {

// For a catalogue without any text: one Empty finding at its first file, or
// one at each misplaced element where the first file's kind tells nothing.
std::vector<Finding> emptyCatalogueFindings(const Catalogue& catalogue);

// For a catalogue with texts: an Empty finding for each of its files that
// yields none, at the file or at that file's misplaced elements.
std::vector<Finding> emptyFileFindings(const Catalogue& catalogue);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
