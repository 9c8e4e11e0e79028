// Zalt::Display::Private text runs: a line cut into the pieces that are shaped
// each on its own, in the order a display shows them.
//
//   for (const TextRun& run : textRuns(line)) { shape(line, run); }
#pragma once

#include <hb.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {
namespace Private {

// Characters [start, start + length) of a line, of one direction and script.
struct TextRun {
  std::size_t start;
  std::size_t length;
  hb_direction_t direction;
  hb_script_t script;
};

// The runs of `line` left to right. Directions come from the bidirectional
// algorithm, the paragraph's from its first strong character (left to right
// when it has none); a run of one direction is cut again where the script
// changes, characters of no script of their own going with the one before
// them (with the one after them at the start).
std::vector<TextRun> textRuns(const std::u32string& line);

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
