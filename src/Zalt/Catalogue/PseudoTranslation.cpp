#include <Zalt/Catalogue/PseudoTranslation.h>

#include <Zalt/Catalogue/Private/KeptForms.h>
#include <Zalt/Localization/Private/Common/LineBreakRule.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace {

using Localization::Impl::LineBreakRule;

// Look-alikes for A to Z, then a to z: each one precomposed code point of
// ordinary width, so that the letters alone change no line's width.
const char* const lookAlikes[52] = {
    u8"Å", u8"Ɓ", u8"Ç", u8"Ð", u8"É", u8"Ƒ", u8"Ĝ", u8"Ĥ", u8"Î", u8"Ĵ", u8"Ķ", u8"Ļ", u8"Ṁ",
    u8"Ñ", u8"Ö", u8"Ƥ", u8"Ǫ", u8"Ŕ", u8"Š", u8"Ŧ", u8"Û", u8"Ṽ", u8"Ŵ", u8"Ẋ", u8"Ý", u8"Ž",
    u8"å", u8"ƀ", u8"ç", u8"ð", u8"é", u8"ƒ", u8"ĝ", u8"ĥ", u8"î", u8"ĵ", u8"ķ", u8"ļ", u8"ṁ",
    u8"ñ", u8"ö", u8"ƥ", u8"ǫ", u8"ŕ", u8"š", u8"ŧ", u8"û", u8"ṽ", u8"ŵ", u8"ẋ", u8"ý", u8"ž",
};
const char* const padding = u8"·";

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isLower(char c) { return c >= 'a' && c <= 'z'; }
bool isLetter(char c) { return isUpper(c) || isLower(c); }

// Which bytes of `text` belong to a form that a translator keeps as written.
std::vector<bool> keptBytes(const std::string& text) {
  std::vector<bool> kept(text.size(), false);
  for (const std::string_view form : Private::keptForms(text)) {
    std::fill_n(kept.begin() + (form.data() - text.data()), form.size(), true);
  }
  return kept;
}

// How many code points a line of `codePoints` gains, its two brackets included.
std::size_t growth(std::size_t codePoints) {
  std::size_t percent = 40;
  if (codePoints <= 10) {
    percent = 100;
  } else if (codePoints <= 20) {
    percent = 80;
  } else if (codePoints <= 30) {
    percent = 60;
  } else if (codePoints <= 50) {
    percent = 50;
  }
  return std::max<std::size_t>(2, (codePoints * percent + 99) / 100);
}

// Writes the lines of the result: opens a line at its first character, closes
// it with its padding and bracket where the source line ends.
class LineWriter {
public:
  explicit LineWriter(std::string& out) : m_out(out) {}

  void character(const std::string& text, std::size_t start, std::size_t length) {
    open();
    m_out.append(text, start, length);
    ++m_codePoints;
  }
  void letter(const char* lookAlike) {
    open();
    m_out += lookAlike;
    ++m_codePoints;
  }
  void close() {
    open();
    const std::size_t added = growth(m_codePoints);
    for (std::size_t i = 2; i < added; ++i) {
      m_out += padding;
    }
    m_out += ']';
    m_open = false;
  }

private:
  void open() {
    if (!m_open) {
      m_out += '[';
      m_open = true;
      m_codePoints = 0;
    }
  }

  std::string& m_out;
  bool m_open = false;
  std::size_t m_codePoints = 0;
};

}  // namespace

Tovra::Locale::Utf8 pseudoTranslation(const Tovra::Locale::Utf8& text) {
  // The store's own decoder and line breaks: malformed UTF-8 fails with the
  // store's error, and the lines are the ones the store counts.
  using Decoder = boost::u8_to_u32_iterator<std::string::const_iterator, char32_t>;
  const std::string& in = text.value();
  const std::vector<bool> kept = keptBytes(in);
  std::string out;
  out.reserve(in.size() * 2 + 2);
  LineWriter line(out);
  LineBreakRule lineBreaks;
  for (Decoder it(in.begin(), in.begin(), in.end()); it.base() != in.end();) {
    const auto position = static_cast<std::size_t>(it.base() - in.begin());
    const Decoder next = std::next(it);
    const auto length = static_cast<std::size_t>(next.base() - it.base());
    const LineBreakRule::Role role = lineBreaks.feed(*it);
    if (role == LineBreakRule::Role::LineEnd) {
      line.close();
    }
    const char c = in[position];
    if (role != LineBreakRule::Role::Text) {
      out.append(in, position, length);
    } else if (isLetter(c) && !kept[position]) {
      line.letter(lookAlikes[isUpper(c) ? c - 'A' : c - 'a' + 26]);
    } else {
      line.character(in, position, length);
    }
    it = next;
  }
  line.close();
  return Tovra::Locale::Utf8(std::move(out));
}

}  // namespace Catalogue
}  // namespace Zalt
