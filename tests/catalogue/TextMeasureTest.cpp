#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <boost/optional/optional_io.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextWidth;
using Zalt::Catalogue::ControlCharacter;
using Zalt::Catalogue::measureText;
using Zalt::Catalogue::narrowestClassHolding;
using Zalt::Catalogue::TextMeasure;
using Zalt::Catalogue::widthLimit;
using Zalt::Catalogue::WidthUnit;
using Zalt::Localization::Impl::numberOfLineBreaks;

std::string repeated(const std::string& piece, std::uint32_t times) {
  std::string text;
  for (std::uint32_t i = 0; i < times; ++i) {
    text += piece;
  }
  return text;
}

struct WidthCase {
  const char* name;
  std::string text;
  WidthUnit unit;
  std::vector<std::uint32_t> lineWidths;
};

TEST(TextMeasure, CountsEachLineByItsGraphemeClusters) {
  const WidthUnit full = WidthUnit::Fullwidth;
  const WidthUnit chars = WidthUnit::Characters;
  const std::vector<WidthCase> cases = {
      {"empty text", "", full, {0}},
      {"ASCII, odd halves round up", "Alarm", full, {3}},
      {"combining mark joins its base", u8"Cafe\u0301", full, {2}},
      {"combining marks after an ASCII run", u8"ab\u0301\u0302\u0303", full, {1}},
      {"a mark alone counts nothing", u8"\u0301", full, {0}},
      {"tab and zero-width space count nothing", u8"a\tb\u200Bc", full, {2}},
      {"a zero-width prepended sign joins the digit after it", u8"\u06001", full, {1}},
      {"ASCII after a prepended letter joins it", u8"\u0D4Eab", full, {1}},
      {"NUL counts nothing", std::string("ab\0cd", 5), full, {2}},
      {"CJK", u8"日本語", full, {3}},
      {"ASCII after a wide character", u8"日abc", full, {3}},
      {"fullwidth Latin", u8"ＡＢＣ", full, {3}},
      {"Hangul jamo form one wide cluster", u8"\u1100\u1161\u1100\u1161", full, {2}},
      {"emoji", u8"😀😀", full, {2}},
      {"emoji ZWJ family is one cluster", u8"👨‍👩‍👧x", full, {2}},
      {"skin tone modifier joins its emoji", u8"👍🏽👍🏽", full, {2}},
      {"emoji presentation selector adds nothing", u8"❤️❤️", full, {1}},
      {"a flag is one fullwidth character", u8"🇩🇪🇫🇷", full, {2}},
      {"a lone regional indicator is as wide", u8"🇩🇪🇫a", full, {3}},
      {"a tag flag is one fullwidth character",
       u8"\U0001F3F4\U000E0067\U000E0062\U000E0065\U000E006E\U000E0067\U000E007Fa",
       full,
       {2}},
      {"halfwidth sound marks take a half each", u8"ｶﾞﾊﾟ", full, {2}},
      {"a sound mark after a wide character", u8"日ﾞ", full, {2}},
      {"halfwidth forms after prepended letters", u8"\u0D4Eｶ\u0D4E\uFFE8", full, {2}},
      {"a modifier alone is an emoji", u8"\U0001F3FD", full, {1}},
      {"a modifier after a letter is an emoji", u8"a\U0001F3FD", full, {2}},
      {"a modifier after an emoji that takes none", u8"😀\U0001F3FD", full, {2}},
      {"modifier bases at the table's ends", u8"\u261D\U0001F3FD\U0001FAF8\U0001F3FD", full, {2}},
      {"a modifier just past a range of bases", u8"\U0001F9DE\U0001F3FD", full, {2}},
      {"a spacing mark with no base", u8"\u093F", full, {1}},
      {"a spacing mark joins its base", u8"\u0915\u093F\u0915\u093F", full, {1}},
      {"LF", "ab\ncdef", full, {1, 2}},
      {"CR LF is one break", "ab\r\ncdef", full, {1, 2}},
      {"lone CR", "ab\rcdef", full, {1, 2}},
      {"two CRs are one break", "ab\r\rcdef", full, {1, 2}},
      {"LF CR is two breaks", "ab\n\rcd", full, {1, 0, 1}},
      {"CR before VT is a break of its own", "ab\r\vcd", full, {1, 0, 1}},
      {"VT", "ab\vcdef", full, {1, 2}},
      {"FF", "ab\fcdef", full, {1, 2}},
      {"NEL", u8"ab\u0085cdef", full, {1, 2}},
      {"LS", u8"ab\u2028cdef", full, {1, 2}},
      {"PS", u8"ab\u2029cdef", full, {1, 2}},
      {"trailing CR ends a line", "abc\r", full, {2, 0}},
      {"a joiner after a break joins nothing", u8"😀\n\u200D😀", full, {1, 1}},
      {"characters: CJK", u8"日本", chars, {2}},
      {"characters: combining mark", u8"e\u0301e", chars, {2}},
      {"characters: a mark alone", u8"\u0301", chars, {0}},
      {"characters: flags", u8"🇩🇪🇫🇷", chars, {2}},
      {"characters: a sound mark is a character", u8"ｶﾞ", chars, {2}},
      {"characters: a modifier after a letter", u8"a\U0001F3FD", chars, {2}},
  };
  for (const WidthCase& c : cases) {
    EXPECT_THAT(measureText(Utf8(c.text), c.unit).lineWidths, testing::ElementsAreArray(c.lineWidths))
        << c.name;
    // A measure that is used again forgets its earlier lines.
    TextMeasure reused = measureText(Utf8("first\nsecond\nthird line"));
    measureText(Utf8(c.text), c.unit, reused);
    EXPECT_EQ(reused.lineWidths, c.lineWidths) << c.name;
  }
}

