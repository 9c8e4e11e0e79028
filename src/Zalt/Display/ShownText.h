// Zalt::Display::ShownText: one text that an area of the display shows, with
// the width of each of its lines in pixels; what the display check hands to
// its caller for every area, language, reference and version.
//
//   checkDisplay(profile, catalogue, check, [](const Zalt::Display::ShownText& shown) {
//     draw(shown.text, profile.areas[shown.area]);
//   });
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

struct ShownText {
  // The index of the area in the profile's areas.
  std::size_t area;
  Tovra::Mdib::LocalizedTextRef ref;
  Tovra::Mdib::VersionCounter version;
  Tovra::Locale::LanguageTag language;
  // The store's answer, UTF-8, with its line breaks (displayLines cuts it).
  std::string text;
  // Where the text stands in its catalogue file.
  Catalogue::SourceLocation location;
  // One per line at the area's size, rounded up; characters without a glyph
  // count nothing.
  std::vector<std::int64_t> linePixels;
  // Whether the text has a finding: a line wider than the box or a character
  // that no font has.
  bool hasFinding;
};

}  // namespace Display
}  // namespace Zalt
