#include <Zalt/Catalogue/LanguageCase.h>

#include <algorithm>
#include <string>

namespace Zalt {
namespace Catalogue {
namespace {

// ASCII only: the classic locale's tolower would do the same, a user's locale not.
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

Tovra::Locale::LanguageTag canonicalLanguage(const Tovra::Locale::LanguageTag& tag) {
  if (!tag.is2LetterLangAnd2LetterCountry()) {
    return tag;
  }
  const std::string& text = tag.tag();
  return Tovra::Locale::LanguageTag(
      std::string{lower(text[0]), lower(text[1]), '-', upper(text[3]), upper(text[4])});
}

bool sameLanguage(const Tovra::Locale::LanguageTag& lhs, const Tovra::Locale::LanguageTag& rhs) {
  const std::string& left = lhs.tag();
  const std::string& right = rhs.tag();
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char l, char r) { return lower(l) == lower(r); });
}

}  // namespace Catalogue
}  // namespace Zalt
