// Zalt::Display::ShapedLine: one line of a text as a display draws it with an
// area's font chain: its glyphs in visual order, each from the face of the
// chain that has it, and the line's width in pixels at the area's size.
//
//   const Zalt::Display::ShapedLine line = shaper.shape(u8"Herzfrequenz", 18);
//   if (line.pixels > area.width) { ... }           // overflows its box
//   for (const Zalt::Display::ShapedGlyph& glyph : line.glyphs) {
//     // chain.face(glyph.face) at 18 px: load glyph.glyph, draw it at the pen
//     // plus its offsets, move the pen by its advance (all × 18 / upem).
//   }
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

// One glyph of a shaped line. Advances and offsets are in the font units of
// its face (shaped at a scale of the face's units per em, unhinted), so that a
// drawer scales them to any size exactly as the width was measured.
struct ShapedGlyph {
  // The index of its face in the area's FontChain.
  std::uint32_t face;
  // The glyph's id in that face.
  std::uint32_t glyph;
  std::int32_t xAdvance;
  std::int32_t xOffset;
  std::int32_t yOffset;
  // The face's .notdef standing for a character that no face of the chain
  // has: a drawer may show it as the empty box the device would show, but its
  // advance counts nothing in the line's width.
  bool missing;
};

// A line shaped with a font chain and measured at one size.
struct ShapedLine {
  // Left to right as the display shows them, whatever the directions of the
  // line's runs.
  std::vector<ShapedGlyph> glyphs;
  // The sum of the glyphs' advances in pixels, each advance × size / its
  // face's units per em, summed exactly and rounded up once.
  std::int64_t pixels;
  // The characters that no face of the chain has, in the order of the line,
  // each once; empty when every character has a glyph.
  std::u32string missing;
};

}  // namespace Display
}  // namespace Zalt
