// Tovra::Locale::LanguageTag: a language tag such as "en-US", kept as written.
//
// Tags are compared and ordered byte-wise on their text, with no case folding:
// "en-US" and "en-us" are different tags.
//
//   Tovra::Locale::LanguageTag tag("de-DE");
//   tag.is2LetterLangAnd2LetterCountry();  // true
#pragma once

#include <Tovra/Utils/UtilsExport.h>

#include <iosfwd>
#include <string>

namespace Tovra {
namespace Format {
class Stream;
}

namespace Locale {

class TOVRA_UTILS_EXPORT LanguageTag {
public:
  // The empty tag, which orders before every other tag.
  LanguageTag() = default;
  explicit LanguageTag(std::string tag);

  const std::string& tag() const { return m_tag; }

  // True exactly for five bytes "LL-LL", each L an ASCII letter of either case.
  bool is2LetterLangAnd2LetterCountry() const;

private:
  std::string m_tag;
};

TOVRA_UTILS_EXPORT bool operator==(const LanguageTag& lhs, const LanguageTag& rhs);
TOVRA_UTILS_EXPORT bool operator!=(const LanguageTag& lhs, const LanguageTag& rhs);
TOVRA_UTILS_EXPORT bool operator<(const LanguageTag& lhs, const LanguageTag& rhs);

// Both write the tag text.
TOVRA_UTILS_EXPORT std::ostream& operator<<(std::ostream& out, const LanguageTag& tag);
TOVRA_UTILS_EXPORT Format::Stream& operator<<(Format::Stream& out, const LanguageTag& tag);

}  // namespace Locale
}  // namespace Tovra
