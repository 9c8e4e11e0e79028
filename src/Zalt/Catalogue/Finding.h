// Zalt::Catalogue::Finding: one problem of a catalogue, an MDIB or an XLIFF
// file at its place, with its kind and message: what every check of the
// catalogue library reports and what the tool prints.
//
//   for (const Zalt::Catalogue::Finding& finding : check.findings) {
//     std::cerr << Zalt::Catalogue::placed(finding) << '\n';  // de.xml:12:7: ...
//   }
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <string>

namespace Zalt {
namespace Catalogue {

// One problem of a catalogue, at the place in a file that causes it.
struct Finding {
  enum class Kind {
    // The file cannot be read or is not a catalogue file; it yields no texts.
    File,
    // The store throws for this text; the message is the store's.
    Rejected,
    // The store keeps an earlier text under the same key and drops this one.
    Dropped,
    // A reference in one version lacks languages that the others have, or
    // has languages that they lack.
    Languages,
    // The store's language check fails for the whole catalogue; the message
    // is the store's.
    Inconsistent,
    // Nothing to work on: no localized text in the whole catalogue, no text
    // named by an MDIB, or no translated unit in XLIFF files.
    Empty,
    // The text's declared width is narrower than its widest line needs, or
    // the text holds a control character that no display can place.
    Width,
    // A text that an MDIB names lacks languages of the catalogue in the
    // version named, or the catalogue has no text for its reference.
    Missing,
    // The catalogue holds the reference, but not in the version named.
    Version,
    // A language that the texts cannot have where it stands: a text that an
    // MDIB names has a language that the catalogue lacks, or an XLIFF file's
    // target-language is missing or not a store's tag (ll-CC).
    Language,
    // A reference of the catalogue that the MDIB never names.
    Unused,
    // An MDIB gives a text inline, where no catalogue can localize it.
    Inline,
    // An XLIFF unit without a translation: no target, one that is empty or
    // white space only, or one whose state is new or needs-translation.
    Untranslated,
    // An XLIFF unit whose id is missing or is not one that writeXliff writes.
    Id,
    // An XLIFF translation that holds an element, where a text holds
    // characters only.
    Markup,
    // An XLIFF translation with another number of lines than its unit's
    // text: the store would file it under another key.
    Lines,
    // An XLIFF translation that no one has signed off: its state asks for
    // review or adaptation, its unit is not approved, or it is a machine's.
    Unreviewed,
    // A segmented XLIFF unit whose target's segments are not its source's.
    Segments,
    // An XLIFF translation that lacks or adds a placeholder, markup written
    // as text, an escape or an argument of its source.
    Placeholder,
    // A text catalogue identifier that an MDIB declares and a consumer cannot
    // key by: not a URN of an OID or a UUID, one MDS's differing from
    // another's, none where a record asks for one, or one that a record holds
    // for other texts.
    Identity,
  };

  Kind kind;
  SourceLocation location;
  std::string message;
};

// The kind's name in JSON: "file", "rejected", "dropped", "languages",
// "inconsistent", "empty", "width", "missing", "version", "language",
// "unused", "inline", "untranslated", "id", "markup", "lines", "unreviewed",
// "segments", "placeholder" or "identity".
ZALT_LTSCATALOGUE_EXPORT const char* name(Finding::Kind kind);

// "FILE:LINE:COLUMN: message", or "FILE: message" where no line applies.
ZALT_LTSCATALOGUE_EXPORT std::string placed(const Finding& finding);

ZALT_LTSCATALOGUE_EXPORT bool operator==(const Finding& lhs, const Finding& rhs);
ZALT_LTSCATALOGUE_EXPORT bool operator!=(const Finding& lhs, const Finding& rhs);

}  // namespace Catalogue
}  // namespace Zalt
