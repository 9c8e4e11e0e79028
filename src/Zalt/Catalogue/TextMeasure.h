// Zalt::Catalogue::measureText: how wide a localized text is, from its content,
// so that a declared TextWidth can be compared with what the text needs.
//
// A text's lines are the ones the device store counts (LF, CR LF as one, a lone
// CR, VT, FF, NEL, LS, PS; two CRs in a row are one break), so a measure always
// has numberOfLineBreaks(text) + 1 lines. A line's width is the sum over its
// extended grapheme clusters: a cluster whose first code point is wide (East
// Asian Wide or Fullwidth) counts one fullwidth character, a cluster in which
// every code point has zero width (controls, format characters, a mark alone)
// counts nothing, and every other cluster counts one half; the sum is rounded
// up. The width classes hold at most 4 (xs), 8 (s), 12 (m), 16 (l) and 20 (xl)
// fullwidth characters per line; xxl holds more.
//
//   const TextMeasure measure = measureText(Utf8("Alarm\nsilenced"));
//   measure.lineWidths;     // {3, 4}: five and eight halves, rounded up
//   measure.widestLine;     // 2
//   measure.measuredClass;  // LocalizedTextWidth::ExtraSmall
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <vector>

namespace Zalt {
namespace Catalogue {

// What one line's clusters count in.
enum class WidthUnit {
  // A wide cluster counts one, any other cluster of non-zero width one half.
  Fullwidth,
  // Every cluster of non-zero width counts one, for catalogues whose widths
  // were set by counting characters.
  Characters,
};

struct ZALT_LTSCATALOGUE_EXPORT TextMeasure {
  // One width per line, in the text's order; never empty (an empty text is one line of width 0).
  std::vector<std::uint32_t> lineWidths;
  // The 1-based number of the widest line; the first of equally wide ones.
  std::uint32_t widestLine = 1;
  // The width of the widest line.
  std::uint32_t width = 0;
  // The narrowest class that holds the widest line.
  Tovra::Mdib::LocalizedTextWidth measuredClass = Tovra::Mdib::LocalizedTextWidth::ExtraSmall;
};

// Measures `text` in one pass. Throws std::out_of_range ("Invalid UTF-8 sequence
// encountered while trying to encode UTF-32 character") where the store would.
ZALT_LTSCATALOGUE_EXPORT TextMeasure measureText(const Tovra::Locale::Utf8& text,
                                                 WidthUnit unit = WidthUnit::Fullwidth);

// The same, into `measure`, whose line vector keeps its capacity: measuring many
// texts into one TextMeasure allocates only when a text has more lines than any before.
// On a throw, `measure` holds no meaningful result.
ZALT_LTSCATALOGUE_EXPORT void measureText(const Tovra::Locale::Utf8& text, WidthUnit unit,
                                          TextMeasure& measure);

// The narrowest class whose lines may be `width` wide.
ZALT_LTSCATALOGUE_EXPORT Tovra::Mdib::LocalizedTextWidth narrowestClassHolding(std::uint32_t width);

// The most a line of `textWidth` may hold: 4, 8, 12, 16 or 20; none for
// ExtraExtraLarge, which has no limit, and for values outside the six classes.
ZALT_LTSCATALOGUE_EXPORT boost::optional<std::uint32_t> widthLimit(Tovra::Mdib::LocalizedTextWidth textWidth);

}  // namespace Catalogue
}  // namespace Zalt
