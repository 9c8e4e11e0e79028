// Zalt::Localization::makeFilters: turns the references a consumer still needs
// into the fewest query filters that fetch them in one language: one filter
// per distinct (version, width, number of lines), naming every text reference
// that shares it.
//
//   LocalizedTextReferenceStore missing = ...;
//   std::vector<FilterAndReferences> requests =
//       makeFilters(missing.data(), LanguageTag("de-DE"));
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Localization/FilterAndReferences.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/LtsExport.h>

#include <set>
#include <vector>

namespace Zalt {
namespace Localization {

// One element per (version, width, number of lines) of `references`, ordered by
// version, then width, then number of lines, an absent width or number first.
// Each filter asks for `language` only; an absent width or number of lines
// leaves the filter's set for it empty. Throws only std::bad_alloc or std::length_error.
ZALT_LTS_EXPORT std::vector<FilterAndReferences> makeFilters(
    const std::set<LocalizedTextReference>& references, const Tovra::Locale::LanguageTag& language);

}  // namespace Localization
}  // namespace Zalt
