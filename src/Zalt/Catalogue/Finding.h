// Zalt::Catalogue::Finding: one problem of a catalogue, at the place in a file
// that causes it. The reader reports what makes a file unreadable as findings
// of kind File (CatalogueError); checkCatalogue reports the others. A checker
// prints each as "FILE:LINE:COLUMN: message".
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <string>

namespace Zalt {
namespace Catalogue {

struct Finding {
  enum class Kind {
    // The file cannot be read, is not a catalogue file, or holds a value
    // that no localized text can have; the file yields no texts.
    File,
    // The store throws for this text; the message is the store's.
    Rejected,
    // The store keeps an earlier text under the same key and drops this one.
    Dropped,
    // A reference in one version lacks languages that the others have, or has
    // languages that they lack.
    Languages,
    // The store's language check fails for the whole catalogue; the message is
    // the store's.
    Inconsistent,
    // No localized text was found in the whole catalogue.
    Empty,
    // The text's declared width is narrower than its widest line needs.
    Width,
  };

  Kind kind;
  SourceLocation location;
  std::string message;
};

// The kind's name as the checker's JSON writes it: "file", "rejected",
// "dropped", "languages", "inconsistent", "empty" or "width".
ZALT_LTSCATALOGUE_EXPORT const char* name(Finding::Kind kind);

// "FILE:LINE:COLUMN: message", or "FILE: message" where no line applies: how
// errors and the tool write a finding.
ZALT_LTSCATALOGUE_EXPORT std::string placed(const Finding& finding);

ZALT_LTSCATALOGUE_EXPORT bool operator==(const Finding& lhs, const Finding& rhs);
ZALT_LTSCATALOGUE_EXPORT bool operator!=(const Finding& lhs, const Finding& rhs);

}  // namespace Catalogue
}  // namespace Zalt
