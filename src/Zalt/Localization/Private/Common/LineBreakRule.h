// Zalt::Localization::Impl::LineBreakRule: splits a text, fed one code point
// at a time, into the lines that the device store counts. Whatever counts,
// measures or rewrites a text line by line asks this one rule, so that all of
// them see the same lines.
//
// Breaks are U+000A, U+000B, U+000C, U+000D, U+0085, U+2028 and U+2029. A
// carriage return ends its line at once; a line feed or further carriage
// returns right after it belong to the same break. A text has one line more
// than it has LineEnd code points.
//
//   LineBreakRule rule;
//   rule.feed(U'a');   // Text
//   rule.feed(U'\r');  // LineEnd
//   rule.feed(U'\n');  // RestOfBreak: CR LF is one break
//   rule.feed(U'\n');  // LineEnd
#pragma once

namespace Zalt {
namespace Localization {
namespace Impl {

class LineBreakRule {
public:
  // What a code point is to the lines of its text.
  enum class Role {
    // Belongs to the current line.
    Text,
    // Ends the current line; it and any RestOfBreak after it sit between two lines.
    LineEnd,
    // Continues the break that the last LineEnd began.
    RestOfBreak,
  };

  // The role of `codePoint`, the one after all those fed so far.
  Role feed(char32_t codePoint) {
    const bool afterCarriageReturn = m_afterCarriageReturn;
    m_afterCarriageReturn = codePoint == carriageReturn;
    if (codePoint == carriageReturn || codePoint == lineFeed) {
      return afterCarriageReturn ? Role::RestOfBreak : Role::LineEnd;
    }
    return isBreakOfItsOwn(codePoint) ? Role::LineEnd : Role::Text;
  }

  // Whether `byte` may begin the UTF-8 form of a break: a valid UTF-8 text
  // without any such byte is one line, which a caller may know without
  // decoding it.
  static constexpr bool mayBeginBreak(unsigned char byte) {
    return (byte >= lineFeed && byte <= carriageReturn) || byte == 0xC2 || byte == 0xE2;
  }

  // Stands for feeding code points that the caller knows to be Text, such as
  // a run of printable ASCII, without looking at each of them.
  void feedText() { m_afterCarriageReturn = false; }

private:
  static constexpr char32_t lineFeed = 0x0A;
  static constexpr char32_t carriageReturn = 0x0D;

  // The breaks that never pair with a neighbour.
  static bool isBreakOfItsOwn(char32_t codePoint) {
    switch (codePoint) {
      case 0x0B:
      case 0x0C:
      case 0x85:
      case 0x2028:
      case 0x2029:
        return true;
      default:
        return false;
    }
  }

  bool m_afterCarriageReturn = false;
};

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
