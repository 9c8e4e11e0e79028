#include <Zalt/Display/DisplayProfile.h>

#include <algorithm>
#include <cctype>

namespace Zalt {
namespace Display {

const FontChain& DisplayProfile::chainFor(const Tovra::Locale::LanguageTag& language) const {
  std::string key = language.tag();
  std::transform(key.begin(), key.end(), key.begin(), [](char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  });
  const auto found = languageFonts.find(key);
  return found == languageFonts.end() ? fonts : found->second;
}

}  // namespace Display
}  // namespace Zalt
