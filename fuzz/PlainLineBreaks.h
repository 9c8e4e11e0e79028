// ZaltFuzz::plainLineBreaks: a second, deliberately plain UTF-8 decoder and
// line-break counter that the fuzz targets hold the library's counting
// against. It shares no code with the library: it walks the bytes with
// explicit lengths and range checks and keeps the decoded code points in a
// vector, so a mistake in one of the two is unlikely to hide in the other.
//
//   plainLineBreaks("a\r\nb");  // 1
//   plainLineBreaks("\x80");    // boost::none: malformed
#pragma once

#include <boost/optional.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ZaltFuzz {

// The code points of `bytes`, or none when the bytes are not well-formed:
// a continuation byte where a code point starts, a missing continuation byte
// (also at the end), a value above U+10FFFF, a surrogate, or an over-long form.
// A lead byte with more than four leading ones counts as a four-byte lead.
inline boost::optional<std::vector<char32_t>> plainDecode(const std::string& bytes) {
  static constexpr unsigned char valueBitsOfLead[] = {0x7F, 0x1F, 0x0F, 0x07};
  static constexpr char32_t smallestValue[] = {0x0, 0x80, 0x800, 0x10000};

  std::vector<char32_t> codePoints;
  std::size_t position = 0;
  while (position < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[position]);
    std::size_t continuationBytes = 0;
    if (lead >= 0xF0) {
      continuationBytes = 3;
    } else if (lead >= 0xE0) {
      continuationBytes = 2;
    } else if (lead >= 0xC0) {
      continuationBytes = 1;
    } else if (lead >= 0x80) {
      return boost::none;
    }
    if (bytes.size() - position - 1 < continuationBytes) {
      return boost::none;
    }
    char32_t value = lead & valueBitsOfLead[continuationBytes];
    for (std::size_t i = 1; i <= continuationBytes; ++i) {
      const auto next = static_cast<unsigned char>(bytes[position + i]);
      if ((next & 0xC0) != 0x80) {
        return boost::none;
      }
      value = (value << 6) | (next & 0x3FU);
    }
    if (value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF) ||
        value < smallestValue[continuationBytes]) {
      return boost::none;
    }
    codePoints.push_back(value);
    position += continuationBytes + 1;
  }
  return codePoints;
}

// The number of line breaks of `bytes`, or none when they are malformed.
// CR LF is one break and so is CR CR; a CR before any other break character
// is a break of its own, and so is a CR at the end.
inline boost::optional<unsigned int> plainLineBreaks(const std::string& bytes) {
  const boost::optional<std::vector<char32_t>> codePoints = plainDecode(bytes);
  if (!codePoints) {
    return boost::none;
  }
  unsigned int breaks = 0;
  for (std::size_t i = 0; i < codePoints->size(); ++i) {
    const char32_t current = (*codePoints)[i];
    if (current == U'\r') {
      // A run of carriage returns is one break, wherever it ends; CR LF is
      // counted at its line feed.
      const bool endsRun = i + 1 == codePoints->size() || (*codePoints)[i + 1] != U'\r';
      const bool followedByLineFeed = i + 1 < codePoints->size() && (*codePoints)[i + 1] == U'\n';
      if (endsRun && !followedByLineFeed) {
        ++breaks;
      }
    } else if (current == U'\n' || current == 0x0B || current == 0x0C || current == 0x85 ||
               current == 0x2028 || current == 0x2029) {
      ++breaks;
    }
  }
  return breaks;
}

}  // namespace ZaltFuzz
