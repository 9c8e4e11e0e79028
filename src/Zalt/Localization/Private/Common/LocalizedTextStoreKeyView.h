// Zalt::Localization::Impl::LocalizedTextStoreKeyView: a store key whose
// reference and language tag are views of strings owned elsewhere, and
// LocalizedTextStoreKeyOrder, the transparent order that compares views and
// keys alike. A lookup searches the table with a view of the caller's own
// reference and language, so that it copies nothing before it descends:
//
//   const LocalizedTextStoreKeyView wanted{reference.ref.get().value(), language.tag(),
//                                          reference.version, reference.textWidth, 1};
//   table.lower_bound(wanted);  // a std::map ordered by LocalizedTextStoreKeyOrder
//
// A view must not outlive the strings it refers to.
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>

#include <boost/optional.hpp>

#include <string_view>

namespace Zalt {
namespace Localization {
namespace Impl {

struct LocalizedTextStoreKeyView {
  std::string_view ref;
  std::string_view languageTag;
  Tovra::Mdib::VersionCounter version;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth;
  NumberOfLines numberOfLines;
};

inline LocalizedTextStoreKeyView viewOf(const LocalizedTextStoreKey& key) {
  return {key.ref.get().value(), key.languageTag.tag(), key.version, key.textWidth, key.numberOfLines};
}

// Negative, zero or positive as `lhs` orders before, with or after `rhs`: the
// one order of the store's keys, which operator< on keys also uses.
inline int compare(const LocalizedTextStoreKeyView& lhs, const LocalizedTextStoreKeyView& rhs) {
  if (const int byRef = lhs.ref.compare(rhs.ref); byRef != 0) {
    return byRef;
  }
  if (const int byTag = lhs.languageTag.compare(rhs.languageTag); byTag != 0) {
    return byTag;
  }
  if (lhs.version != rhs.version) {
    return rhs.version < lhs.version ? -1 : 1;  // newest first
  }
  if (lhs.textWidth != rhs.textWidth) {
    return lhs.textWidth < rhs.textWidth ? -1 : 1;  // boost::optional puts an absent width first
  }
  if (lhs.numberOfLines != rhs.numberOfLines) {
    return lhs.numberOfLines < rhs.numberOfLines ? -1 : 1;
  }
  return 0;
}

struct LocalizedTextStoreKeyOrder {
  using is_transparent = void;

  bool operator()(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKey& rhs) const {
    return compare(viewOf(lhs), viewOf(rhs)) < 0;
  }
  bool operator()(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKeyView& rhs) const {
    return compare(viewOf(lhs), rhs) < 0;
  }
  bool operator()(const LocalizedTextStoreKeyView& lhs, const LocalizedTextStoreKey& rhs) const {
    return compare(lhs, viewOf(rhs)) < 0;
  }
};

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
