// Zalt::Display::DisplayProfile: a device's display as the display check sees
// it: its font chain, a chain of its own for some languages, and its areas.
// ReadDisplayProfile.h reads one from a file.
//
//   const Zalt::Display::DisplayProfile profile = Zalt::Display::readDisplayProfile("monitor.json");
//   const Zalt::Display::FontChain& chain = profile.chainFor(Tovra::Locale::LanguageTag("ja-JP"));
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Display/DisplayArea.h>
#include <Zalt/Display/DisplayExport.h>
#include <Zalt/Display/FontChain.h>

#include <map>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

struct ZALT_LTSDISPLAY_EXPORT DisplayProfile {
  // The chain of every language without one of its own.
  FontChain fonts;
  // Chains of their own, by language tag in lower case ("ja-jp").
  std::map<std::string, FontChain> languageFonts;
  // In the order of the profile; their names differ.
  std::vector<DisplayArea> areas;

  // The chain that texts of `language` are drawn with; tags compare without case.
  const FontChain& chainFor(const Tovra::Locale::LanguageTag& language) const;
};

}  // namespace Display
}  // namespace Zalt
