#include <Tovra/Locale/Utf8.h>

#include <Tovra/Format/Stream.h>

#include <ostream>
#include <utility>

namespace Tovra {
namespace Locale {

Utf8::Utf8(const char* text) : m_value(text) {}

Utf8::Utf8(std::string text) : m_value(std::move(text)) {}

bool operator==(const Utf8& lhs, const Utf8& rhs) { return lhs.value() == rhs.value(); }

bool operator!=(const Utf8& lhs, const Utf8& rhs) { return !(lhs == rhs); }

// std::string compares through char_traits<char>, which orders bytes as unsigned char.
bool operator<(const Utf8& lhs, const Utf8& rhs) { return lhs.value() < rhs.value(); }

std::ostream& operator<<(std::ostream& out, const Utf8& text) { return out << text.value(); }

Format::Stream& operator<<(Format::Stream& out, const Utf8& text) { return out << text.value(); }

}  // namespace Locale
}  // namespace Tovra
