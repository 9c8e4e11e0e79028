// Zalt::Catalogue::writeXliff: the texts of one language sent to translators
// as an XLIFF 1.2 document, which their tools open and save; ReadXliff.h reads
// their translations back as a catalogue of the target language.
//
//   using namespace Zalt::Catalogue;
//   const Catalogue catalogue = readCatalogueFiles({"en.xml", "de.xml"});
//   const Tovra::Locale::LanguageTag english("en-US");
//   const Tovra::Locale::LanguageTag german("de-DE");
//   const std::string xliff = writeXliff(catalogue, checkCatalogue(catalogue), english, german, "texts");
//   // ... translated, then saved as de.xlf ...
//   const XliffImport translated = readXliffFile("de.xlf");
//   for (const Finding& finding : translated.findings) {
//     std::cerr << placed(finding) << '\n';  // de.xlf:12:7: unit 'alarm.hr.high' has no translation
//   }
//   const std::string germanFile = writeCatalogue(mdibTexts(translated.catalogue.texts));
//
// Each text goes out as one unit, in the XLIFF 1.2 namespace:
//
//   <trans-unit id="2.m.1.alarm.hr.high" resname="alarm.hr.high" xml:space="preserve"
//               maxwidth="24" size-unit="char">
//     <source>Heart rate too high</source>
//     <target state="translated">Herzfrequenz zu hoch</target>
//     <note>Width m (Medium): ... Exactly 1 line.</note>
//   </trans-unit>
//
// Translation tools keep a unit's id, source and target and may drop all else,
// so the id alone carries the text's key but for its language:
//
//   VERSION.WIDTH.LINES.REFERENCE
//
// VERSION and LINES in decimal without leading zeros, WIDTH one of the tokens
// xs, s, m, l, xl, xxl or "-" for a text without a width, and REFERENCE last,
// whole, with each byte of a space, a control character (U+0000 to U+001F),
// DEL, % & < > " and ' written as '%' and two upper-case hex digits:
// "7.-.2.menu%20title" is the two-line text of reference "menu title" in
// version 7 without a width.
// Reading takes an id only as writeXliff writes it; any other is a finding.
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/TextMeasure.h>

#include <string>

namespace Zalt {
namespace Catalogue {

// One XLIFF 1.2 document, UTF-8, with one file element (source-language
// `from`, target-language `to`, datatype plaintext, `original` naming the
// catalogue) holding one unit per text of language `from` that a store keeps
// by `check` of `catalogue`, in catalogue order. A unit's source is the text,
// line breaks and carriage returns as they are; its target is the kept text of
// language `to` under the same key, where there is one, with state
// "translated". A text with a width has maxwidth in characters, which tools
// apply to the whole target: for N lines N times what a line of its width
// holds plus the N - 1 line breaks. In `unit` Fullwidth a line holds twice its
// class's limit, as a wide character counts two narrow ones; in Characters
// the limit itself. Every unit has a note that says its width, what a line
// holds in `unit`, and its number of lines.
// Throws std::invalid_argument where `from` or `to` is not a language of the
// store (ll-CC), or `original` or a text is what no XML file can carry.
ZALT_LTSCATALOGUE_EXPORT std::string writeXliff(const Catalogue& catalogue, const CatalogueCheck& check,
                                                const Tovra::Locale::LanguageTag& from,
                                                const Tovra::Locale::LanguageTag& to,
                                                const std::string& original,
                                                WidthUnit unit = WidthUnit::Fullwidth);

}  // namespace Catalogue
}  // namespace Zalt
