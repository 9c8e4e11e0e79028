// Zalt::Catalogue::CatalogueText: one localized text read from a catalogue
// file, as the MDIB value that a device store takes, with the place of its
// element in the file.
//
//   const std::vector<CatalogueText> entries = readCatalogueFile("texts.xml");
//   store->add(mdibTexts(entries));
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <vector>

namespace Zalt {
namespace Catalogue {

struct CatalogueText {
  Tovra::Mdib::LocalizedText text;
  // The start of the text's element: its '<'.
  SourceLocation location;
};

// The texts of `entries` in their order, without their places: what a device
// store's add takes. The rvalue form moves the texts out instead of copying.
ZALT_LTSCATALOGUE_EXPORT std::vector<Tovra::Mdib::LocalizedText> mdibTexts(
    const std::vector<CatalogueText>& entries);
ZALT_LTSCATALOGUE_EXPORT std::vector<Tovra::Mdib::LocalizedText> mdibTexts(
    std::vector<CatalogueText>&& entries);

}  // namespace Catalogue
}  // namespace Zalt
