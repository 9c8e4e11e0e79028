// Zalt::Display::LineShaper: shapes lines of text with one font chain, for
// one language, and measures them in pixels.
//
// A line is split into bidirectional runs (and again where its script
// changes), each shaped by HarfBuzz's own OpenType functions, unhinted, at a
// scale of the face's units per em. A cluster whose glyphs the first face
// lacks is shaped again, alone but with the line around it as context, by the
// next face of the chain, and so on; a cluster that no face shapes whole is
// shaped character by character. A character that no face has stays the
// last face's .notdef, marked missing, and counts nothing.
//
//   Zalt::Display::LineShaper shaper(chain, "de-DE");
//   shaper.shape("Herzfrequenz", 18).glyphs;  // for drawing
//   shaper.measure("Herzfrequenz").pixels(18);  // for checking
#pragma once

#include <Zalt/Display/DisplayExport.h>
#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/MeasuredLine.h>
#include <Zalt/Display/ShapedLine.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Zalt {
namespace Display {

class ZALT_LTSDISPLAY_EXPORT LineShaper {
public:
  // `chain` holds at least one face; `language` is a BCP 47 tag ("de-DE") that
  // selects the faces' forms for it, or empty for their default forms.
  explicit LineShaper(FontChain chain, const std::string& language = "");
  ~LineShaper();
  LineShaper(LineShaper&&) noexcept;
  LineShaper& operator=(LineShaper&&) noexcept;

  // `line`, UTF-8 without line breaks, shaped with the chain and measured at
  // `size` pixels per em (at least 1). Malformed UTF-8 is shaped as U+FFFD.
  ShapedLine shape(std::string_view line, std::int32_t size);

  // What shape() sums of `line`, at every size at once.
  MeasuredLine measure(std::string_view line);

  const FontChain& chain() const;

private:
  struct State;
  std::unique_ptr<State> m_state;
};

}  // namespace Display
}  // namespace Zalt
