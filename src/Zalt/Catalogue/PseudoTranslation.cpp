#include <Zalt/Catalogue/PseudoTranslation.h>

#include <Zalt/Localization/Private/Common/LineBreakRule.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
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
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isOneOf(char c, const char* set) { return c != '\0' && std::strchr(set, c) != nullptr; }
const char* const hexDigits = "0123456789abcdefABCDEF";
bool isHexDigit(char c) { return isOneOf(c, hexDigits); }
bool isNameCharacter(char c) { return isLetter(c) || isDigit(c) || c == '_'; }
// Argument names may be paths into an object, as in {user.name}.
bool isPathCharacter(char c) { return isNameCharacter(c) || c == '.'; }
bool isTagNameCharacter(char c) { return isNameCharacter(c) || isOneOf(c, "-.:"); }
// Whitespace between the parts of a tag or an argument; a line break there
// still breaks the line, as it does anywhere else.
bool isSpace(char c) { return isOneOf(c, " \t\r\n"); }
bool isPrintableAscii(char c) { return c >= 0x20 && c < 0x7F; }
bool isStyleCharacter(char c) { return (isPrintableAscii(c) || isSpace(c)) && !isOneOf(c, "{}"); }
bool isUnquotedValueCharacter(char c) { return isPrintableAscii(c) && !isOneOf(c, " \"'=<>`"); }

// Reads `text` from a position up to, not including, an end.
class Scanner {
public:
  Scanner(const std::string& text, std::size_t start, std::size_t end)
      : m_text(&text), m_position(start), m_end(end) {}

