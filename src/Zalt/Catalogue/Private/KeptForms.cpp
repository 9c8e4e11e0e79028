#include <Zalt/Catalogue/Private/KeptForms.h>
#include <Zalt/Catalogue/Private/TextScanner.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
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

// The forms below take a scanner just past their first character and return
// where the form ends, or 0 where none begins.

// %s, %1$s, %-5.2f, %lu, %%, %(name)s, %@.
std::size_t printfEnd(TextScanner scan) {
  if (scan.skipIfOneOf("%")) {
    return scan.position();
  }
  if (scan.skipIfOneOf("(")) {
    if (!scan.skipWhile(isPathCharacter) || !scan.skipIfOneOf(")")) {
      return 0;
    }
  } else {
    TextScanner argument = scan;
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

bool skipAttributeValue(TextScanner& scan) {
  if (scan.skipIfOneOf("\"")) {
    return scan.skipPast('"');
  }
  if (scan.skipIfOneOf("'")) {
    return scan.skipPast('\'');
  }
  return scan.skipWhile(isUnquotedValueCharacter);
}

// <b>, </b>, <br/>, <a href="x">; attributes of HTML may go without a value.
std::size_t tagEnd(TextScanner scan) {
  const bool closing = scan.skipIfOneOf("/");
  if (!isLetter(scan.peek())) {
    return 0;
  }
  scan.skipWhile(isTagNameCharacter);
  while (!closing && scan.skipWhile(isSpace) && isLetter(scan.peek())) {
    scan.skipWhile(isTagNameCharacter);
    TextScanner value = scan;
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
std::size_t entityEnd(TextScanner scan) {
  bool (*nameCharacter)(char) = isNameCharacter;
  if (scan.skipIfOneOf("#")) {
    nameCharacter = scan.skipIfOneOf("xX") ? isHexDigit : isDigit;
  } else if (!isLetter(scan.peek())) {
    return 0;
  }
  return scan.skipWhile(nameCharacter) && scan.skipIfOneOf(";") ? scan.position() : 0;
}

// \n, \t, \", \\ and \u00A0 as written in the source of a program.
std::size_t escapeEnd(TextScanner scan) {
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

// $var; ${var} is an argument that takes its '$' along.
std::size_t variableEnd(TextScanner scan) {
  if (!isLetter(scan.peek()) && scan.peek() != '_') {
    return 0;
  }
  scan.skipWhile(isNameCharacter);
  return scan.position();
}

// The forms other than arguments in braces, at `start`, up to `end`.
std::size_t plainFormEnd(std::string_view text, std::size_t start, std::size_t end) {
  const TextScanner afterFirst(text, start + 1, end);
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
std::vector<std::pair<std::size_t, std::size_t>> bracePairs(std::string_view text) {
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

// Reads a text front to back and collects its kept forms in the order of the
// text: a form is taken only once all of it has been read, and the syntax of
// an argument with branches only once every branch has been found.
class FormReader {
public:
  explicit FormReader(std::string_view text) : m_text(text), m_braces(bracePairs(text)) {
    readMessage(0, text.size(), 0, false);
  }

  std::vector<std::string_view> forms() && { return std::move(m_forms); }

private:
  // Real messages nest arguments a few levels deep; deeper ones are taken for
  // text, so that no text can exhaust the stack.
  static constexpr int maxDepth = 32;

  // `counted`: the message is a branch of a plural or selectordinal argument,
  // where '#' stands for its number.
  void readMessage(std::size_t begin, std::size_t end, int depth, bool counted) {
    std::size_t position = begin;
    while (position < end) {
      if (m_text[position] == '{') {
        position = std::max(argumentEnd(position, depth), position + 1);
      } else if (counted && m_text[position] == '#') {
        keep(position, position + 1);
        ++position;
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
    if (depth == maxDepth || close == std::string_view::npos) {
      return 0;
    }
    TextScanner scan(m_text, open + 1, close);
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
      const std::string_view typeName = m_text.substr(type, scan.position() - type);
      if (typeName == "plural" || typeName == "selectordinal" || typeName == "select") {
        return branchesEnd(open, scan, depth, typeName != "select");
      }
      scan.skipWhile(isStyleCharacter);
    }
    if (!scan.atEnd()) {
      return 0;
    }
    // No other form ends in a '$', so ${var} can take the one before it.
    keep(open > 0 && m_text[open - 1] == '$' ? open - 1 : open, close + 1);
    return close + 1;
  }

  // ", [offset:1] one {# item} =0 {none} other {# items}}": the selectors are
  // kept, the text of each branch is a message of its own. `scan` stands
  // after the argument's type and ends at its closing brace.
  std::size_t branchesEnd(std::size_t open, TextScanner scan, int depth, bool counted) {
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
      readMessage(branch.first + 1, branch.second, depth + 1, counted);
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
    return pair != m_braces.end() && pair->first == open ? pair->second : std::string_view::npos;
  }

  void keep(std::size_t begin, std::size_t end) { m_forms.push_back(m_text.substr(begin, end - begin)); }

  std::string_view m_text;
  const std::vector<std::pair<std::size_t, std::size_t>> m_braces;
  std::vector<std::string_view> m_forms;
};

}  // namespace

std::vector<std::string_view> keptForms(std::string_view text) { return FormReader(text).forms(); }

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
