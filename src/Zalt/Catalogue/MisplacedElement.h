// Zalt::Catalogue::MisplacedElement: an element named like a localized text
// (LocalizedText, or Text) that the reader did not take as one because it
// stands in another namespace or in none. A catalogue without any text is
// most often one whose namespace URI is misspelled or missing; these elements
// let the checker say so.
#pragma once

#include <Zalt/Catalogue/SourceLocation.h>

#include <string>

namespace Zalt {
namespace Catalogue {

struct MisplacedElement {
  // The start of the element: its '<'.
  SourceLocation location;
  // The element's local name: "LocalizedText" or "Text".
  std::string name;
  // The namespace URI the element stands in; empty for no namespace.
  std::string xmlNamespace;
};

}  // namespace Catalogue
}  // namespace Zalt
