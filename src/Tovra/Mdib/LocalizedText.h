// Tovra::Mdib::LocalizedText: one localized text as the MDIB carries it: the
// text, its optional language, its reference, its optional version and its
// optional width. A plain value; it accepts incomplete texts so that whoever
// receives them can decide how to reject them.
//
//   Tovra::Mdib::LocalizedText text(Tovra::Locale::Utf8("Herz"),
//                                   Tovra::Locale::LanguageTag("de-DE"),
//                                   Tovra::Mdib::LocalizedTextRef(Tovra::Locale::Utf8("hr")),
//                                   Tovra::Mdib::VersionCounter(3),
//                                   Tovra::Mdib::LocalizedTextWidth::Medium);
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Locale/Utf8.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/MdibExport.h>
#include <Tovra/Mdib/VersionCounter.h>

#include <boost/optional.hpp>
#include <boost/optional/optional_io.hpp>

namespace Tovra {
namespace Mdib {

class TOVRA_MDIB_EXPORT LocalizedText {
public:
  // A text with no language, an empty reference, no version and no width.
  explicit LocalizedText(Locale::Utf8 text);
  LocalizedText(Locale::Utf8 text, boost::optional<Locale::LanguageTag> lang, LocalizedTextRef ref,
                boost::optional<VersionCounter> version, boost::optional<LocalizedTextWidth> textWidth);

  const Locale::Utf8& text() const { return m_text; }
  const boost::optional<Locale::LanguageTag>& lang() const { return m_lang; }
  const LocalizedTextRef& ref() const { return m_ref; }
  const boost::optional<VersionCounter>& version() const { return m_version; }
  const boost::optional<LocalizedTextWidth>& textWidth() const { return m_textWidth; }

private:
  Locale::Utf8 m_text;
  boost::optional<Locale::LanguageTag> m_lang;
  LocalizedTextRef m_ref;
  boost::optional<VersionCounter> m_version;
  boost::optional<LocalizedTextWidth> m_textWidth;
};

// Equal when all five fields are equal.
TOVRA_MDIB_EXPORT bool operator==(const LocalizedText& lhs, const LocalizedText& rhs);
TOVRA_MDIB_EXPORT bool operator!=(const LocalizedText& lhs, const LocalizedText& rhs);

}  // namespace Mdib
}  // namespace Tovra
