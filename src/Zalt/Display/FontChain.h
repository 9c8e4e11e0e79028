// Zalt::Display::FontChain: the faces a display falls back through, in order:
// a character takes its glyph from the first face that has it.
//
//   Zalt::Display::FontChain chain{{dejaVuSans, droidSansFallback}};
//   chain.faces[glyph.face]->handles();  // the face a ShapedGlyph names
#pragma once

#include <Zalt/Display/FontFace.h>

#include <memory>
#include <vector>

namespace Zalt {
namespace Display {

struct FontChain {
  // First to last resort; never empty in a chain read from a profile.
  std::vector<std::shared_ptr<const FontFace>> faces;
};

}  // namespace Display
}  // namespace Zalt
