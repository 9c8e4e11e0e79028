// Zalt::Catalogue::Private::TextScanner: reads a stretch of a text byte by
// byte, for the recognisers of kept forms (KeptForms.h); a copy is a saved
// place, to read on from or to return to.
//
//   TextScanner scan(text, start, text.size());
//   if (scan.skipIfOneOf("&") && scan.skipIf("amp;")) {
//     // "&amp;" ends at scan.position()
//   }
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {

// False for '\0', which ends every set.
inline bool isOneOf(char c, const char* set) { return c != '\0' && std::strchr(set, c) != nullptr; }

// Reads `text` from a position up to, not including, an end.
class TextScanner {
public:
  TextScanner(std::string_view text, std::size_t start, std::size_t end)
      : m_text(text), m_position(start), m_end(end) {}

  char peek() const { return m_position < m_end ? m_text[m_position] : '\0'; }
  std::size_t position() const { return m_position; }
  bool atEnd() const { return m_position == m_end; }
  void seek(std::size_t position) { m_position = position; }
  // Says whether there was any character to skip.
  bool skipWhile(bool (*accepts)(char)) {
    const std::size_t start = m_position;
    while (m_position < m_end && accepts(m_text[m_position])) {
      ++m_position;
    }
    return m_position > start;
  }
  bool skipIfOneOf(const char* set) {
    if (!isOneOf(peek(), set)) {
      return false;
    }
    ++m_position;
    return true;
  }
  bool skipIf(std::string_view word) {
    if (m_end - m_position < word.size() || m_text.compare(m_position, word.size(), word) != 0) {
      return false;
    }
    m_position += word.size();
    return true;
  }
  // Skips up to and past the next `c`; says whether there is one.
  bool skipPast(char c) {
    const std::size_t found = m_text.find(c, m_position);
    if (found >= m_end) {
      return false;
    }
    m_position = found + 1;
    return true;
  }

private:
  std::string_view m_text;
  std::size_t m_position;
  std::size_t m_end;
};

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