  char peek() const { return m_position < m_end ? (*m_text)[m_position] : '\0'; }
  std::size_t position() const { return m_position; }
  bool atEnd() const { return m_position == m_end; }
  void seek(std::size_t position) { m_position = position; }
  // Says whether there was any character to skip.
  bool skipWhile(bool (*accepts)(char)) {
    const std::size_t start = m_position;
    while (m_position < m_end && accepts((*m_text)[m_position])) {
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
    if (m_end - m_position < word.size() || m_text->compare(m_position, word.size(), word) != 0) {
      return false;
    }
    m_position += word.size();
    return true;
  }
  // Skips up to and past the next `c`; says whether there is one.
  bool skipPast(char c) {
    const std::size_t found = m_text->find(c, m_position);
    if (found >= m_end) {
      return false;
    }
    m_position = found + 1;
    return true;
  }

private:
  const std::string* m_text;
  std::size_t m_position;
  std::size_t m_end;
};

// The forms below take a scanner just past their first character and return
// where the form ends, or 0 where none begins.

// %s, %1$s, %-5.2f, %lu, %%, %(name)s, %@.
std::size_t printfEnd(Scanner scan) {
  if (scan.skipIfOneOf("%")) {
    return scan.position();
  }
  if (scan.skipIfOneOf("(")) {
    if (!scan.skipWhile(isPathCharacter) || !scan.skipIfOneOf(")")) {
      return 0;
    }
  } else {
    Scanner argument = scan;
    if (argument.skipWhile(isDigit) && argument.skipIfOneOf("$")) {
      scan = argument;
    }
  }
  // No space flag: "100% sure" is text, not a placeholder.
  while (scan.skipIfOneOf("-+#0")) {
  }
  if (!scan.skipIfOneOf("*")) {
    scan.skipWhile(isDigit);
  }
  if (scan.skipIfOneOf(".") && !scan.skipIfOneOf("*")) {
    scan.skipWhile(isDigit);
  }
  for (const char* modifier : {"hh", "h", "ll", "l", "L", "q", "j", "z", "t"}) {
    if (scan.skipIf(modifier)) {
      break;
    }
  }
  return scan.skipIfOneOf("diouxXeEfFgGaAcspn@") ? scan.position() : 0;
}

bool skipAttributeValue(Scanner& scan) {
  if (scan.skipIfOneOf("\"")) {
    return scan.skipPast('"');
  }
  if (scan.skipIfOneOf("'")) {
    return scan.skipPast('\'');
  }
  return scan.skipWhile(isUnquotedValueCharacter);
}

// <b>, </b>, <br/>, <a href="x">; attributes of HTML may go without a value.
std::size_t tagEnd(Scanner scan) {
  const bool closing = scan.skipIfOneOf("/");
  if (!isLetter(scan.peek())) {
    return 0;
  }
  scan.skipWhile(isTagNameCharacter);
  while (!closing && scan.skipWhile(isSpace) && isLetter(scan.peek())) {
    scan.skipWhile(isTagNameCharacter);
    Scanner value = scan;
    value.skipWhile(isSpace);
    if (value.skipIfOneOf("=")) {
      value.skipWhile(isSpace);
      if (!skipAttributeValue(value)) {
        return 0;
      }
      scan = value;
    }
  }
  scan.skipWhile(isSpace);
  if (!closing) {
    scan.skipIfOneOf("/");
  }
  return scan.skipIfOneOf(">") ? scan.position() : 0;
}

// &amp;, &nbsp;, &#169;, &#xA9;. A lone '&', as in "Fish & chips", is text.
std::size_t entityEnd(Scanner scan) {
  bool (*nameCharacter)(char) = isNameCharacter;
  if (scan.skipIfOneOf("#")) {
    nameCharacter = scan.skipIfOneOf("xX") ? isHexDigit : isDigit;
  } else if (!isLetter(scan.peek())) {
    return 0;
  }
  return scan.skipWhile(nameCharacter) && scan.skipIfOneOf(";") ? scan.position() : 0;
}

// \n, \t, \", \\ and \u00A0 as written in the source of a program.
std::size_t escapeEnd(Scanner scan) {
  if (scan.skipIfOneOf("u")) {
    for (int digit = 0; digit < 4; ++digit) {
      if (!scan.skipIfOneOf(hexDigits)) {
        return 0;
      }
    }
    return scan.position();
  }
  return scan.skipIfOneOf("\\\"'abfnrtv") ? scan.position() : 0;
}

// $var; ${var} is an argument after a '$'.
std::size_t variableEnd(Scanner scan) {
  if (!isLetter(scan.peek()) && scan.peek() != '_') {
    return 0;
  }
  scan.skipWhile(isNameCharacter);
  return scan.position();
}

// The forms other than arguments in braces, at `start`, up to `end`.
std::size_t plainFormEnd(const std::string& text, std::size_t start, std::size_t end) {
  const Scanner afterFirst(text, start + 1, end);
  switch (text[start]) {
    case '%':
      return printfEnd(afterFirst);
    case '<':
      return tagEnd(afterFirst);
    case '&':
      return entityEnd(afterFirst);
    case '\\':
      return escapeEnd(afterFirst);
    case '$':
      return variableEnd(afterFirst);
    default:
      return 0;
  }
}

// Each '{' with the '}' that closes it, by the position of the '{'. Pairing
// them once up front lets an argument find its end, and each branch its text,
// without reading what lies between: every brace is read a bounded number of
// times, however the arguments nest or fail to.
std::vector<std::pair<std::size_t, std::size_t>> bracePairs(const std::string& text) {
  std::vector<std::size_t> open;
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (text[position] == '{') {
      open.push_back(position);
    } else if (text[position] == '}' && !open.empty()) {
      pairs.emplace_back(open.back(), position);
      open.pop_back();
    }
  }
  std::sort(pairs.begin(), pairs.end());
  return pairs;
}

// Which bytes of a text belong to what a translator keeps as written: markup,
// entities, placeholders, escapes, and the syntax of message arguments, whose
// branches hold text to translate.
class KeptForms {
public:
  explicit KeptForms(const std::string& text)
      : m_text(text), m_braces(bracePairs(text)), m_kept(text.size(), false) {
    scanMessage(0, text.size(), 0);
  }

  bool kept(std::size_t position) const { return m_kept[position]; }

private:
  // Real messages nest arguments a few levels deep; deeper ones are taken for
  // text, so that no text can exhaust the stack.
  static constexpr int maxDepth = 32;

