#include <Zalt/Display/Private/CodePoints.h>

namespace Zalt {
namespace Display {
namespace Private {
namespace {

constexpr char32_t replacement = 0xFFFD;

// How many bytes follow a lead byte, and the smallest code point that needs
// them; none (0) for a byte that cannot start a sequence.
struct Lead {
  int following;
  char32_t smallest;
  char32_t bits;
};

Lead leadOf(unsigned char byte) {
  if (byte < 0x80) {
    return {0, 0, byte};
  }
  if (byte >= 0xC2 && byte < 0xE0) {
    return {1, 0x80, byte & 0x1Fu};
  }
  if (byte >= 0xE0 && byte < 0xF0) {
    return {2, 0x800, byte & 0x0Fu};
  }
  if (byte >= 0xF0 && byte < 0xF5) {
    return {3, 0x10000, byte & 0x07u};
  }
  return {-1, 0, 0};
}

}  // namespace

std::u32string codePoints(std::string_view utf8) {
  std::u32string decoded;
  decoded.reserve(utf8.size());
  std::size_t at = 0;
  while (at < utf8.size()) {
    const Lead lead = leadOf(static_cast<unsigned char>(utf8[at++]));
    if (lead.following < 0) {
      decoded.push_back(replacement);
      continue;
    }
    char32_t codePoint = lead.bits;
    int read = 0;
    while (read < lead.following && at < utf8.size() &&
           (static_cast<unsigned char>(utf8[at]) & 0xC0u) == 0x80u) {
      codePoint = (codePoint << 6u) | (static_cast<unsigned char>(utf8[at++]) & 0x3Fu);
      ++read;
    }
    const bool whole = read == lead.following && codePoint >= lead.smallest && codePoint <= 0x10FFFF &&
                       (codePoint < 0xD800 || codePoint > 0xDFFF);
    decoded.push_back(whole ? codePoint : replacement);
  }
  return decoded;
}

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
