// Zalt::Catalogue catalogue identity: whether the text catalogue identifiers
// that an MDIB's MDSs declare (ReadMdibTexts.h) are ones a consumer can key
// its text tables by.
//
//   const Zalt::Catalogue::IdentityCheck identity = Zalt::Catalogue::checkIdentity(mdib);
//   if (identity.catalogueId) {
//     std::cout << *identity.catalogueId << '\n';  // urn:oid:1.3.6.1.4.1.1234.4.1.2.1
//   }
//
// An identifier is "urn:oid:" followed by an OID, or "urn:uuid:" followed by a
// UUID. "urn" and the namespace (oid, uuid) may be written in any case, as URNs
// allow; so may a UUID's hexadecimal digits. An OID is two or more arcs of
// decimal digits separated by dots, none with a leading zero, the first 0, 1
// or 2 (the only roots there are); a UUID is 8-4-4-4-12 hexadecimal digits,
// of any version and variant.
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/ReadMdibTexts.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {

// Whether `identifier` is a URN of an OID or a UUID as described above.
ZALT_LTSCATALOGUE_EXPORT bool isCatalogueIdentifier(std::string_view identifier);

// The form by which two identifiers are compared: "urn:" and the namespace in
// lower case, and a UUID's digits too; an OID's arcs as written.
ZALT_LTSCATALOGUE_EXPORT std::string comparedForm(std::string_view identifier);

struct IdentityCheck {
  // The first identifier that an MDS declares, as written; none where no MDS
  // declares one.
  std::optional<std::string> catalogueId;
  // Where the first identifier stands; meaningful with `catalogueId` only.
  SourceLocation location;
  // Identity findings, in document order: an identifier that is not one, or
  // a good one that differs from the first, at the later MDS.
  std::vector<Finding> findings;
};

// Checks the identifiers that the MDSs of `mdib` declare. That none does is no
// finding here: only a build that keeps a record of identifiers asks for one.
ZALT_LTSCATALOGUE_EXPORT IdentityCheck checkIdentity(const MdibTexts& mdib);

}  // namespace Catalogue
}  // namespace Zalt
