#include <Zalt/Catalogue/Private/ByteSearch.h>

#include <cstdint>
#include <cstring>

namespace Zalt {
namespace Catalogue {
namespace Impl {
namespace {

constexpr std::uint64_t ones = 0x0101010101010101U;
constexpr std::uint64_t highs = 0x8080808080808080U;

// Whether a byte of `word` is below `below` (at most 0x80) or equal to `equal`.
bool holds(std::uint64_t word, unsigned char below, unsigned char equal) {
  const std::uint64_t someBelow = (word - ones * below) & ~word & highs;
  const std::uint64_t matches = word ^ (ones * equal);
  const std::uint64_t someEqual = (matches - ones) & ~matches & highs;
  return (someBelow | someEqual) != 0;
}

bool isWanted(char c, unsigned char below, unsigned char equal) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < below || byte == equal;
}

}  // namespace

std::size_t findByte(std::string_view text, std::size_t from, unsigned char below, unsigned char equal) {
  std::size_t at = from;
  for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, sizeof(word));
    if (holds(word, below, equal)) {
      break;
    }
  }
  while (at < text.size() && !isWanted(text[at], below, equal)) {
    ++at;
  }
  return at;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
