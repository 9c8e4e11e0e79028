// Zalt::Catalogue::measureText: how wide a text is, line by line, in the
// fullwidth characters by which the standard defines the width classes.
//
//   const Zalt::Catalogue::TextMeasure measure =
//       Zalt::Catalogue::measureText(Tovra::Locale::Utf8("Alarm\nsilenced"));
//   // measure.lineWidths == {3, 4}: five and eight halves, rounded up;
//   // measure.measuredClass == LocalizedTextWidth::ExtraSmall
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <vector>

namespace Zalt {
namespace Catalogue {

// What one line's extended grapheme clusters count in.
enum class WidthUnit {
  // A cluster that begins with an East Asian Wide or Fullwidth character or
  // with a regional indicator counts one, any other cluster of non-zero width
  // one half. A flag is thus one, whether a pair of regional indicators or a
  // black flag with its tag characters.
  Fullwidth,
  // Every cluster of non-zero width counts one, for catalogues whose widths
  // were set by counting characters.
  Characters,
};

// A control character that no display can place, and the 1-based number of the
// line that holds it: a C0 control other than the line breaks LF, VT, FF and
// CR (a tab, say), DEL, or a C1 control other than NEL.
struct ZALT_LTSCATALOGUE_EXPORT ControlCharacter {
  char32_t codePoint = 0;
  std::uint32_t line = 1;
};

// How wide a text is. Its lines are the ones the device store counts, so a
// measure has numberOfLineBreaks(text) + 1 of them. A line's width is the sum
// of its clusters, rounded up; the classes hold at most 4 (xs), 8 (s), 12 (m),
// 16 (l) and 20 (xl) a line, xxl more.
//
// Every character that takes room on a display counts. A cluster has zero
// width only when all its characters have, such as combining marks, joiners
// and variation selectors; a spacing mark takes room even with no base before
// it. Some characters count on their own even where they extend the cluster
// before them: each halfwidth form (U+FF61 to U+FFDC and U+FFE8 to U+FFEE),
// the sound marks U+FF9E and U+FF9F included, so that "ｶﾞ" is two halves, and
// an emoji modifier (U+1F3FB to U+1F3FF) that follows no emoji modifier base,
// which counts as an emoji. Control characters count nothing; the first of
// them is named in `control`.
struct ZALT_LTSCATALOGUE_EXPORT TextMeasure {
  // One width per line, in the text's order; never empty.
  std::vector<std::uint32_t> lineWidths;
  // The 1-based number of the widest line; the first of equally wide ones.
  std::uint32_t widestLine = 1;
  // The width of the widest line.
  std::uint32_t width = 0;
  // The narrowest class that holds the widest line.
  Tovra::Mdib::LocalizedTextWidth measuredClass = Tovra::Mdib::LocalizedTextWidth::ExtraSmall;
  // The text's first control character; none when it has none.
  boost::optional<ControlCharacter> control;
};

// Measures `text` in one pass. Throws std::out_of_range ("Invalid UTF-8 sequence
// encountered while trying to encode UTF-32 character") where the store would.
ZALT_LTSCATALOGUE_EXPORT TextMeasure measureText(const Tovra::Locale::Utf8& text,
                                                 WidthUnit unit = WidthUnit::Fullwidth);

// The same into `measure`, whose line vector keeps its capacity, so that
// measuring many texts allocates only for a text of more lines than any
// before. On a throw, `measure` holds no meaningful result.
ZALT_LTSCATALOGUE_EXPORT void measureText(const Tovra::Locale::Utf8& text, WidthUnit unit,
                                          TextMeasure& measure);

// The narrowest class whose lines may be `width` wide.
ZALT_LTSCATALOGUE_EXPORT Tovra::Mdib::LocalizedTextWidth narrowestClassHolding(std::uint32_t width);

// The most a line of `textWidth` may hold: 4, 8, 12, 16 or 20; none for
// ExtraExtraLarge, which has no limit, and for values outside the six classes.
ZALT_LTSCATALOGUE_EXPORT boost::optional<std::uint32_t> widthLimit(Tovra::Mdib::LocalizedTextWidth textWidth);

}  // namespace Catalogue
}  // namespace Zalt
