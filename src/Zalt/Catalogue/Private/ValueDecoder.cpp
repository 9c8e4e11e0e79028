#include <Zalt/Catalogue/Private/ValueDecoder.h>

#include <Zalt/Catalogue/Private/CodePoints.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace Impl {
namespace {

// The bytes at which decoding has something to do; all others are copied in
// runs. NUL ends a value.
using ByteSet = std::array<bool, 256>;

constexpr ByteSet byteSet(std::string_view bytes) {
  ByteSet set{};
  set[0] = true;
  for (const char c : bytes) {
    set[static_cast<unsigned char>(c)] = true;
  }
  return set;
}

constexpr ByteSet contentBytes = byteSet("&\r]");
constexpr ByteSet attributeBytes = byteSet("&\r\n\t<");

void append(std::string* out, const char* begin, const char* end) {
  if (out != nullptr) {
    out->append(begin, end);
  }
}

void append(std::string* out, char c) {
  if (out != nullptr) {
    *out += c;
  }
}

bool isNameByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' ||
         c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

int digitValue(char c, bool hex) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  if (hex && c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  if (hex && c >= 'A' && c <= 'F') {
    return c - 'A' + 10;
  }
  return -1;
}

char predefinedEntity(std::string_view name) {
  const std::pair<std::string_view, char> entities[] = {
      {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"apos", '\''}, {"quot", '"'}};
  for (const auto& entity : entities) {
    if (entity.first == name) {
      return entity.second;
    }
  }
  return '\0';
}

}  // namespace

ValueDecoder::ValueDecoder(const char* document, FileProblems& problems)
    : m_document(document), m_problems(problems) {}

void ValueDecoder::appendContent(const char* data, std::string* out) { decode<false>(data, out); }

void ValueDecoder::appendAttributeValue(const char* value, std::string* out) { decode<true>(value, out); }

void ValueDecoder::appendCdata(const char* data, std::string& out) {
  for (const char* at = data; *at != '\0'; ++at) {
    if (*at != '\r') {
      out += *at;
    } else if (at[1] != '\n') {
      out += '\n';
    }
  }
}

template <bool attribute>
void ValueDecoder::decode(const char* data, std::string* out) {
  const ByteSet& special = attribute ? attributeBytes : contentBytes;
  const char* run = data;
  const char* at = data;
  for (;; ++at) {
    if (!special[static_cast<unsigned char>(*at)]) {
      continue;
    }
    if (*at == '\0') {
      break;
    }
    append(out, run, at);
    switch (*at) {
      case '&':
        at = reference(at, out);
        break;
      case '\r':
        at += at[1] == '\n' ? 1 : 0;
        append(out, attribute ? ' ' : '\n');
        break;
      case '\n':
      case '\t':
        append(out, ' ');
        break;
      case '<':
        report(at, "'<' is not allowed in an attribute value (write '&lt;')");
        append(out, '<');
        break;
      default:  // ']'
        if (at[1] == ']' && at[2] == '>') {
          report(at, "']]>' is not allowed in character data (write ']]&gt;')");
        }
        append(out, ']');
    }
    run = at + 1;
  }
  append(out, run, at);
}

// Returns the last byte of the reference; for a '&' that starts none, the '&'.
const char* ValueDecoder::reference(const char* ampersand, std::string* out) {
  if (ampersand[1] == '#') {
    return characterReference(ampersand, out);
  }
  const char* end = ampersand + 1;
  while (isNameByte(*end)) {
    ++end;
  }
  if (end == ampersand + 1 || *end != ';') {
    report(ampersand, "'&' starts no entity or character reference (write '&amp;')");
    append(out, '&');
    return ampersand;
  }
  const std::string_view name(ampersand + 1, static_cast<std::size_t>(end - ampersand - 1));
  const char replacement = predefinedEntity(name);
  if (replacement == '\0') {
    report(ampersand, "entity '&" + std::string(name) +
                          ";' is not defined: a catalogue file may use only &amp; &lt; &gt; &apos; &quot;");
  }
  append(out, replacement);
  return end;
}

const char* ValueDecoder::characterReference(const char* ampersand, std::string* out) {
  const bool hex = ampersand[2] == 'x';
  const char* const digits = ampersand + (hex ? 3 : 2);
  const char* end = digits;
  char32_t codePoint = 0;
  for (int digit = digitValue(*end, hex); digit >= 0; digit = digitValue(*++end, hex)) {
    // Saturating keeps a long run of digits from wrapping into a valid character.
    codePoint = std::min<char32_t>(codePoint * (hex ? 16 : 10) + static_cast<char32_t>(digit), 0x110000);
  }
  const auto written = [ampersand, end] { return std::string(ampersand, *end == ';' ? end + 1 : end); };
  if (end == digits || *end != ';') {
    report(ampersand, "malformed character reference '" + written() + "'");
    append(out, '&');
    return ampersand;
  }
  if (!isXmlCharacter(codePoint)) {
    report(ampersand, "character reference '" + written() + "' is not an XML character");
  } else if (out != nullptr) {
    appendUtf8(*out, codePoint);
  }
  return end;
}

void ValueDecoder::report(const char* at, std::string message) {
  m_problems.add(static_cast<std::size_t>(at - m_document), std::move(message));
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
