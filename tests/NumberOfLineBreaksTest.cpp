#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using Zalt::Localization::Impl::numberOfLineBreaks;

unsigned int breaks(const std::string& bytes) { return numberOfLineBreaks(Tovra::Locale::Utf8(bytes)); }

TEST(NumberOfLineBreaks, LineFeedsAndCarriageReturns) {
  EXPECT_EQ(breaks(""), 0U);
  EXPECT_EQ(breaks("no break"), 0U);
  EXPECT_EQ(breaks("a\nb"), 1U);
  EXPECT_EQ(breaks("\n\n\n"), 3U);
  EXPECT_EQ(breaks("a\r\nb"), 1U);
  EXPECT_EQ(breaks("a\rb"), 1U);
  EXPECT_EQ(breaks("a\r\rb"), 1U);  // two carriage returns in a row are one break
  EXPECT_EQ(breaks("a\r"), 1U);
  EXPECT_EQ(breaks("a\n\r"), 2U);
  EXPECT_EQ(breaks("\r\n\r\n"), 2U);
}

TEST(NumberOfLineBreaks, OtherBreakCharactersAndAPendingCarriageReturn) {
  const std::string others[] = {"\x0B", "\x0C", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
  for (const std::string& brk : others) {
    EXPECT_EQ(breaks("a" + brk + "b"), 1U);
    EXPECT_EQ(breaks("a\r" + brk + "b"), 2U);
  }
  // Near misses decode to ordinary characters.
  EXPECT_EQ(breaks("\xC2\x84\xE2\x80\xAA\xF0\x9F\x98\x80"), 0U);
}

TEST(NumberOfLineBreaks, MalformedUtf8IsOutOfRange) {
  const std::string malformed[] = {
      "\x80",              // continuation byte where a character starts
      "a\xC3",             // sequence cut short by the end
      "\xE2\x80",          // three-byte sequence cut short
      "\xC3(",             // lead byte followed by a non-continuation byte
      "\xE2\x28\xA1",      // ... also inside a longer sequence
      "\xF4\x90\x80\x80",  // above U+10FFFF
      "\xED\xA0\x80",      // surrogate U+D800
      "\xC0\xAF",          // over-long '/'
      "\xE0\x80\xAF",      // over-long in three bytes
      "\xF8\x88\x80\x80",  // five leading ones read as a four-byte lead, then over-long
  };
  for (const std::string& bytes : malformed) {
    try {
      breaks(bytes);
      ADD_FAILURE() << "no error for " << testing::PrintToString(bytes);
    } catch (const std::out_of_range& e) {
      EXPECT_STREQ(e.what(), "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
    }
  }
}

}  // namespace
