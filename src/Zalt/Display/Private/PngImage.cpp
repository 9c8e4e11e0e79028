#include <Zalt/Display/Private/PngImage.h>

#include <png.h>
#include <zlib.h>

#include <stdexcept>

namespace Zalt {
namespace Display {
namespace {

void appendBytes(png_structp png, png_bytep bytes, png_size_t length) {
  static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), length);
}

void flushNothing(png_structp /*png*/) {}

// libpng reports its errors by a long jump back here, which skips every
// destructor between: this frame holds nothing that needs one.
bool writePng(png_structp png, png_infop info, const RgbImage& image, std::string& file) {
  if (setjmp(png_jmpbuf(png)) != 0) {
    return false;
  }
  png_set_write_fn(png, &file, appendBytes, flushNothing);
  png_set_compression_level(png, Z_BEST_SPEED);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
  png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()), static_cast<png_uint_32>(image.height()),
               8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
  png_write_info(png, info);
  for (std::int32_t y = 0; y < image.height(); ++y) {
    png_write_row(png, image.row(y));
  }
  png_write_end(png, info);
  return true;
}

}  // namespace

void RgbImage::reset(std::int32_t width, std::int32_t height, Rgb colour) {
  m_width = width;
  m_height = height;
  m_bytes.resize(offset(0, height));
  fillColumns(0, width, colour);
}

void RgbImage::fillColumns(std::int32_t left, std::int32_t right, Rgb colour) {
  for (std::int32_t y = 0; y < m_height; ++y) {
    for (std::int32_t x = left; x < right; ++x) {
      std::uint8_t* pixel = at(x, y);
      pixel[0] = colour.red;
      pixel[1] = colour.green;
      pixel[2] = colour.blue;
    }
  }
}

std::string encodePng(const RgbImage& image) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
  std::string file;
  const bool written = info != nullptr && writePng(png, info, image, file);
  png_destroy_write_struct(&png, &info);
  if (!written) {
    throw std::runtime_error("cannot encode a picture as PNG: out of memory");
  }
  return file;
}

}  // namespace Display
}  // namespace Zalt
