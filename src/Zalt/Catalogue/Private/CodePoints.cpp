#include <Zalt/Catalogue/Private/CodePoints.h>

namespace Zalt {
namespace Catalogue {
namespace Impl {
namespace {

bool isContinuation(unsigned char byte) { return (byte & 0xC0U) == 0x80U; }

// The length of the well-formed sequence at `at`, or 0. The ranges of the
// second byte exclude overlong forms, surrogates and code points past U+10FFFF.
std::size_t sequenceLength(const unsigned char* at, const unsigned char* end) {
  const unsigned char lead = at[0];
  if (lead < 0x80) {
    return 1;
  }
  std::size_t length = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    low = lead == 0xE0 ? 0xA0 : low;
    high = lead == 0xED ? 0x9F : high;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    low = lead == 0xF0 ? 0x90 : low;
    high = lead == 0xF4 ? 0x8F : high;
  } else {
    return 0;
  }
  if (static_cast<std::size_t>(end - at) < length || at[1] < low || at[1] > high) {
    return 0;
  }
  for (std::size_t i = 2; i < length; ++i) {
    if (!isContinuation(at[i])) {
      return 0;
    }
  }
  return length;
}

}  // namespace

bool isXmlCharacter(char32_t codePoint) {
  return codePoint == '\t' || codePoint == '\n' || codePoint == '\r' ||
         (codePoint >= 0x20 && codePoint <= 0xD7FF) || (codePoint >= 0xE000 && codePoint <= 0xFFFD) ||
         (codePoint >= 0x10000 && codePoint <= 0x10FFFF);
}

void appendUtf8(std::string& out, char32_t codePoint) {
  if (codePoint < 0x80) {
    out += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    out += static_cast<char>(0xC0U | (codePoint >> 6U));
    out += static_cast<char>(0x80U | (codePoint & 0x3FU));
  } else if (codePoint < 0x10000) {
    out += static_cast<char>(0xE0U | (codePoint >> 12U));
    out += static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
    out += static_cast<char>(0x80U | (codePoint & 0x3FU));
  } else {
    out += static_cast<char>(0xF0U | (codePoint >> 18U));
    out += static_cast<char>(0x80U | ((codePoint >> 12U) & 0x3FU));
    out += static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
    out += static_cast<char>(0x80U | (codePoint & 0x3FU));
  }
}

const char* malformedUtf8At(const char* begin, const char* end) {
  const auto* at = reinterpret_cast<const unsigned char*>(begin);
  const auto* const stop = reinterpret_cast<const unsigned char*>(end);
  while (at < stop) {
    const std::size_t length = sequenceLength(at, stop);
    if (length == 0) {
      return reinterpret_cast<const char*>(at);
    }
    at += length;
  }
  return end;
}

std::string codePointName(char32_t codePoint) {
  const char* const digits = "0123456789ABCDEF";
  std::string hex;
  for (char32_t rest = codePoint; rest != 0 || hex.size() < 4; rest >>= 4U) {
    hex.insert(hex.begin(), digits[rest & 0xFU]);
  }
  return "U+" + hex;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
