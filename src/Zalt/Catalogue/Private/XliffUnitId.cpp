#include <Zalt/Catalogue/Private/XliffUnitId.h>

#include <Zalt/Catalogue/WriteCatalogue.h>

#include <charconv>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

constexpr char noWidth[] = "-";
constexpr char hexDigits[] = "0123456789ABCDEF";

// White space and controls, which tools trim, fold or break lines at in an
// id, and the escape character itself.
bool isEscaped(unsigned char byte) { return byte <= 0x20 || byte == 0x7F || byte == '%'; }

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

template <typename Number>
std::optional<Number> number(std::optional<std::string_view> text) {
  Number value = 0;
  if (!text) {
    return std::nullopt;
  }
  const auto parsed = std::from_chars(text->data(), text->data() + text->size(), value);
  if (parsed.ec != std::errc() || parsed.ptr != text->data() + text->size()) {
    return std::nullopt;
  }
  return value;
}

std::optional<std::string> unescaped(std::string_view escaped) {
  std::string ref;
  ref.reserve(escaped.size());
  for (std::size_t at = 0; at < escaped.size(); ++at) {
    if (escaped[at] != '%') {
      ref += escaped[at];
      continue;
    }
    unsigned int byte = 0;
    const char* const digits = escaped.data() + at + 1;
    if (at + 2 >= escaped.size() || std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
      return std::nullopt;
    }
    ref += static_cast<char>(byte);
    at += 2;
  }
  return ref;
}

}  // namespace

void appendUnitId(std::string& out, const UnitKey& key) {
  out += std::to_string(key.version);
  out += '.';
  out += key.width ? textWidthToken(*key.width) : noWidth;
  out += '.';
  out += std::to_string(key.lines);
  out += '.';
  for (const char c : key.ref) {
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

// Decoding is lenient where parsing is simplest (leading zeros, lower-case
// hex, unescaped bytes); writing the key again and comparing then refuses
// every id that is not exactly the one written.
std::optional<UnitKey> decodeUnitId(std::string_view id) {
  std::string_view rest = id;
  const auto version = number<std::uint64_t>(field(rest));
  const auto widthToken = field(rest);
  const auto lines = number<std::uint32_t>(field(rest));
  if (!version || !widthToken || !lines || *lines == 0 || rest.empty()) {
    return std::nullopt;
  }
  const auto width = textWidthFromToken(std::string(*widthToken));
  auto ref = unescaped(rest);
  if ((!width && *widthToken != noWidth) || !ref) {
    return std::nullopt;
  }
  UnitKey key{std::move(*ref), *version, width, *lines};
  std::string again;
  appendUnitId(again, key);
  if (again != id) {
    return std::nullopt;
  }
  return key;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
