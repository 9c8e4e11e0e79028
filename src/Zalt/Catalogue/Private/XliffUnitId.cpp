#include <Zalt/Catalogue/Private/XliffUnitId.h>
#include <Zalt/Catalogue/Private/XmlWriting.h>

#include <Zalt/Catalogue/TextWidthTokens.h>

#include <algorithm>
#include <charconv>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

constexpr char noWidth[] = "-";
constexpr char hexDigits[] = "0123456789ABCDEF";

// White space and controls, which tools trim, fold or break lines at in an
// id, what XML escapes, which a tool may leave escaped, and the escape
// character itself.
bool isEscaped(unsigned char byte) {
  return byte <= 0x20 || byte == 0x7F || byte == '%' || byte == '&' || byte == '<' || byte == '>' ||
         byte == '"' || byte == '\'';
}

// The text up to the next '.', which `rest` then starts after.
std::optional<std::string_view> field(std::string_view& rest) {
  const std::size_t dot = rest.find('.');
  if (dot == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view value = rest.substr(0, dot);
  rest.remove_prefix(dot + 1);
  return value;
}

// Decimal digits as written: no sign, no leading zero, no overflow.
template <typename Number>
std::optional<Number> number(std::optional<std::string_view> text) {
  Number value = 0;
  if (!text || text->empty() || ((*text)[0] == '0' && text->size() > 1)) {
    return std::nullopt;
  }
  const auto parsed = std::from_chars(text->data(), text->data() + text->size(), value);
  if (parsed.ec != std::errc() || parsed.ptr != text->data() + text->size()) {
    return std::nullopt;
  }
  return value;
}

int upperHexValue(char digit) {
  const char* const found = std::find(hexDigits, hexDigits + 16, digit);
  return found != hexDigits + 16 ? static_cast<int>(found - hexDigits) : -1;
}

// The reference, where every byte that must be escaped is, and no other.
std::optional<std::string> unescaped(std::string_view escaped) {
  std::string ref;
  ref.reserve(escaped.size());
  for (std::size_t at = 0; at < escaped.size(); ++at) {
    auto byte = static_cast<unsigned char>(escaped[at]);
    if (byte == '%') {
      const int high = at + 2 < escaped.size() ? upperHexValue(escaped[at + 1]) : -1;
      const int low = high >= 0 ? upperHexValue(escaped[at + 2]) : -1;
      if (low < 0 || !isEscaped(static_cast<unsigned char>(high * 16 + low))) {
        return std::nullopt;
      }
      byte = static_cast<unsigned char>(high * 16 + low);
      at += 2;
    } else if (isEscaped(byte)) {
      return std::nullopt;
    }
    ref += static_cast<char>(byte);
  }
  return ref;
}

}  // namespace

void appendUnitId(std::string& out, std::string_view ref, std::uint64_t version,
                  const boost::optional<Tovra::Mdib::LocalizedTextWidth>& width, std::uint32_t lines) {
  out += std::to_string(version);
  out += '.';
  out += width ? textWidthToken(*width) : noWidth;
  out += '.';
  out += std::to_string(lines);
  out += '.';
  for (const char c : ref) {
    const auto byte = static_cast<unsigned char>(c);
    if (isEscaped(byte)) {
      out += '%';
      out += hexDigits[byte >> 4U];
      out += hexDigits[byte & 0xFU];
    } else {
      out += c;
    }
  }
}

std::optional<UnitKey> decodeUnitId(std::string_view id) {
  std::string_view rest = id;
  const auto version = number<std::uint64_t>(field(rest));
  const auto widthToken = field(rest);
  const auto lines = number<std::uint32_t>(field(rest));
  if (!version || !widthToken || !lines || *lines == 0 || rest.empty()) {
    return std::nullopt;
  }
  const auto width = textWidthFromToken(*widthToken);
  auto ref = unescaped(rest);
  // An escaped byte may stand for what no catalogue file can carry (%12, or
  // %FF alone), and the text would then fail only when it is written.
  if ((!width && *widthToken != noWidth) || !ref || !isXmlText(*ref)) {
    return std::nullopt;
  }
  return UnitKey{std::move(*ref), *version, width, *lines};
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
