// Zalt::Display::DisplayFinding: what the display check finds wrong with what
// an area shows, at the place of the text in its catalogue file.
//
//   for (const Zalt::Display::DisplayFinding& finding : check.findings) {
//     std::cout << Zalt::Display::placed(finding) << '\n';
//   }
#pragma once

#include <Zalt/Catalogue/SourceLocation.h>
#include <Zalt/Display/DisplayExport.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <string>

namespace Zalt {
namespace Display {

struct DisplayFinding {
  enum class Kind {
    // A line of the text that the area shows is wider than the area's box.
    Overflow,
    // The text that the area shows has characters that no font of the
    // chain has: the device would show empty boxes.
    Glyph,
    // The store has no text of the reference, version and language that fits
    // the area's width and lines.
    Unanswered,
  };

  // How far the widest line of an overflowing text runs out of the box.
  struct Overflow {
    std::int64_t pixels;
    std::int64_t box;
    std::int64_t overflow;
  };

  Kind kind;
  Catalogue::SourceLocation location;
  std::string message;
  // The area's name.
  std::string area;
  // For Kind::Overflow only.
  boost::optional<Overflow> overflow;
};

// The kind's name in JSON: "overflow", "glyph" or "unanswered".
ZALT_LTSDISPLAY_EXPORT const char* name(DisplayFinding::Kind kind);

// "FILE:LINE:COLUMN: message", as the catalogue's findings are placed.
ZALT_LTSDISPLAY_EXPORT std::string placed(const DisplayFinding& finding);

}  // namespace Display
}  // namespace Zalt
