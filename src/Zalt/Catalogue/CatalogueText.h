// Zalt::Catalogue::CatalogueText: one localized text read from a catalogue
// file, as the MDIB value that a device store takes, with the place of its
// element in the file.
//
//   for (const CatalogueText& entry : readCatalogueFile("texts.xml")) {
//     texts.push_back(entry.text);
//   }
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/SourceLocation.h>

namespace Zalt {
namespace Catalogue {

struct CatalogueText {
  Tovra::Mdib::LocalizedText text;
  // The start of the text's element: its '<'.
  SourceLocation location;
};

}  // namespace Catalogue
}  // namespace Zalt
