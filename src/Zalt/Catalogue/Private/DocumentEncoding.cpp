#include <Zalt/Catalogue/Private/DocumentEncoding.h>

#include <Zalt/Catalogue/Private/CodePoints.h>

#include <boost/optional.hpp>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

// The parser could convert UTF-16 and ISO-8859-1 itself, but into a buffer of
// its own that it then overwrites while parsing, and whose layout (what
// becomes of the byte-order mark, of an unpaired surrogate) is its private
// choice. Every place in a converted file would then hang on mirroring that
// choice byte for byte. Converting here, before anything else, gives one
// UTF-8 document whose offsets the line index and every check share, whatever
// the file's encoding.

namespace Zalt {
namespace Catalogue {
namespace Impl {
namespace {

struct EncodingDeclaration {
  std::size_t offset;
  std::string_view name;
};

bool isXmlSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::size_t skipSpace(std::string_view text, std::size_t at) {
  while (at < text.size() && isXmlSpace(text[at])) {
    ++at;
  }
  return at;
}

// The encoding name of the XML declaration that opens `document`, if any. A
// declaration that is not well-formed is left to the parser to refuse.
boost::optional<EncodingDeclaration> declaredEncoding(std::string_view document) {
  const std::string_view open = "<?xml";
  if (document.substr(0, open.size()) != open || document.size() <= open.size() ||
      !isXmlSpace(document[open.size()])) {
    return boost::none;
  }
  const std::string_view declaration = document.substr(0, document.find("?>"));
  const std::size_t keyword = declaration.find("encoding");
  if (keyword == std::string_view::npos) {
    return boost::none;
  }
  std::size_t at = skipSpace(declaration, keyword + std::strlen("encoding"));
  if (at >= declaration.size() || declaration[at] != '=') {
    return boost::none;
  }
  at = skipSpace(declaration, at + 1);
  if (at >= declaration.size() || (declaration[at] != '"' && declaration[at] != '\'')) {
    return boost::none;
  }
  const std::size_t end = declaration.find(declaration[at], at + 1);
  if (end == std::string_view::npos) {
    return boost::none;
  }
  return EncodingDeclaration{at + 1, declaration.substr(at + 1, end - at - 1)};
}

bool equalsIgnoringAsciiCase(std::string_view lhs, std::string_view rhs) {
  return lhs.size() == rhs.size() && std::equal(lhs.begin(), lhs.end(), rhs.begin(), [](char a, char b) {
           const auto lower = [](char c) {
             return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
           };
           return lower(a) == lower(b);
         });
}

bool isLatin1(std::string_view name) {
  return equalsIgnoringAsciiCase(name, "ISO-8859-1") || equalsIgnoringAsciiCase(name, "latin1");
}

bool isSupported(std::string_view name) {
  return isLatin1(name) || equalsIgnoringAsciiCase(name, "UTF-8") || equalsIgnoringAsciiCase(name, "UTF-16");
}

void convertLatin1(std::string& content) {
  const auto high = static_cast<std::size_t>(std::count_if(
      content.begin(), content.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }));
  if (high == 0) {
    return;
  }
  std::string utf8;
  utf8.reserve(content.size() + high);
  for (const char c : content) {
    appendUtf8(utf8, static_cast<unsigned char>(c));
  }
  content = std::move(utf8);
}

class Utf16Decoder {
public:
  Utf16Decoder(const std::string& bytes, bool bigEndian) : m_bytes(bytes), m_bigEndian(bigEndian) {}

  // Drops the byte-order mark; an unpaired surrogate becomes U+FFFD and a
  // problem at its place.
  std::string toUtf8(FileProblems& problems) {
    std::string utf8;
    utf8.reserve(m_bytes.size() / 2 * 3);
    std::size_t at = 2;
    for (; at + 1 < m_bytes.size(); at += 2) {
      const char32_t unit = unitAt(at);
      if (isHighSurrogate(unit) && at + 3 < m_bytes.size() && isLowSurrogate(unitAt(at + 2))) {
        appendUtf8(utf8, 0x10000 + ((unit - 0xD800) << 10U) + (unitAt(at + 2) - 0xDC00));
        at += 2;
      } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
        problems.add(utf8.size(), "unpaired UTF-16 surrogate " + codePointName(unit));
        appendUtf8(utf8, 0xFFFD);
      } else {
        appendUtf8(utf8, unit);
      }
    }
    if (at < m_bytes.size()) {
      problems.add(utf8.size(), "the file ends inside a UTF-16 code unit");
    }
    return utf8;
  }

private:
  static bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
  static bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

  char32_t unitAt(std::size_t at) const {
    const auto first = static_cast<unsigned char>(m_bytes[at]);
    const auto second = static_cast<unsigned char>(m_bytes[at + 1]);
    return m_bigEndian ? static_cast<char32_t>(first << 8U | second)
                       : static_cast<char32_t>(second << 8U | first);
  }

  const std::string& m_bytes;
  bool m_bigEndian;
};

bool startsWith(const std::string& content, std::string_view prefix) {
  return std::string_view(content).substr(0, prefix.size()) == prefix;
}

}  // namespace

std::size_t toUtf8Document(std::string& content, FileProblems& problems) {
  const bool littleEndian = startsWith(content, "\xFF\xFE");
  const bool utf16 = littleEndian || startsWith(content, "\xFE\xFF");
  if (utf16) {
    content = Utf16Decoder(content, !littleEndian).toUtf8(problems);
  }
  const std::size_t start = startsWith(content, "\xEF\xBB\xBF") ? 3 : 0;
  const std::string_view document = std::string_view(content).substr(start);
  const boost::optional<EncodingDeclaration> declared = declaredEncoding(document);
  if (!declared) {
    return start;
  }
  if (!isSupported(declared->name)) {
    problems.add(declared->offset, "encoding '" + std::string(declared->name) +
                                       "' is not supported: a catalogue file is UTF-8, UTF-16 or ISO-8859-1");
  } else if (isLatin1(declared->name) && !utf16 && start == 0) {
    convertLatin1(content);
  }
  return start;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
