// Zalt::Localization::LocalizedText: the answer of a text lookup. It is the
// MDIB text (text, language, reference, version, width) plus the number of
// lines of the text, which the MDIB value does not carry.
//
//   LocalizedText answer = store->text(reference, language);
//   if (!answer.text().empty()) render(answer.text().value(), answer.numberOfLines());
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/LtsExport.h>

#include <iosfwd>

namespace Tovra {
namespace Format {
class Stream;
}
}  // namespace Tovra

namespace Zalt {
namespace Localization {

class ZALT_LTS_EXPORT LocalizedText : public Tovra::Mdib::LocalizedText {
public:
  LocalizedText(Tovra::Mdib::LocalizedText text, NumberOfLines numberOfLines);
  LocalizedText(Tovra::Locale::Utf8 text, boost::optional<Tovra::Locale::LanguageTag> lang,
                Tovra::Mdib::LocalizedTextRef ref, boost::optional<Tovra::Mdib::VersionCounter> version,
                boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth, NumberOfLines numberOfLines);

  // The answer for "nothing fits": empty text, no language, empty reference,
  // no version, no width, one line.
  static LocalizedText empty();

  NumberOfLines numberOfLines() const { return m_numberOfLines; }

private:
  NumberOfLines m_numberOfLines;
};

// Equal when the MDIB parts and the numbers of lines are equal.
ZALT_LTS_EXPORT bool operator==(const LocalizedText& lhs, const LocalizedText& rhs);
ZALT_LTS_EXPORT bool operator!=(const LocalizedText& lhs, const LocalizedText& rhs);

// "(de-DE:'Herz', ref=hr, refVersion=3, width=Medium, numberOfLines=1)"; the
// language, ref, version and width pieces appear only when present (ref: non-empty).
ZALT_LTS_EXPORT Tovra::Format::Stream& operator<<(Tovra::Format::Stream& out, const LocalizedText& text);
// The same bytes, up to the first NUL byte of the text or the reference.
ZALT_LTS_EXPORT std::ostream& operator<<(std::ostream& out, const LocalizedText& text);

}  // namespace Localization
}  // namespace Zalt
