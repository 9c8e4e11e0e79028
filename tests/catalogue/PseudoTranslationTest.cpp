#include <Zalt/Catalogue/PseudoTranslation.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Tovra::Locale::Utf8;
using Zalt::Catalogue::pseudoTranslation;
using Zalt::Localization::Impl::numberOfLineBreaks;

std::string pseudo(const std::string& text) { return pseudoTranslation(Utf8(text)).value(); }

// The code points of valid UTF-8, one string each.
std::vector<std::string> codePoints(const std::string& text) {
  std::vector<std::string> result;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0U) == 0x80U) {
      result.back() += c;
    } else {
      result.emplace_back(1, c);
    }
  }
  return result;
}

// Only the line-break characters of a text, in their order.
std::string lineBreaks(const std::string& text) {
  const std::set<std::string> breaks = {"\n", "\r", "\v", "\f", u8"\u0085", u8"\u2028", u8"\u2029"};
  std::string result;
  for (const std::string& codePoint : codePoints(text)) {
    if (breaks.count(codePoint) != 0) {
      result += codePoint;
    }
  }
  return result;
}

TEST(PseudoTranslation, ReplacesLettersPadsAndBracketsEachLine) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "[]"},
      {"OK", u8"[ÖĶ]"},
      {"Set %d\nmin", u8"[Šéŧ %d····]\n[ṁîñ·]"},
      {"Low battery", u8"[Ļöŵ ƀåŧŧéŕý·······]"},
      {"a\r\nb\rc", u8"[å]\r\n[ƀ]\r[ç]"},
      {"a\r\rb", u8"[å]\r\r[ƀ]"},
      {"\n\r", "[]\n[]\r[]"},
      {"a\r\vb", u8"[å]\r[]\v[ƀ]"},
      {u8"a\u2028z", u8"[å]\u2028[ž]"},
      {u8"日本 123", u8"[日本 123····]"},
      {"%s", "[%s]"},
      {"%1$s: %-5.2f %lu %%", "[%1$s: %-5.2f %lu %%" + std::string(u8"··············") + "]"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(pseudo(c.first), c.second) << testing::PrintToString(c.first);
  }
}

TEST(PseudoTranslation, KeepsEveryLineBreakAndTheStoresLineCount) {
  const std::vector<std::string> texts = {
      "Alarm\nsilenced",
      "Alarm\r\nsilenced",
      "Alarm\rsilenced",
      "Alarm\r\rsilenced",
      "Alarm\r\r\nsilenced",
      "\r\n\n",
      "\n\r",
      "trailing\r",
      "a\vb\fc",
      "a\r\fb",
      u8"a\u0085b",
      u8"a\r\u2028b",
      u8"a\u2029\r",
      "%d\n{0}\r\n",
      u8"日本\r\r\r語",
  };
  for (const std::string& text : texts) {
    const std::string result = pseudo(text);
    EXPECT_EQ(numberOfLineBreaks(Utf8(result)), numberOfLineBreaks(Utf8(text)))
        << testing::PrintToString(text);
    EXPECT_EQ(lineBreaks(result), lineBreaks(text)) << testing::PrintToString(text);
  }
}

TEST(PseudoTranslation, EveryLetterBecomesADifferentNonAsciiLetter) {
  std::string letters;
  for (char c = 'A'; c <= 'Z'; ++c) {
    letters += c;
  }
  for (char c = 'a'; c <= 'z'; ++c) {
    letters += c;
  }
  const std::vector<std::string> result = codePoints(pseudo(letters));
  ASSERT_GE(result.size(), 54u);
  EXPECT_EQ(result.front(), "[");
  EXPECT_EQ(result.back(), "]");
  const std::vector<std::string> replaced(result.begin() + 1, result.begin() + 53);
  for (const std::string& codePoint : replaced) {
    EXPECT_GT(codePoint.size(), 1u) << codePoint;
  }
  EXPECT_EQ(std::set<std::string>(replaced.begin(), replaced.end()).size(), 52u);
  // Look-alikes of ordinary width, one cluster each: the letters alone change no width.
  std::string lookAlikes;
  for (const std::string& codePoint : replaced) {
    lookAlikes += codePoint;
  }
  EXPECT_EQ(Zalt::Catalogue::measureText(Utf8(lookAlikes)).width, 26u);
}

TEST(PseudoTranslation, GrowsShortLinesMoreThanLongOnes) {
  // Code points added to a line of n letters, the brackets included.
  const std::vector<std::pair<std::size_t, std::size_t>> growth = {
      {0, 2},   {1, 2},   {2, 2},   {3, 3},   {10, 10}, {11, 9},   {20, 16},
      {21, 13}, {30, 18}, {31, 16}, {50, 25}, {51, 21}, {100, 40}, {101, 41},
  };
  for (const auto& g : growth) {
    const std::string line(g.first, 'x');
    EXPECT_EQ(codePoints(pseudo(line)).size(), g.first + g.second) << g.first;
    // Each line of a text grows by its own length.
    EXPECT_EQ(codePoints(pseudo("abc\n" + line)).size(), 1 + 3 + 3 + g.first + g.second) << g.first;
  }
}

// The content of a one-line result: without its brackets and padding.
std::string content(const std::string& text) {
  std::string result = pseudo(text);
  const std::string padding = u8"·";
  result.pop_back();
  while (result.size() >= padding.size() &&
         result.compare(result.size() - padding.size(), padding.size(), padding) == 0) {
    result.resize(result.size() - padding.size());
  }
  return result.substr(1);
}

// Private/KeptFormsTest.cpp tells what is kept; this, that pseudo keeps
// exactly that, also between and inside the branches of an argument.
TEST(PseudoTranslation, KeepsWhatATranslatorKeepsAndTranslatesTheRest) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {R"(<b>Bold</b> &amp; ${var} %1$s\n)", u8R"(<b>Ɓöļð</b> &amp; ${var} %1$s\n)"},
      {"{n, plural, one {# item} other {# items}}", u8"{n, plural, one {# îŧéṁ} other {# îŧéṁš}}"},
      {"{g, select, female {{n, plural, one {her %d cat} other {her cats}}} other {pets}}",
       u8"{g, select, female {{n, plural, one {ĥéŕ %d çåŧ} other {ĥéŕ çåŧš}}} other {ƥéŧš}}"},
      {"{Press OK} {n, plural, one {an item} other {b}", u8"{Ƥŕéšš ÖĶ} {ñ, ƥļûŕåļ, öñé {åñ îŧéṁ} öŧĥéŕ {b}"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(content(c.first), c.second) << testing::PrintToString(c.first);
  }
  // Syntax across lines keeps its letters; each line is still bracketed.
  EXPECT_EQ(pseudo("{n, plural,\r\none {# item}\nother {# items}}"),
            u8"[{n, plural,·······]\r\n[one {# îŧéṁ}········]\n[other {# îŧéṁš}}···········]");
}

TEST(PseudoTranslation, RefusesMalformedUtf8AsTheStoreDoes) {
  for (const char* text : {"\x80", "ab\xC3", "\xED\xA0\x80"}) {
    EXPECT_THROW(pseudo(text), std::out_of_range) << testing::PrintToString(text);
  }
}

}  // namespace
