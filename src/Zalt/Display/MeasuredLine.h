// Zalt::Display::MeasuredLine: a line's advances summed per face, in each
// face's font units, from which its width at any size follows exactly; what
// the display check keeps of a line, where a drawer needs its ShapedLine.
//
//   const Zalt::Display::MeasuredLine line = shaper.measure("Herzfrequenz");
//   line.pixels(18);  // ceil(18 × advances / units per em), summed over faces
#pragma once

#include <Zalt/Display/DisplayExport.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

struct ZALT_LTSDISPLAY_EXPORT MeasuredLine {
  // The sum of the advances of the glyphs from faces of one units per em.
  struct Advances {
    std::int32_t unitsPerEm;
    std::int64_t sum;
  };

  // One entry per units per em that the line's glyphs come in.
  std::vector<Advances> advances;
  // The characters that no face of the chain has, in the order of the line,
  // each once; their glyphs count nothing.
  std::u32string missing;

  // Adds `advance` font units of a face of `unitsPerEm`.
  void add(std::int32_t unitsPerEm, std::int64_t advance);

  // The width at `size` pixels per em: every advance × size / units per em,
  // summed exactly and rounded up once.
  std::int64_t pixels(std::int32_t size) const;
};

}  // namespace Display
}  // namespace Zalt
