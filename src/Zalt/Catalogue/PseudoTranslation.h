// Zalt::Catalogue::pseudoTranslation: a stand-in translation of a text, to try
// displays with a language that runs longer than the source before any real
// translation exists, while the text stays readable to the team.
//
// - Each ASCII letter becomes an accented look-alike (A -> Å, e -> é, ...).
//   Everything else passes unchanged: other characters, digits, punctuation,
//   and placeholders, which the program fills in and must find intact:
//   printf-style ones (%s, %d, %1$s, %-5.2f, %lu, %%) and brace ones ({0},
//   {name}, {0,number}, {count:02d}: a name of ASCII letters, digits and
//   underscores, then optionally ',' or ':' and more printable ASCII, no braces).
// - Each line is put in brackets, so that a cut shows at the end of every line
//   of a display, and grows with its length, as translations do: a line of n
//   code points gains max(2, ceil(n * p)) code points, the two brackets
//   included, with p = 100% for n <= 10, 80% for n <= 20, 60% for n <= 30,
//   50% for n <= 50 and 40% above. Middle dots (U+00B7) before the closing
//   bracket make up the rest. An empty line becomes "[]".
// - Line breaks are kept byte for byte, and the lines are those the store
//   counts, so the result has exactly as many lines as the text.
// The result depends on the text alone.
//
//   pseudoTranslation(Utf8("Set %d\nmin"));  // "[Šéŧ %d····]\n[ṁîñ·]"
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Zalt/Catalogue/CatalogueExport.h>

namespace Zalt {
namespace Catalogue {

// The pseudo-translation of `text`, in UTF-8. Throws std::out_of_range, as the
// store does, when `text` is not valid UTF-8.
ZALT_LTSCATALOGUE_EXPORT Tovra::Locale::Utf8 pseudoTranslation(const Tovra::Locale::Utf8& text);

}  // namespace Catalogue
}  // namespace Zalt
