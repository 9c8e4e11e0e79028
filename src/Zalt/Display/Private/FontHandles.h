// Zalt::Display::FontFace::Handles: a face as FreeType draws it and as
// HarfBuzz shapes it, both made from one copy of the font file's bytes.
//
//   const FT_Face face = chain.faces[glyph.face]->handles().freeType;
//   FT_Set_Pixel_Sizes(face, 0, size);
//   FT_Load_Glyph(face, glyph.glyph, FT_LOAD_NO_HINTING);
#pragma once

#include <Zalt/Display/FontFace.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include <hb.h>

#include <string>

namespace Zalt {
namespace Display {

struct FontFace::Handles {
  // The file's bytes, which the FreeType face reads from as long as it lives.
  std::string bytes;
  FT_Library library = nullptr;
  // Its size is the drawer's to set: shaping never reads it.
  FT_Face freeType = nullptr;
  // HarfBuzz's own OpenType functions at a scale of units per em, unhinted.
  hb_font_t* harfBuzz = nullptr;

  Handles() = default;
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;
  ~Handles();
};

}  // namespace Display
}  // namespace Zalt
