#include "Terminal.h"

#include <utf8proc.h>

#include <array>
#include <cstdio>

namespace ZaltCatalogueTool {
namespace {

bool isInvisibleControl(char32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0x061C ||
         codePoint == 0x200E || codePoint == 0x200F || (codePoint >= 0x2028 && codePoint <= 0x202E) ||
         (codePoint >= 0x2066 && codePoint <= 0x2069);
}

std::string hex(const char* format, unsigned int value) {
  std::array<char, 12> text{};
  std::snprintf(text.data(), text.size(), format, value);
  return text.data();
}

}  // namespace

std::string escapedForTerminal(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    utf8proc_int32_t codePoint = 0;
    const utf8proc_ssize_t length =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data() + at),
                         static_cast<utf8proc_ssize_t>(text.size() - at), &codePoint);
    if (length <= 0) {
      shown += hex("\\x%02X", static_cast<unsigned char>(text[at]));
      ++at;
      continue;
    }
    if (codePoint == '\t' || codePoint == '\n' || codePoint == '\r') {
      shown += codePoint == '\t' ? "\\t" : codePoint == '\n' ? "\\n" : "\\r";
    } else if (isInvisibleControl(static_cast<char32_t>(codePoint))) {
      shown += hex("\\u%04X", static_cast<unsigned int>(codePoint));
    } else {
      shown.append(text.substr(at, static_cast<std::size_t>(length)));
    }
    at += static_cast<std::size_t>(length);
  }
  return shown;
}

}  // namespace ZaltCatalogueTool
