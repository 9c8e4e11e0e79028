// Zalt::Localization::LocalizedTextFilter: one query for localized texts:
// which text references, which version, which languages, which widths and
// which numbers of lines are wanted. An empty set places no restriction on
// its field; an empty set of references means every text reference.
//
//   LocalizedTextFilter filter({LocalizedTextRef(Utf8("hr"))}, VersionCounter(3),
//                              {LanguageTag("de-DE")}, {}, {});
//   static_cast<LocalizedTextStoreImpl&>(*store).localizedTexts(filter);
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/LtsExport.h>

#include <boost/optional.hpp>
#include <boost/optional/optional_io.hpp>

#include <set>

namespace Zalt {
namespace Localization {

class ZALT_LTS_EXPORT LocalizedTextFilter {
public:
  // The four sets are moved in (the caller's sets are left empty); the version is copied.
  LocalizedTextFilter(std::set<Tovra::Mdib::LocalizedTextRef>&& refs,
                      const boost::optional<Tovra::Mdib::VersionCounter>& version,
                      std::set<Tovra::Locale::LanguageTag>&& languageTags,
                      std::set<Tovra::Mdib::LocalizedTextWidth>&& textWidths,
                      std::set<NumberOfLines>&& numberOfLines);

  const std::set<Tovra::Mdib::LocalizedTextRef>& refs() const { return m_refs; }
  const boost::optional<Tovra::Mdib::VersionCounter>& version() const { return m_version; }
  const std::set<Tovra::Locale::LanguageTag>& languageTags() const { return m_languageTags; }
  const std::set<Tovra::Mdib::LocalizedTextWidth>& textWidths() const { return m_textWidths; }
  const std::set<NumberOfLines>& numberOfLines() const { return m_numberOfLines; }

private:
  std::set<Tovra::Mdib::LocalizedTextRef> m_refs;
  boost::optional<Tovra::Mdib::VersionCounter> m_version;
  std::set<Tovra::Locale::LanguageTag> m_languageTags;
  std::set<Tovra::Mdib::LocalizedTextWidth> m_textWidths;
  std::set<NumberOfLines> m_numberOfLines;
};

}  // namespace Localization
}  // namespace Zalt
