// Zalt::Display::readDisplayProfile: reads a display profile, a JSON file
// that a device's maker writes once:
//
//   {"fonts": [{"file": "DejaVuSans.ttf"}, {"file": "fallback.ttc", "index": 1}],
//    "languageFonts": {"ja-JP": [{"file": "fallback.ttc", "index": 1}]},
//    "areas": [{"name": "alarm banner", "textWidth": "xl", "lines": 2,
//               "size": 18, "width": 200, "lineHeight": 22}]}
//
// "fonts" and "areas" are required and not empty; a font's "index" (its face
// in a collection) defaults to 0; "languageFonts" replaces the chain for the
// languages it names (ll-CC). Font files are named relative to the profile.
//
//   const Zalt::Display::DisplayProfile profile = Zalt::Display::readDisplayProfile("monitor.json");
#pragma once

#include <Zalt/Display/DisplayExport.h>
#include <Zalt/Display/DisplayProfile.h>

#include <string>

namespace Zalt {
namespace Display {

// Throws Zalt::Catalogue::CatalogueError with a finding of kind File for each
// problem at its line and column, named by `path` as given: a file that
// cannot be read (line 0) or is not JSON (its first syntax error), and every
// unknown, missing or duplicate key, value of the wrong type or out of range,
// font file that cannot be read and face index that the file lacks.
ZALT_LTSDISPLAY_EXPORT DisplayProfile readDisplayProfile(const std::string& path);

}  // namespace Display
}  // namespace Zalt
