#include <Tovra/Locale/LanguageTag.h>

#include <Tovra/Format/Stream.h>

#include <ostream>
#include <utility>

namespace Tovra {
namespace Locale {
namespace {

// Deliberately not std::isalpha: the answer must not depend on the global locale.
bool isAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

}  // namespace

LanguageTag::LanguageTag(std::string tag) : m_tag(std::move(tag)) {}

bool LanguageTag::is2LetterLangAnd2LetterCountry() const {
  return m_tag.size() == 5 && isAsciiLetter(m_tag[0]) && isAsciiLetter(m_tag[1]) && m_tag[2] == '-' &&
         isAsciiLetter(m_tag[3]) && isAsciiLetter(m_tag[4]);
}

bool operator==(const LanguageTag& lhs, const LanguageTag& rhs) { return lhs.tag() == rhs.tag(); }

bool operator!=(const LanguageTag& lhs, const LanguageTag& rhs) { return !(lhs == rhs); }

bool operator<(const LanguageTag& lhs, const LanguageTag& rhs) { return lhs.tag() < rhs.tag(); }

std::ostream& operator<<(std::ostream& out, const LanguageTag& tag) { return out << tag.tag(); }

Format::Stream& operator<<(Format::Stream& out, const LanguageTag& tag) { return out << tag.tag(); }

}  // namespace Locale
}  // namespace Tovra
