// Zalt::Localization::FilterAndReferences: one query filter made by
// makeFilters, together with the references it was made for, so that a
// consumer can tell which of its references an answer to the filter satisfies.
//
//   for (auto& request : makeFilters(wanted, LanguageTag("de-DE"))) {
//     send(request.filter);
//     pending.push_back(std::move(request.references));
//   }
#pragma once

#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/LtsExport.h>

#include <set>

namespace Zalt {
namespace Localization {

struct ZALT_LTS_EXPORT FilterAndReferences {
  LocalizedTextFilter filter;
  // Every reference that `filter` asks for, in their own order.
  std::set<LocalizedTextReference> references;
};

}  // namespace Localization
}  // namespace Zalt
