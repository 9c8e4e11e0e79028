// Zalt::Catalogue language case: ll-CC tags as the store's users write them.
// Tags do not differ by case, but the store compares them byte for byte, so a
// tag read from elsewhere (an XLIFF file, the command line) is taken in the
// canonical case before it reaches the store.
//
//   Zalt::Catalogue::canonicalLanguage(LanguageTag("it-it"));  // "it-IT"
//   Zalt::Catalogue::sameLanguage(LanguageTag("en-xa"), LanguageTag("EN-XA"));  // true
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Catalogue/CatalogueExport.h>

namespace Zalt {
namespace Catalogue {

// An ll-CC tag with its language in lower case and its country in upper case;
// any other tag as it is.
ZALT_LTSCATALOGUE_EXPORT Tovra::Locale::LanguageTag canonicalLanguage(const Tovra::Locale::LanguageTag& tag);

// Whether the two tags are the same but for the case of their ASCII letters.
ZALT_LTSCATALOGUE_EXPORT bool sameLanguage(const Tovra::Locale::LanguageTag& lhs,
                                           const Tovra::Locale::LanguageTag& rhs);

}  // namespace Catalogue
}  // namespace Zalt
