// The widths of lines as the device's fonts shape them. Expected font units
// are those that hb-shape --font-funcs=ot gives for the same font and text;
// DejaVu Sans has 2048 units per em, so at 2048 pixels a width is its units.
#include "DisplayTestSupport.h"

#include <Zalt/Display/LineShaper.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Zalt::Display::LineShaper;

constexpr std::int32_t atUnits = 2048;

// The characters measured one by one: a width without joining or kerning.
std::int64_t eachAlone(LineShaper& shaper, const std::vector<std::string>& characters) {
  std::int64_t sum = 0;
  for (const std::string& character : characters) {
    sum += shaper.measure(character).pixels(atUnits);
  }
  return sum;
}

TEST(LineShaperTest, MeasuresLatinArabicAndMarksAsShapedNotAsTheirCharacters) {
  SKIP_WITHOUT_FONTS();
  LineShaper shaper(DisplayTestSupport::deviceChain());
  // Kerning pulls A, V and T together: 7698 units, where the characters sum to 8278.
  EXPECT_EQ(shaper.measure("AVATAR").pixels(atUnits), 7698);
  EXPECT_EQ(eachAlone(shaper, {"A", "V", "A", "T", "A", "R"}), 8278);
  // Rounded up once: 7698 × 18 / 2048 = 67.66.
  EXPECT_EQ(shaper.measure("AVATAR").pixels(18), 68);
  // Joining forms: 4735 units, narrower than the isolated letters.
  EXPECT_EQ(shaper.measure("\u0645\u0631\u062D\u0628\u0627").pixels(atUnits), 4735);
  EXPECT_NE(eachAlone(shaper, {"\u0645", "\u0631", "\u062D", "\u0628", "\u0627"}), 4735);
  // A combining acute takes no room of its own: e and the mark are as wide as é.
  EXPECT_EQ(shaper.measure("e\u0301").pixels(atUnits), 1260);
  EXPECT_EQ(shaper.measure("\u00E9").pixels(atUnits), 1260);
  // Trailing spaces count: 651 units each.
  EXPECT_EQ(shaper.measure("AVATAR  ").pixels(atUnits), 7698 + 2 * 651);
}

TEST(LineShaperTest, ShowsHebrewRightToLeftWithItsDigitsLeftToRight) {
  SKIP_WITHOUT_FONTS();
  LineShaper shaper(DisplayTestSupport::deviceChain());
  const Zalt::Display::ShapedLine line = shaper.shape("\u05E9\u05DC\u05D5\u05DD 123", atUnits);
  EXPECT_EQ(line.pixels, 9092);
  std::vector<std::uint32_t> glyphs;
  for (const auto& glyph : line.glyphs) {
    glyphs.push_back(glyph.glyph);
  }
  // Left to right: 1 2 3, the space, then final mem, vav, lamed, shin.
  const auto glyphOf = [&shaper](const char* text) { return shaper.shape(text, atUnits).glyphs.at(0).glyph; };
  EXPECT_EQ(glyphs, (std::vector<std::uint32_t>{glyphOf("1"), glyphOf("2"), glyphOf("3"), glyphOf(" "),
                                                glyphOf("\u05DD"), glyphOf("\u05D5"), glyphOf("\u05DC"),
                                                glyphOf("\u05E9")}));
}

TEST(LineShaperTest, TakesWhatTheFirstFontLacksFromTheNextAndNamesWhatNoFontHas) {
  SKIP_WITHOUT_FONTS();
  LineShaper shaper(DisplayTestSupport::deviceChain());
  // The fallback's ideographs are one em wide (256 of its 256 units).
  const Zalt::Display::ShapedLine cjk = shaper.shape("\u65E5\u672C\u8A9E", 18);
  EXPECT_EQ(cjk.pixels, 54);
  ASSERT_EQ(cjk.glyphs.size(), 3u);
  for (const auto& glyph : cjk.glyphs) {
    EXPECT_EQ(glyph.face, 1u);
    EXPECT_NE(glyph.glyph, 0u);
  }
  EXPECT_TRUE(cjk.missing.empty());
  // Latin from DejaVu, the ideographs from the fallback, in one line: 7698 × 18 / 2048 + 3 × 18.
  const Zalt::Display::ShapedLine mixed = shaper.shape("AVATAR\u65E5\u672C\u8A9E", 18);
  EXPECT_EQ(mixed.pixels, 122);
  EXPECT_EQ(mixed.glyphs.front().face, 0u);
  EXPECT_EQ(mixed.glyphs.back().face, 1u);
  // The fallback has the syllable 가 but neither font has 한 or 글: they are
  // named once each, in order, and count nothing.
  const Zalt::Display::ShapedLine hangul = shaper.shape("\uD55C\uAE00 \uAC00 \uD55C", atUnits);
  EXPECT_EQ(hangul.missing, U"\uD55C\uAE00");
  EXPECT_EQ(hangul.pixels, shaper.shape(" \uAC00 ", atUnits).pixels);
  EXPECT_EQ(std::count_if(hangul.glyphs.begin(), hangul.glyphs.end(),
                          [](const auto& glyph) { return glyph.missing; }),
            3);
}

TEST(LineShaperTest, RoundsTheExactSumOfFacesOfDifferentUnitsPerEmOnce) {
  Zalt::Display::MeasuredLine line;
  line.add(1000, 250);  // 0.5 pixel at size 2
  line.add(2048, 512);  // 0.5 pixel at size 2
  EXPECT_EQ(line.pixels(2), 1);
  line.add(1000, 1);
  EXPECT_EQ(line.pixels(2), 2);
  EXPECT_EQ(Zalt::Display::MeasuredLine().pixels(18), 0);
}

}  // namespace
