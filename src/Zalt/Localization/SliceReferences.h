// Zalt::Localization::sliceReferences: cuts a set of references that is too
// large for one request into two halves by position; a caller halves again as
// often as it needs.
//
//   std::set<LocalizedTextReference> wanted = ...;
//   if (auto halves = sliceReferences(std::move(wanted))) {
//     request(halves->first);
//     request(halves->second);
//   }
#pragma once

#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/LtsExport.h>

#include <boost/optional.hpp>

#include <set>
#include <utility>

namespace Zalt {
namespace Localization {

// The first floor(n/2) references and the remaining ones, or none below two
// references. The references are copied: `references` keeps all its entries.
ZALT_LTS_EXPORT boost::optional<std::pair<std::set<LocalizedTextReference>, std::set<LocalizedTextReference>>>
sliceReferences(std::set<LocalizedTextReference>&& references);

}  // namespace Localization
}  // namespace Zalt
