#include <Zalt/Display/Private/FontHandles.h>
#include <Zalt/Display/Private/PngImage.h>
#include <Zalt/Display/TextPicture.h>

#include <algorithm>
#include <cmath>

namespace Zalt {
namespace Display {
namespace {

// The box is neutral grey and the text black, so that the only colour in a
// picture is what reaches beyond the box.
constexpr Rgb boxShade{235, 235, 235};
constexpr Rgb beyondBox{255, 255, 255};
constexpr Rgb ink{0, 0, 0};
constexpr Rgb overflowInk{220, 0, 0};

std::uint8_t blend(std::uint8_t below, std::uint8_t colour, std::uint8_t coverage) {
  return static_cast<std::uint8_t>((below * (255 - coverage) + colour * coverage + 127) / 255);
}

void paint(std::uint8_t* pixel, Rgb colour, std::uint8_t coverage) {
  pixel[0] = blend(pixel[0], colour.red, coverage);
  pixel[1] = blend(pixel[1], colour.green, coverage);
  pixel[2] = blend(pixel[2], colour.blue, coverage);
}

double toPixels(std::int32_t units, std::int32_t size, std::int32_t unitsPerEm) {
  return static_cast<double>(units) * size / unitsPerEm;
}

// The measured width leaves out the advances of missing characters' glyphs;
// the picture draws them, as the device would, and makes room for them.
std::int64_t drawnWidth(const FontChain& chain, const ShapedLine& line, std::int32_t size) {
  double missing = 0;
  for (const ShapedGlyph& glyph : line.glyphs) {
    if (glyph.missing) {
      missing += toPixels(glyph.xAdvance, size, chain.faces[glyph.face]->unitsPerEm());
    }
  }
  return line.pixels + static_cast<std::int64_t>(std::ceil(missing));
}

// Where the baseline of the first line lies below the picture's top.
std::int32_t firstBaseline(const FontChain& chain, const PictureBox& box) {
  const FontFace& first = *chain.faces.front();
  FT_Face face = first.handles().freeType;
  const double ascender = toPixels(face->ascender, box.size, first.unitsPerEm());
  const double descender = toPixels(face->descender, box.size, first.unitsPerEm());
  const double leading = box.lineHeight - (ascender - descender);
  return static_cast<std::int32_t>(std::lround(leading / 2 + ascender));
}

}  // namespace

struct PictureDrawer::State {
  RgbImage image;
  std::int32_t boxWidth = 0;
  // Which faces of the chain have been set to this picture's size.
  std::vector<bool> sized;

  FT_Face sizedFace(const FontChain& chain, std::uint32_t index, std::int32_t size) {
    FT_Face face = chain.faces[index]->handles().freeType;
    if (!sized[index]) {
      FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size));
      sized[index] = true;
    }
    return face;
  }

  // The glyph's bitmap, rendered at the fraction of a pixel where its origin
  // lies, so that glyphs stand where the measured advances put them.
  void drawGlyph(FT_Face face, std::uint32_t glyph, double x, double y) {
    const double left = std::floor(x);
    FT_Vector shift{static_cast<FT_Pos>(std::lround((x - left) * 64)), 0};
    FT_Set_Transform(face, nullptr, &shift);
    if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_HINTING | FT_LOAD_RENDER) != 0 ||
        face->glyph->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) {
      return;
    }
    const FT_Bitmap& bitmap = face->glyph->bitmap;
    const auto originX = static_cast<std::int32_t>(left) + face->glyph->bitmap_left;
    const auto originY = static_cast<std::int32_t>(std::lround(y)) - face->glyph->bitmap_top;
    for (std::int32_t row = 0; row < static_cast<std::int32_t>(bitmap.rows); ++row) {
      const std::int32_t atY = originY + row;
      if (atY < 0 || atY >= image.height()) {
        continue;
      }
      const unsigned char* coverage = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
      const std::int32_t from = std::max(0, -originX);
      const std::int32_t to = std::min(static_cast<std::int32_t>(bitmap.width), image.width() - originX);
      for (std::int32_t column = from; column < to; ++column) {
        if (coverage[column] != 0) {
          const std::int32_t atX = originX + column;
          paint(image.at(atX, atY), atX < boxWidth ? ink : overflowInk, coverage[column]);
        }
      }
    }
  }

  void drawLine(const FontChain& chain, const ShapedLine& line, std::int32_t size, double baseline) {
    double pen = 0;
    for (const ShapedGlyph& glyph : line.glyphs) {
      const std::int32_t unitsPerEm = chain.faces[glyph.face]->unitsPerEm();
      FT_Face face = sizedFace(chain, glyph.face, size);
      drawGlyph(face, glyph.glyph, pen + toPixels(glyph.xOffset, size, unitsPerEm),
                baseline - toPixels(glyph.yOffset, size, unitsPerEm));
      pen += toPixels(glyph.xAdvance, size, unitsPerEm);
    }
  }
};

PictureDrawer::PictureDrawer() : m_state(std::make_unique<State>()) {}
PictureDrawer::~PictureDrawer() = default;
PictureDrawer::PictureDrawer(PictureDrawer&&) noexcept = default;
PictureDrawer& PictureDrawer::operator=(PictureDrawer&&) noexcept = default;

TextPicture PictureDrawer::draw(const FontChain& chain, const std::vector<ShapedLine>& lines,
                                const PictureBox& box) {
  std::int64_t width = box.width;
  for (const ShapedLine& line : lines) {
    width = std::max(width, drawnWidth(chain, line, box.size));
  }
  const auto lineCount = std::max(box.lines, static_cast<std::int32_t>(lines.size()));
  State& state = *m_state;
  state.image.reset(std::max<std::int32_t>(1, static_cast<std::int32_t>(width)),
                    std::max(1, lineCount * box.lineHeight), beyondBox);
  state.image.fillColumns(0, std::min(box.width, state.image.width()), boxShade);
  state.boxWidth = box.width;
  state.sized.assign(chain.faces.size(), false);
  const std::int32_t baseline = firstBaseline(chain, box);
  for (std::size_t index = 0; index < lines.size(); ++index) {
    state.drawLine(chain, lines[index], box.size, baseline + static_cast<double>(index) * box.lineHeight);
  }
  for (const auto& face : chain.faces) {
    FT_Set_Transform(face->handles().freeType, nullptr, nullptr);
  }
  return {state.image.width(), state.image.height(), encodePng(state.image)};
}

}  // namespace Display
}  // namespace Zalt
