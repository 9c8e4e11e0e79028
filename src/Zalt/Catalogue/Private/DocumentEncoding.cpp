#include <Zalt/Catalogue/Private/DocumentEncoding.h>

#include <algorithm>
#include <array>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

// The encodings that the parser converts itself, by their names and aliases.
constexpr std::array<std::string_view, 11> readEncodings = {
    "UTF-8",      "UTF8",        "UTF-16",      "UTF16",    "UTF-16LE", "UTF-16BE",
    "ISO-8859-1", "ISO-LATIN-1", "ISO LATIN 1", "US-ASCII", "ASCII"};

struct ByteOrderMark {
  std::string_view bytes;
  std::string_view encoding;
  // The names a declaration may give the encoding, the byte order that the
  // mark shows left open; places to spare are empty, as no declared name is.
  std::array<std::string_view, 3> names;
};

constexpr std::array<ByteOrderMark, 3> byteOrderMarks = {{
    {"\xEF\xBB\xBF", "UTF-8", {"UTF-8", "UTF8", ""}},
    {"\xFF\xFE", "UTF-16LE", {"UTF-16", "UTF16", "UTF-16LE"}},
    {"\xFE\xFF", "UTF-16BE", {"UTF-16", "UTF16", "UTF-16BE"}},
}};

// Encoding names are ASCII, and a declaration may spell them in any case.
bool sameName(std::string_view known, std::string_view name) {
  return known.size() == name.size() &&
         std::equal(known.begin(), known.end(), name.begin(), [](char lhs, char rhs) {
           return lhs == (rhs >= 'a' && rhs <= 'z' ? rhs - 'a' + 'A' : rhs);
         });
}

template <std::size_t size>
bool isOneOf(const std::array<std::string_view, size>& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(),
                     [name](std::string_view known) { return sameName(known, name); });
}

}  // namespace

bool isReadEncoding(std::string_view name) { return isOneOf(readEncodings, name); }

std::string_view markedEncoding(std::string_view firstBytes) {
  for (const ByteOrderMark& mark : byteOrderMarks) {
    if (firstBytes.substr(0, mark.bytes.size()) == mark.bytes) {
      return mark.encoding;
    }
  }
  return {};
}

bool fitsMark(std::string_view marked, std::string_view declared) {
  return std::any_of(byteOrderMarks.begin(), byteOrderMarks.end(), [&](const ByteOrderMark& mark) {
    return mark.encoding == marked && isOneOf(mark.names, declared);
  });
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