  void scanMessage(std::size_t begin, std::size_t end, int depth) {
    std::size_t position = begin;
    while (position < end) {
      if (m_text[position] == '{') {
        position = std::max(argumentEnd(position, depth), position + 1);
      } else if (const std::size_t formEnd = plainFormEnd(m_text, position, end)) {
        keep(position, formEnd);
        position = formEnd;
      } else {
        ++position;
      }
    }
  }

  // {0}, {user.name}, {0,number}, {0, date, short}, {count:02d}, and the
  // plural and select arguments of messages.
  std::size_t argumentEnd(std::size_t open, int depth) {
    const std::size_t close = closingBrace(open);
    if (depth == maxDepth || close == std::string::npos) {
      return 0;
    }
    Scanner scan(m_text, open + 1, close);
    scan.skipWhile(isSpace);
    if (!scan.skipWhile(isPathCharacter)) {
      return 0;
    }
    scan.skipWhile(isSpace);
    if (scan.skipIfOneOf(":")) {
      scan.skipWhile(isStyleCharacter);
    } else if (scan.skipIfOneOf(",")) {
      scan.skipWhile(isSpace);
      const std::size_t type = scan.position();
      scan.skipWhile(isNameCharacter);
      const std::string_view typeName(m_text.data() + type, scan.position() - type);
      if (typeName == "plural" || typeName == "selectordinal" || typeName == "select") {
        return branchesEnd(open, scan, depth);
      }
      scan.skipWhile(isStyleCharacter);
    }
    if (!scan.atEnd()) {
      return 0;
    }
    keep(open, close + 1);
    return close + 1;
  }

  // ", [offset:1] one {# item} =0 {none} other {# items}}": the selectors are
  // kept, the text of each branch is a message of its own. `scan` stands
  // after the argument's type and ends at its closing brace.
  std::size_t branchesEnd(std::size_t open, Scanner scan, int depth) {
    scan.skipWhile(isSpace);
    if (!scan.skipIfOneOf(",")) {
      return 0;
    }
    scan.skipWhile(isSpace);
    if (scan.skipIf("offset:")) {
      scan.skipWhile(isSpace);
      scan.skipWhile(isDigit);
      scan.skipWhile(isSpace);
    }
    std::vector<std::pair<std::size_t, std::size_t>> branches;
    while (!scan.atEnd()) {
      const bool selector = scan.skipIfOneOf("=") ? scan.skipWhile(isDigit) : scan.skipWhile(isNameCharacter);
      scan.skipWhile(isSpace);
      if (!selector || scan.peek() != '{') {
        return 0;
      }
      // Braces inside a pair are paired among themselves: the branch closes before the argument.
      const std::size_t branchClose = closingBrace(scan.position());
      branches.emplace_back(scan.position(), branchClose);
      scan.seek(branchClose + 1);
      scan.skipWhile(isSpace);
    }
    if (branches.empty()) {
      return 0;
    }
    std::size_t syntax = open;
    for (const auto& branch : branches) {
      keep(syntax, branch.first + 1);
      scanMessage(branch.first + 1, branch.second, depth + 1);
      syntax = branch.second;
    }
    const std::size_t end = scan.position() + 1;
    keep(syntax, end);
    return end;
  }

  // The position of the '}' that closes the '{' at `open`; npos for none.
  std::size_t closingBrace(std::size_t open) const {
    const auto pair =
        std::lower_bound(m_braces.begin(), m_braces.end(), std::make_pair(open, std::size_t{0}));
    return pair != m_braces.end() && pair->first == open ? pair->second : std::string::npos;
  }

  void keep(std::size_t begin, std::size_t end) {
    std::fill(m_kept.begin() + static_cast<std::ptrdiff_t>(begin),
              m_kept.begin() + static_cast<std::ptrdiff_t>(end), true);
  }

  const std::string& m_text;
  const std::vector<std::pair<std::size_t, std::size_t>> m_braces;
  std::vector<bool> m_kept;
};

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
  const KeptForms keptForms(in);
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
    } else if (isLetter(c) && !keptForms.kept(position)) {
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
