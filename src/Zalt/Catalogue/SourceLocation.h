// Zalt::Catalogue::SourceLocation: where something stands in a file, as every
// finding and every text of the catalogue library names it.
//
//   const Zalt::Catalogue::SourceLocation where{"de.xml", 12, 7};  // de.xml:12:7
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>

#include <cstdint>
#include <string>

namespace Zalt {
namespace Catalogue {

// Where something stands in a file: its name as given, and the line and the
// column, both counted from 1; line 0 where no line applies (a file that
// cannot be read).
struct SourceLocation {
  std::string file;
  std::int32_t line;
  std::int32_t column;
};

ZALT_LTSCATALOGUE_EXPORT bool operator==(const SourceLocation& lhs, const SourceLocation& rhs);
ZALT_LTSCATALOGUE_EXPORT bool operator!=(const SourceLocation& lhs, const SourceLocation& rhs);

}  // namespace Catalogue
}  // namespace Zalt
