// Zalt::Display::checkDisplay: what every area of a device's display shows of
// a catalogue, measured in pixels with the device's fonts.
//
// For every language of the store, every reference and version of the texts
// it keeps and every area of the profile, the text is the device store's own
// best fit for the area's width and lines; each of its lines is shaped with
// the language's font chain (LineShaper.h) and measured at the area's size.
// Findings: no text that fits (unanswered), a line wider than the box
// (overflow, one per text and area, for its widest line), characters that no
// font has (glyph, one per text and area, naming each character).
//
//   const Zalt::Display::DisplayCheck result =
//       Zalt::Display::checkDisplay(profile, catalogue, Zalt::Catalogue::checkCatalogue(catalogue));
//   for (const Zalt::Display::DisplayFinding& finding : result.findings) { ... }
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Display/DisplayExport.h>
#include <Zalt/Display/DisplayFinding.h>
#include <Zalt/Display/DisplayProfile.h>
#include <Zalt/Display/ShownText.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace Zalt {
namespace Display {

struct DisplayCheck {
  // Ordered by their place in the catalogue, then by area in the profile's
  // order, then overflow before glyph before unanswered.
  std::vector<DisplayFinding> findings;
  // How many texts the areas show, counted once per area.
  std::size_t shown = 0;
};

// Called once per text that an area shows, by language (sorted), reference,
// version (both ascending) and area (the profile's order).
using ShownTextVisitor = std::function<void(const ShownText&)>;

// The texts that the store keeps of `catalogue` by `check`, as each area of
// `profile` shows them. Throws only what allocation and `visit` throw.
ZALT_LTSDISPLAY_EXPORT DisplayCheck checkDisplay(const DisplayProfile& profile,
                                                 const Catalogue::Catalogue& catalogue,
                                                 const Catalogue::CatalogueCheck& check,
                                                 const ShownTextVisitor& visit = {});

}  // namespace Display
}  // namespace Zalt
