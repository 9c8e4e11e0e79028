// Zalt::Localization::Impl::LocalizedTextStoreKey: the key under which the
// core store files one text. Its order keeps every text of a reference and
// language together, newest version first, and within a version runs from the
// texts without a width to the widest one, each by ascending number of lines:
//
//   hr de-DE v3 (no width, 1)  hr de-DE v3 (Small, 1)  hr de-DE v3 (Small, 2)
//   hr de-DE v2 ...            hr en-US v3 ...
//
// The store's lookups rely on that order: a lower bound lands on the start of
// one reference, language and version, and the walk from there stays inside it.
//
//   LocalizedTextStoreKey key{ref, LanguageTag("de-DE"), VersionCounter(3), boost::none, 1};
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/LtsExport.h>

#include <boost/optional.hpp>

namespace Zalt {
namespace Localization {
namespace Impl {

struct ZALT_LTS_EXPORT LocalizedTextStoreKey {
  Tovra::Mdib::LocalizedTextRef ref;
  Tovra::Locale::LanguageTag languageTag;
  Tovra::Mdib::VersionCounter version;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth;
  NumberOfLines numberOfLines;
};

// Strict weak order: reference and language tag byte-wise, version descending,
// an absent width before the narrowest one, then number of lines ascending.
ZALT_LTS_EXPORT bool operator<(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKey& rhs);

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
