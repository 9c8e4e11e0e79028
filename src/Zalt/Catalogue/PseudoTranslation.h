// Zalt::Catalogue::pseudoTranslation: a stand-in translation to try displays
// with before translations exist: accented, longer, each line in brackets.
//
//   Zalt::Catalogue::pseudoTranslation(Tovra::Locale::Utf8("Alarm\nsilenced"));
//   // "[Åļåŕṁ·····]\n[šîļéñçéð···]"
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Zalt/Catalogue/CatalogueExport.h>

namespace Zalt {
namespace Catalogue {

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
