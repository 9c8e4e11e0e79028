#include <Zalt/Localization/LocalizedText.h>

#include <Tovra/Format/Stream.h>

#include <ostream>
#include <string>
#include <utility>

namespace Zalt {
namespace Localization {

LocalizedText::LocalizedText(Tovra::Mdib::LocalizedText text, NumberOfLines numberOfLines)
    : Tovra::Mdib::LocalizedText(std::move(text)), m_numberOfLines(numberOfLines) {}

LocalizedText::LocalizedText(Tovra::Locale::Utf8 text, boost::optional<Tovra::Locale::LanguageTag> lang,
                             Tovra::Mdib::LocalizedTextRef ref,
                             boost::optional<Tovra::Mdib::VersionCounter> version,
                             boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth,
                             NumberOfLines numberOfLines)
    : Tovra::Mdib::LocalizedText(std::move(text), std::move(lang), std::move(ref), std::move(version),
                                 textWidth),
      m_numberOfLines(numberOfLines) {}

LocalizedText LocalizedText::empty() { return LocalizedText(Tovra::Mdib::LocalizedText(""), 1); }

bool operator==(const LocalizedText& lhs, const LocalizedText& rhs) {
  return static_cast<const Tovra::Mdib::LocalizedText&>(lhs) ==
             static_cast<const Tovra::Mdib::LocalizedText&>(rhs) &&
         lhs.numberOfLines() == rhs.numberOfLines();
}

bool operator!=(const LocalizedText& lhs, const LocalizedText& rhs) { return !(lhs == rhs); }

Tovra::Format::Stream& operator<<(Tovra::Format::Stream& out, const LocalizedText& text) {
  out << "(";
  if (text.lang()) {
    out << *text.lang() << ":";
  }
  out << "'" << text.text() << "'";
  if (!text.ref().get().empty()) {
    out << ", ref=" << text.ref();
  }
  if (text.version()) {
    out << ", refVersion=" << *text.version();
  }
  if (text.textWidth()) {
    out << ", width=" << *text.textWidth();
  }
  return out << ", numberOfLines=" << text.numberOfLines() << ")";
}

// Built through the Format stream so that both forms stay byte-identical; the
// hand-over through cStr() is why a NUL byte ends the std::ostream form.
std::ostream& operator<<(std::ostream& out, const LocalizedText& text) {
  Tovra::Format::Stream formatted;
  formatted << text;
  return out << std::string(formatted.cStr());
}

}  // namespace Localization
}  // namespace Zalt
