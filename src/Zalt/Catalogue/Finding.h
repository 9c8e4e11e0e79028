// Zalt::Catalogue::Finding: one problem that a device store would meet in a
// catalogue, at the place of the text that causes it. checkCatalogue makes
// them; a checker prints each as "FILE:LINE: message".
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <string>

namespace Zalt {
namespace Catalogue {

struct Finding {
  enum class Kind {
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
  };

  Kind kind;
  SourceLocation location;
  std::string message;
};

// "rejected", "dropped", "languages" or "inconsistent".
ZALT_LTSCATALOGUE_EXPORT const char* name(Finding::Kind kind);

}  // namespace Catalogue
}  // namespace Zalt
