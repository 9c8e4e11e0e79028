// Tovra::Locale::Utf8: a UTF-8 string value.
//
// It holds the bytes it is given and never validates them, so that code which
// receives text from outside can decide itself how to treat malformed input.
// Comparison is byte-wise on unsigned bytes; a proper prefix orders first.
//
//   Tovra::Locale::Utf8 text("Herz");
//   text.value();  // "Herz"
#pragma once

#include <Tovra/Utils/UtilsExport.h>

#include <iosfwd>
#include <string>

namespace Tovra {
namespace Format {
class Stream;
}

namespace Locale {

class TOVRA_UTILS_EXPORT Utf8 {
public:
  Utf8() = default;
  // The bytes up to the terminating NUL.
  Utf8(const char* text);  // NOLINT(google-explicit-constructor): literals read naturally
  explicit Utf8(std::string text);

  // The bytes as given.
  const std::string& value() const { return m_value; }
  bool empty() const { return m_value.empty(); }

private:
  std::string m_value;
};

TOVRA_UTILS_EXPORT bool operator==(const Utf8& lhs, const Utf8& rhs);
TOVRA_UTILS_EXPORT bool operator!=(const Utf8& lhs, const Utf8& rhs);
TOVRA_UTILS_EXPORT bool operator<(const Utf8& lhs, const Utf8& rhs);

// Both write the bytes unchanged.
TOVRA_UTILS_EXPORT std::ostream& operator<<(std::ostream& out, const Utf8& text);
TOVRA_UTILS_EXPORT Format::Stream& operator<<(Format::Stream& out, const Utf8& text);

}  // namespace Locale
}  // namespace Tovra
