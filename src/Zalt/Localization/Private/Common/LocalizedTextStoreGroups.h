// What the core store's lookups, list queries and checks share about the
// table: the group of a key (its reference, language and version), the keys
// that order first within a group or a reference, and the values an entry
// becomes in an answer.
//
//   for (auto it = table.lower_bound(groupStart(ref, language, version));
//        it != table.end() && isSameGroup(it->first, groupStart(ref, language, version)); ++it)
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKeyView.h>

#include <cstdint>
#include <limits>
#include <map>
#include <string_view>

namespace Zalt {
namespace Localization {
namespace Impl {

using Entry = std::map<LocalizedTextStoreKey, Tovra::Locale::Utf8>::value_type;

// A group is the texts of one reference, language and version; every lookup
// and every list query works group by group.
inline bool isSameGroup(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKeyView& rhs) {
  return lhs.ref.get().value() == rhs.ref && lhs.languageTag.tag() == rhs.languageTag &&
         lhs.version == rhs.version;
}

inline bool isSameGroup(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKey& rhs) {
  return isSameGroup(lhs, viewOf(rhs));
}

// Orders before every stored key of its group, since no absent width can be
// beaten and every stored text has at least one line.
inline LocalizedTextStoreKeyView groupStart(std::string_view ref, std::string_view language,
                                            const Tovra::Mdib::VersionCounter& version) {
  return LocalizedTextStoreKeyView{ref, language, version, boost::none, 1};
}

inline Tovra::Mdib::VersionCounter newestVersion() {
  return Tovra::Mdib::VersionCounter(std::numeric_limits<std::uint64_t>::max());
}

// The empty tag and the newest possible version order before every stored key of `ref`.
inline LocalizedTextStoreKeyView referenceStart(std::string_view ref) {
  return groupStart(ref, {}, newestVersion());
}

inline Tovra::Mdib::LocalizedText toMdibText(const Entry& entry) {
  const LocalizedTextStoreKey& key = entry.first;
  return Tovra::Mdib::LocalizedText(entry.second, key.languageTag, key.ref, key.version, key.textWidth);
}

inline LocalizedText toLocalizedText(const Entry& entry) {
  return LocalizedText(toMdibText(entry), entry.first.numberOfLines);
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