TEST(TextMeasure, NamesTheFirstControlCharacterAndItsLine) {
  struct ControlCase {
    std::string text;
    char32_t codePoint;
    std::uint32_t line;
  };
  const std::vector<ControlCase> cases = {
      {"a\tb", 0x09, 1},
      {std::string("ab\0", 3), 0x00, 1},
      {"ok\r\nsilenced\x1F\x01", 0x1F, 2},
      {"\x7F", 0x7F, 1},
      {u8"\u0080", 0x80, 1},
      {u8"日\n\n\u009F", 0x9F, 3},
  };
  for (const ControlCase& c : cases) {
    const boost::optional<ControlCharacter> control = measureText(Utf8(c.text)).control;
    ASSERT_TRUE(control) << testing::PrintToString(c.text);
    EXPECT_EQ(control->codePoint, c.codePoint) << testing::PrintToString(c.text);
    EXPECT_EQ(control->line, c.line) << testing::PrintToString(c.text);
  }
  // The line breaks, NEL among them, are no such characters; a measure used
  // again forgets the control of its last text.
  TextMeasure reused = measureText(Utf8("a\tb"));
  measureText(Utf8(u8"a\r\n\v\f\u0085\u2028\u2029 \u00A0~"), WidthUnit::Fullwidth, reused);
  EXPECT_FALSE(reused.control);
}

TEST(TextMeasure, NamesTheFirstWidestLineAndItsClass) {
  const TextMeasure measure = measureText(Utf8("OK\nSilence\nSilence"));
  EXPECT_EQ(measure.widestLine, 2u);
  EXPECT_EQ(measure.width, 4u);
  EXPECT_EQ(measure.measuredClass, LocalizedTextWidth::ExtraSmall);

  const TextMeasure last = measureText(Utf8(u8"OK\n日本語の警報"));
  EXPECT_EQ(last.widestLine, 2u);
  EXPECT_EQ(last.width, 6u);
  EXPECT_EQ(last.measuredClass, LocalizedTextWidth::Small);

  const TextMeasure empty = measureText(Utf8(""));
  EXPECT_EQ(empty.widestLine, 1u);
  EXPECT_EQ(empty.width, 0u);
  EXPECT_EQ(empty.measuredClass, LocalizedTextWidth::ExtraSmall);
}

