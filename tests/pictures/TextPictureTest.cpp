// Pictures of shown texts, looked at pixel by pixel: the box is as wide as the
// area's or the text's, whichever is wider, and red marks exactly what
// reaches beyond the box.
#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/TextPicture.h>

#include <gtest/gtest.h>
#include <png.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using Zalt::Display::PictureBox;
using Zalt::Display::ShapedLine;

const char* const dejaVuSans = ZALT_PICTURES_FONTS_DIR "/dejavu/DejaVuSans.ttf";

struct Pixels {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<std::uint8_t> rgb;

  const std::uint8_t* at(std::int32_t x, std::int32_t y) const {
    return &rgb[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                 static_cast<std::size_t>(x)) *
                3];
  }
  // Black and grey have equal channels; only the overflow's red has more red.
  bool isRed(std::int32_t x, std::int32_t y) const { return at(x, y)[0] > at(x, y)[1] + 40; }
  bool isInk(std::int32_t x, std::int32_t y) const { return at(x, y)[0] < 128; }

  // The pixels of columns [left, right) and rows [top, bottom) that `is` holds for.
  int count(std::int32_t left, std::int32_t right, std::int32_t top, std::int32_t bottom,
            bool (Pixels::*is)(std::int32_t, std::int32_t) const) const {
    int found = 0;
    for (std::int32_t y = top; y < bottom; ++y) {
      for (std::int32_t x = left; x < right; ++x) {
        found += (this->*is)(x, y) ? 1 : 0;
      }
    }
    return found;
  }
};

Pixels decoded(const std::string& png) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, png.data(), png.size()), 0) << image.message;
  image.format = PNG_FORMAT_RGB;
  Pixels pixels{static_cast<std::int32_t>(image.width), static_cast<std::int32_t>(image.height), {}};
  pixels.rgb.resize(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.rgb.data(), 0, nullptr), 0) << image.message;
  return pixels;
}

class TextPictureTest : public testing::Test {
protected:
  void SetUp() override {
    if (!std::filesystem::exists(dejaVuSans)) {
      GTEST_SKIP() << dejaVuSans << " is missing (Debian's fonts-dejavu-core installs it)";
    }
    shaper = std::make_unique<Zalt::Display::LineShaper>(
        Zalt::Display::FontChain{{std::make_shared<const Zalt::Display::FontFace>(dejaVuSans, 0)}});
  }

  Pixels draw(const std::vector<std::string>& texts, const PictureBox& box) {
    std::vector<ShapedLine> lines;
    lines.reserve(texts.size());
    for (const std::string& text : texts) {
      lines.push_back(shaper->shape(text, box.size));
    }
    const Zalt::Display::TextPicture picture = drawer.draw(shaper->chain(), lines, box);
    Pixels pixels = decoded(picture.png);
    EXPECT_EQ(pixels.width, picture.width);
    EXPECT_EQ(pixels.height, picture.height);
    return pixels;
  }

  std::unique_ptr<Zalt::Display::LineShaper> shaper;
  Zalt::Display::PictureDrawer drawer;
};

TEST_F(TextPictureTest, ALineThatFitsIsDrawnInItsBoxWithoutRed) {
  const Pixels pixels = draw({"Herzfrequenz"}, {200, 18, 24, 2});
  EXPECT_EQ(pixels.width, 200);
  EXPECT_EQ(pixels.height, 48);
  EXPECT_EQ(pixels.count(0, 200, 0, 48, &Pixels::isRed), 0);
  EXPECT_GT(pixels.count(0, 120, 0, 24, &Pixels::isInk), 100);
  EXPECT_EQ(pixels.count(0, 200, 24, 48, &Pixels::isInk), 0)
      << "one line, drawn in the first line of the box";
  EXPECT_EQ(pixels.count(120, 200, 0, 48, &Pixels::isInk), 0) << "12 characters at 18 px end before 120 px";
}

TEST_F(TextPictureTest, WhatReachesBeyondTheBoxIsRedAndThePictureAsWideAsTheText) {
  const std::string wide = "Herzfrequenz über Obergrenze";
  const std::int64_t textWidth = shaper->shape(wide, 18).pixels;
  ASSERT_GT(textWidth, 230);
  const Pixels pixels = draw({"Patient", wide}, {200, 18, 24, 1});
  EXPECT_EQ(pixels.width, textWidth);
  EXPECT_EQ(pixels.height, 48) << "two lines in a box of one";
  EXPECT_EQ(pixels.count(0, 200, 0, 48, &Pixels::isRed), 0);
  EXPECT_GT(pixels.count(200, pixels.width, 24, 48, &Pixels::isRed), 50);
  EXPECT_EQ(pixels.count(200, pixels.width, 0, 48, &Pixels::isInk), 0) << "beyond the box only red";
  EXPECT_GT(pixels.count(0, 200, 24, 48, &Pixels::isInk), 100);
  EXPECT_GT(pixels.count(0, 70, 0, 24, &Pixels::isInk), 50) << "the first line drawn above the second";
  // The box is shaded so that its edge shows where the text is no longer red.
  EXPECT_NE(pixels.at(199, 0)[1], pixels.at(200, 0)[1]);
}

TEST_F(TextPictureTest, AGlyphStandsWhereItsShapedAdvancesPutIt) {
  // Kerning draws "AV" narrower than "A" and "V" apart: the V's ink begins
  // where the shaped advance of the A ends, not a whole A further.
  const Pixels kerned = draw({"AV"}, {100, 40, 48, 1});
  const Pixels spaced = draw({"A V"}, {100, 40, 48, 1});
  const auto rightmostInk = [](const Pixels& pixels) {
    for (std::int32_t x = pixels.width - 1; x >= 0; --x) {
      if (pixels.count(x, x + 1, 0, pixels.height, &Pixels::isInk) > 0) {
        return x;
      }
    }
    return -1;
  };
  const std::int64_t kernedWidth = shaper->shape("AV", 40).pixels;
  EXPECT_NEAR(rightmostInk(kerned), static_cast<double>(kernedWidth), 2);
  EXPECT_GT(rightmostInk(spaced), rightmostInk(kerned) + 10);
}

}  // namespace
