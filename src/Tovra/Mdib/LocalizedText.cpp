#include <Tovra/Mdib/LocalizedText.h>

#include <utility>

namespace Tovra {
namespace Mdib {

LocalizedText::LocalizedText(Locale::Utf8 text) : m_text(std::move(text)) {}

LocalizedText::LocalizedText(Locale::Utf8 text, boost::optional<Locale::LanguageTag> lang,
                             LocalizedTextRef ref, boost::optional<VersionCounter> version,
                             boost::optional<LocalizedTextWidth> textWidth)
    : m_text(std::move(text)),
      m_lang(std::move(lang)),
      m_ref(std::move(ref)),
      m_version(std::move(version)),
      m_textWidth(textWidth) {}

bool operator==(const LocalizedText& lhs, const LocalizedText& rhs) {
  return lhs.text() == rhs.text() && lhs.lang() == rhs.lang() && lhs.ref() == rhs.ref() &&
         lhs.version() == rhs.version() && lhs.textWidth() == rhs.textWidth();
}

bool operator!=(const LocalizedText& lhs, const LocalizedText& rhs) { return !(lhs == rhs); }

}  // namespace Mdib
}  // namespace Tovra
