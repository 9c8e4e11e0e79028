#include <Zalt/Localization/LocalizedTextFilter.h>

#include <utility>

namespace Zalt {
namespace Localization {

LocalizedTextFilter::LocalizedTextFilter(std::set<Tovra::Mdib::LocalizedTextRef>&& refs,
                                         const boost::optional<Tovra::Mdib::VersionCounter>& version,
                                         std::set<Tovra::Locale::LanguageTag>&& languageTags,
                                         std::set<Tovra::Mdib::LocalizedTextWidth>&& textWidths,
                                         std::set<NumberOfLines>&& numberOfLines)
    : m_refs(std::move(refs)),
      m_version(version),
      m_languageTags(std::move(languageTags)),
      m_textWidths(std::move(textWidths)),
      m_numberOfLines(std::move(numberOfLines)) {
  // A moved-from set is only "valid but unspecified"; callers are promised empty sets.
  refs.clear();
  languageTags.clear();
  textWidths.clear();
  numberOfLines.clear();
}

}  // namespace Localization
}  // namespace Zalt
