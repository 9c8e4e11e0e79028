#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

unsigned int breaks(const std::string& bytes) {
  return Zalt::Localization::Impl::numberOfLineBreaks(Tovra::Locale::Utf8(bytes));
}

TEST(NumberOfLineBreaks, CountsEachBreakAndACarriageReturnOnlyOnceBeforeALineFeed) {
  std::vector<unsigned int> counted;
  // The last text holds near misses of the break characters: U+0084, U+202A and an emoji.
  for (const std::string text : {"", "no break", "a\nb", "\n\n\n", "a\r\nb", "a\rb", "a\r\rb", "a\r", "a\n\r",
                                 "\r\n\r\n", "\r\r\n", "\rx\r", "\xC2\x84\xE2\x80\xAA\xF0\x9F\x98\x80"}) {
    counted.push_back(breaks(text));
  }
  EXPECT_EQ(counted, (std::vector<unsigned int>{0, 0, 1, 3, 1, 1, 1, 1, 2, 2, 1, 2, 0}));
  for (const std::string brk : {"\x0B", "\x0C", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    EXPECT_EQ(breaks("a" + brk + "b"), 1U) << testing::PrintToString(brk);
    EXPECT_EQ(breaks("a\r" + brk + "b"), 2U) << testing::PrintToString(brk);
  }
}

// A stray continuation byte, sequences cut short by the end or by another
// byte, a value above U+10FFFF, a surrogate, over-long forms, and a lead byte
// with five leading ones (read as a four-byte lead, then over-long).
TEST(NumberOfLineBreaks, MalformedUtf8IsOutOfRange) {
  for (const std::string bytes : {"\x80", "a\xC3", "\xE2\x80", "\xC3(", "\xE2\x28\xA1", "\xF4\x90\x80\x80",
                                  "\xED\xA0\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xF8\x88\x80\x80"}) {
    try {
      breaks(bytes);
      ADD_FAILURE() << "no error for " << testing::PrintToString(bytes);
    } catch (const std::out_of_range& e) {
      EXPECT_STREQ(e.what(), "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
    }
  }
}

}  // namespace