TEST(TextMeasure, ClassesChangeExactlyPastEachLimit) {
  struct Boundary {
    std::uint32_t limit;
    LocalizedTextWidth within;
    LocalizedTextWidth past;
  };
  const std::vector<Boundary> boundaries = {
      {4, LocalizedTextWidth::ExtraSmall, LocalizedTextWidth::Small},
      {8, LocalizedTextWidth::Small, LocalizedTextWidth::Medium},
      {12, LocalizedTextWidth::Medium, LocalizedTextWidth::Large},
      {16, LocalizedTextWidth::Large, LocalizedTextWidth::ExtraLarge},
      {20, LocalizedTextWidth::ExtraLarge, LocalizedTextWidth::ExtraExtraLarge},
  };
  for (const Boundary& b : boundaries) {
    EXPECT_EQ(measureText(Utf8(repeated(u8"日", b.limit))).measuredClass, b.within) << b.limit;
    EXPECT_EQ(measureText(Utf8(repeated(u8"日", b.limit + 1))).measuredClass, b.past) << b.limit;
    EXPECT_EQ(measureText(Utf8(repeated("a", 2 * b.limit))).measuredClass, b.within) << b.limit;
    // One half more rounds up to a whole fullwidth character past the limit.
    EXPECT_EQ(measureText(Utf8(repeated("a", 2 * b.limit + 1))).measuredClass, b.past) << b.limit;
    // Counted as characters, the limit is reached with half as many ASCII letters.
    EXPECT_EQ(measureText(Utf8(repeated("a", b.limit)), WidthUnit::Characters).measuredClass, b.within);
    EXPECT_EQ(measureText(Utf8(repeated("a", b.limit + 1)), WidthUnit::Characters).measuredClass, b.past);
    EXPECT_EQ(widthLimit(b.within), b.limit);
    EXPECT_EQ(narrowestClassHolding(b.limit), b.within);
    EXPECT_EQ(narrowestClassHolding(b.limit + 1), b.past);
  }
  EXPECT_EQ(widthLimit(LocalizedTextWidth::ExtraExtraLarge), boost::none);
  EXPECT_EQ(widthLimit(static_cast<LocalizedTextWidth>(9)), boost::none);
}

TEST(TextMeasure, HasOneLineMoreThanTheStoreCountsBreaks) {
  std::vector<std::string> texts = {
      "",
      "\n",
      "\r",
      "\r\r",
      "\r\r\n",
      "\r\r\r",
      "\n\r",
      "\r\n\n",
      "\r\n\r\n",
      "a\r\rb",
      "\r\v",
      "\r\f",
      u8"\r\u0085",
      u8"\r\u2028",
      "\v\r",
      u8"\u2029\r\n",
      "x\r",
      "\r\r\r\n\r",
      std::string("\0\r\0", 3),
      // The store reads a lead byte with five leading ones as a four-byte lead.
      "\xFC\x80\x80\x80\r",
  };
  // Every sequence of three pieces, so that breaks meet each other and text in every order.
  const std::vector<std::string> pieces = {"a", "\r", "\n", "\v", u8"\u0085", u8"\u2028", u8"日", u8"\u0301"};
  for (const std::string& first : pieces) {
    for (const std::string& second : pieces) {
      for (const std::string& third : pieces) {
        texts.push_back(first);
        texts.back() += second;
        texts.back() += third;
      }
    }
  }
  for (const std::string& text : texts) {
    EXPECT_EQ(measureText(Utf8(text)).lineWidths.size(), numberOfLineBreaks(Utf8(text)) + 1)
        << testing::PrintToString(text);
  }
}

TEST(TextMeasure, RefusesWhatTheStoreRefuses) {
  const std::vector<std::string> malformed = {
      "\x80",                         // a continuation byte where a code point starts
      "ab\xC3",                       // cut short by the end
      std::string("\xE2\x82") + "a",  // cut short by an ASCII byte
      "\xC0\x80",                     // over-long
      "\xE0\x80\xAF",                 // over-long
      "\xF8\x80\x80\x80",             // five leading ones, read as an over-long four-byte form
      "\xED\xA0\x80",                 // surrogate
      "\xF4\x90\x80\x80",             // above U+10FFFF
      "ok\n\xFF",                     // after a break
  };
  for (const std::string& text : malformed) {
    EXPECT_THROW(numberOfLineBreaks(Utf8(text)), std::out_of_range) << testing::PrintToString(text);
    try {
      measureText(Utf8(text));
      ADD_FAILURE() << "no error for " << testing::PrintToString(text);
    } catch (const std::out_of_range& error) {
      EXPECT_STREQ(error.what(),
                   "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
    }
  }
}

}  // namespace
