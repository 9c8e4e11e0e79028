#include "TestSupport.h"

#include <Tovra/Format/Stream.h>

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

using namespace TestSupport;

namespace {

template <typename T>
std::string onOstream(const T& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

template <typename T>
std::string onFormatStream(const T& value) {
  Tovra::Format::Stream out;
  out << value;
  return out.cStr();
}

TEST(Values, ReferencesOrderByRefBytesThenVersionThenAbsentFirstWidthAndLines) {
  // Each orders before the next; a byte of 0x80 or above orders after ASCII.
  const auto belowXs = static_cast<LocalizedTextWidth>(-1);
  const std::vector<LocalizedTextReference> ascending{
      reference("a", 9),           reference("a", std::uint64_t{1} << 63U),
      reference("ab", 1),          reference("ab", 1, any, 1U),
      reference("ab", 1, belowXs), reference("ab", 1, xs, 1U),
      reference("ab", 1, sm),      reference("ab", 1, sm, 2U),
      reference("\xC3\xA4", 1)};
  for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
    const auto& [lower, higher] = std::tie(ascending[i], ascending[i + 1]);
    EXPECT_TRUE(lower < higher && !(higher < lower) && !(lower < lower)) << lower << " < " << higher;
    EXPECT_TRUE(lower != higher && !(lower == higher) && lower == LocalizedTextReference(lower)) << lower;
  }
}

TEST(Values, LocalizedTextsAreEqualOnlyWhenEveryPartIs) {
  const LocalizedText text(mdib("hr", "de-DE", 3, md, 1, "Herz"), 1);
  for (const LocalizedText& other :
       {LocalizedText(mdib("hr", "de-DE", 3, md, 1, "Herz!"), 1),
        LocalizedText(mdib("hr", "de-DE", 4, md, 1, "Herz"), 1),
        LocalizedText(mdib("hr", "de-DE", 3, md, 1, "Herz"), 2), LocalizedText::empty()}) {
    EXPECT_TRUE(text != other && !(text == other)) << other;
  }
  EXPECT_TRUE(text == LocalizedText(mdib("hr", "de-DE", 3, md, 1, "Herz"), 1) &&
              !(text != LocalizedText(mdib("hr", "de-DE", 3, md, 1, "Herz"), 1)));
}

TEST(Values, PrintedFormsOfTextsAreTheSameOnBothStreams) {
  const std::pair<LocalizedText, std::string> cases[] = {
      {{Utf8("Herz"), LanguageTag("de-DE"), ref("hr"), VersionCounter(3), md, 1},
       "(de-DE:'Herz', ref=hr, refVersion=3, width=Medium, numberOfLines=1)"},
      {LocalizedText::empty(), "('', numberOfLines=1)"},
      {{Utf8("it's"), any, ref(""), VersionCounter(UINT64_MAX), any, 2},
       "('it's', refVersion=18446744073709551615, numberOfLines=2)"},
      {{Utf8(""), LanguageTag("en-US"), ref("x"), any, static_cast<LocalizedTextWidth>(6), 1},
       "(en-US:'', ref=x, width=[Unknown LocalizedTextWidth], numberOfLines=1)"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(onFormatStream(text), expected);
    EXPECT_EQ(onOstream(text), expected);
  }
  const LocalizedText withNul(Utf8(std::string("ab\0cd", 5)), any, ref("r"), any, any, 1);
  EXPECT_EQ(onOstream(withNul), "('ab");
}

TEST(Values, PrintedFormsOfReferencesDifferOnlyInTheBlankBeforeAPresentOptional) {
  const std::tuple<LocalizedTextReference, std::string, std::string> cases[] = {
      {reference("hr", 3, md, 2U), "(hr,3,Medium,2)", "(hr,3, Medium, 2)"},
      {reference("hr", 3), "(hr,3,--,--)", "(hr,3,--,--)"},
      {reference("hr", 3, any, 2U), "(hr,3,--,2)", "(hr,3,--, 2)"},
      {reference("hr", 0, static_cast<LocalizedTextWidth>(-1)), "(hr,0,[Unknown LocalizedTextWidth],--)",
       "(hr,0, [Unknown LocalizedTextWidth],--)"},
  };
  for (const auto& [value, formatted, streamed] : cases) {
    EXPECT_EQ(onFormatStream(value), formatted);
    EXPECT_EQ(onOstream(value), streamed);
  }
}

}  // namespace
