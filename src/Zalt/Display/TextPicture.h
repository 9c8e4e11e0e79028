// Zalt::Display::PictureDrawer: a picture of one text as an area shows it, for
// a reviewer to look at: the area's box shaded, the text's lines drawn in it
// at the area's size, anti-aliased, and what reaches beyond the box in red.
//
//   Zalt::Display::PictureDrawer drawer;
//   const Zalt::Display::TextPicture picture =
//       drawer.draw(shaper.chain(), {shaper.shape("Herzfrequenz", 18)}, {200, 18, 24, 1});
//   writeFile("herzfrequenz.png", picture.png);
#pragma once

#include <Zalt/Display/DisplayExport.h>
#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/ShapedLine.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

// The box of a display area, in pixels, and the size its text is drawn at.
struct PictureBox {
  std::int32_t width;
  // Pixels per em.
  std::int32_t size;
  std::int32_t lineHeight;
  std::int32_t lines;
};

struct TextPicture {
  // The box's width, or the widest line's where that is wider.
  std::int32_t width;
  // One line height for each of the box's lines, or of the text's where it has more.
  std::int32_t height;
  // The picture as an RGB PNG file.
  std::string png;
};

class ZALT_LTSDISPLAY_EXPORT PictureDrawer {
public:
  PictureDrawer();
  ~PictureDrawer();
  PictureDrawer(PictureDrawer&&) noexcept;
  PictureDrawer& operator=(PictureDrawer&&) noexcept;

  // `lines`, shaped with `chain`, top to bottom in `box`. Each glyph stands
  // where its advances and offsets put it, scaled to the box's size as the
  // line was measured; a missing character's glyph is drawn as the face's
  // empty box. The baseline of each line sits an ascender of the chain's first
  // face below the top of its line, the line's leading shared above and below.
  // Not for two threads at once, nor while another thread uses the chain's
  // FreeType faces: drawing sets their size and transform.
  TextPicture draw(const FontChain& chain, const std::vector<ShapedLine>& lines, const PictureBox& box);

private:
  struct State;
  std::unique_ptr<State> m_state;
};

}  // namespace Display
}  // namespace Zalt
