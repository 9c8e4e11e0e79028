// Zalt::Display::LineShaper: shapes the lines of texts with one font chain and
// measures them in pixels, remembering what it shaped so that a line shown in
// several areas of one chain is shaped once.
//
//   Zalt::Display::LineShaper shaper(chain);
//   const Zalt::Display::ShapedLine line = shaper.shape("Herzfrequenz", 18);
//   line.pixels;  // 113
#pragma once

#include <Zalt/Display/DisplayExport.h>
#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/ShapedLine.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace Zalt {
namespace Display {

class ZALT_LTSDISPLAY_EXPORT LineShaper {
public:
  // `chain` holds at least one face.
  explicit LineShaper(FontChain chain);
  ~LineShaper();
  LineShaper(LineShaper&&) noexcept;
  LineShaper& operator=(LineShaper&&) noexcept;

  // `line`, UTF-8 without line breaks, shaped with the chain and measured at
  // `size` pixels per em (at least 1). Malformed UTF-8 is shaped as U+FFFD.
  ShapedLine shape(std::string_view line, std::int32_t size);

  const FontChain& chain() const;

private:
  struct State;
  std::unique_ptr<State> m_state;
};

}  // namespace Display
}  // namespace Zalt
