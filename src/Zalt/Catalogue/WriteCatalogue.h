// Zalt::Catalogue writing and measuring: catalogue files from texts, the width
// tokens that files and the tool write, how wide a text is, and a
// pseudo-translation to try displays with before translations exist.
//
//   const std::vector<Tovra::Mdib::LocalizedText> texts = {Tovra::Mdib::LocalizedText(
//       Tovra::Locale::Utf8("Alarm\nsilenced"), Tovra::Locale::LanguageTag("en-US"),
//       Tovra::Mdib::LocalizedTextRef(Tovra::Locale::Utf8("alarm.silenced")), Tovra::Mdib::VersionCounter(1),
//       Tovra::Mdib::LocalizedTextWidth::ExtraSmall)};
//   const std::string file = Zalt::Catalogue::writeCatalogue(texts);
//   const Zalt::Catalogue::TextMeasure measure = Zalt::Catalogue::measureText(texts[0].text());
//   // measure.lineWidths == {3, 4}: five and eight halves, rounded up; measuredClass ExtraSmall
//   const Tovra::Locale::Utf8 pseudo = Zalt::Catalogue::pseudoTranslation(texts[0].text());
//   // "[Åļåŕṁ·····]\n[šîļéñçéð···]"
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {

// The six width tokens of catalogue files and the tool's options (xs, s, m, l,
// xl, xxl for ExtraSmall to ExtraExtraLarge), narrowest first. The reader, the
// writer and the tool all take them from here.
ZALT_LTSCATALOGUE_EXPORT const std::vector<std::pair<std::string, Tovra::Mdib::LocalizedTextWidth>>&
textWidthTokens();

// The width of one of the six tokens, exactly as written; none for any other text.
ZALT_LTSCATALOGUE_EXPORT boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidthFromToken(
    const std::string& token);

// The token of `width`; throws std::out_of_range for a value outside the six widths.
ZALT_LTSCATALOGUE_EXPORT const std::string& textWidthToken(Tovra::Mdib::LocalizedTextWidth width);

// "xs, s, m, l, xl, xxl": the tokens as messages list them.
ZALT_LTSCATALOGUE_EXPORT std::string textWidthTokenList();

// A catalogue file's bytes: UTF-8, one LocalizedText element of the participant
// namespace per text, in the order given, with Ref, Lang, Version and TextWidth
// where the text has them, escaped so that reading it back gives the same
// texts, carriage returns and tabs included. Throws std::invalid_argument,
// naming the text's reference, for a text, reference or language that is not
// UTF-8 or holds a character that no XML file can carry (a C0 control other
// than tab, LF and CR, U+FFFE, U+FFFF).
ZALT_LTSCATALOGUE_EXPORT std::string writeCatalogue(const std::vector<Tovra::Mdib::LocalizedText>& texts);

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

// A stand-in translation that runs longer than the source and stays readable:
// - each ASCII letter becomes an accented look-alike (A -> Å, e -> é, ...),
//   except in what a translator keeps as written, which passes unchanged like
//   every other character:
//   - markup written as text: tags (<b>, </b>, <br/>, <a href="x">) and
//     entities (&amp;, &nbsp;, &#169;, &#xA9;);
//   - printf-style placeholders with flags, width, precision, length and
//     position (%s, %d, %1$s, %-5.2f, %lu, %%), named ones (%(name)s) and %@;
//   - arguments in braces ({0}, {name}, {user.name}, {0,number},
//     {0, date, short}, {count:02d}), ${var} and $var;
//   - the syntax of plural, selectordinal and select arguments: argument
//     names, keywords, offset:, selectors such as one, other and =0, and #;
//     the text of each branch is translated like any other, what it holds
//     of these forms kept ({n, plural, one {# item} other {# items}} becomes
//     {n, plural, one {# îŧéṁ} other {# îŧéṁš}});
//   - the escapes of program sources written as two characters (\n, \t, \",
//     \\) and \u00E9;
//   what only looks like them is text: a < b, Fish & chips, {Press OK}, an
//   argument whose braces do not close;
// - each line is put in brackets and grows with its length, as translations
//   do: a line of n code points gains max(2, ceil(n * p)) code points, the
//   brackets included, with p = 100% for n <= 10, 80% for n <= 20, 60% for
//   n <= 30, 50% for n <= 50 and 40% above; middle dots (U+00B7) before the
//   closing bracket make up the rest, and an empty line becomes "[]";
// - line breaks are kept byte for byte, on the lines the store counts.
// Throws std::out_of_range, as the store does, when `text` is not valid UTF-8.
ZALT_LTSCATALOGUE_EXPORT Tovra::Locale::Utf8 pseudoTranslation(const Tovra::Locale::Utf8& text);

}  // namespace Catalogue
}  // namespace Zalt
