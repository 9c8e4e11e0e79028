// Zalt::Display::RgbImage and encodePng: the pixels of a picture, three bytes
// (red, green, blue) each, row after row, and the PNG file that holds them.
//
//   RgbImage image;
//   image.reset(200, 44, {255, 255, 255});
//   image.at(3, 10)[0] = 0;                   // less red at x 3, y 10
//   const std::string file = encodePng(image);
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

struct Rgb {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
};

class RgbImage {
public:
  // Makes the image `width` × `height` pixels of `colour`, reusing the memory
  // of the pictures before it.
  void reset(std::int32_t width, std::int32_t height, Rgb colour);
  // Paints the columns from `left` up to `right` (excluded) in `colour`.
  void fillColumns(std::int32_t left, std::int32_t right, Rgb colour);

  std::int32_t width() const { return m_width; }
  std::int32_t height() const { return m_height; }
  // The three bytes of the pixel at column `x` and row `y`, both inside.
  std::uint8_t* at(std::int32_t x, std::int32_t y) { return &m_bytes[offset(x, y)]; }
  const std::uint8_t* row(std::int32_t y) const { return &m_bytes[offset(0, y)]; }

private:
  std::size_t offset(std::int32_t x, std::int32_t y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x)) *
           3;
  }

  std::int32_t m_width = 0;
  std::int32_t m_height = 0;
  std::vector<std::uint8_t> m_bytes;
};

// The image as an 8-bit RGB PNG file, compressed for speed over size: a
// reviewer's pictures are many and small. Throws std::runtime_error if libpng
// fails, which it does only without memory.
std::string encodePng(const RgbImage& image);

}  // namespace Display
}  // namespace Zalt
