// Zalt::Catalogue::SourceLocation: where something stands in a catalogue file,
// as an editor shows it: the file name as given, the line and the column, both
// counted from 1. A line end is LF, CR LF or a lone CR; the column counts
// characters (UTF-8 code points), not bytes.
//
//   SourceLocation{"texts/de.xml", 12, 5}  // texts/de.xml, line 12, column 5
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>

#include <cstdint>
#include <string>

namespace Zalt {
namespace Catalogue {

struct SourceLocation {
  std::string file;
  // 0 where no line applies, for a file that cannot be read.
  std::int32_t line;
  std::int32_t column;
};

ZALT_LTSCATALOGUE_EXPORT bool operator==(const SourceLocation& lhs, const SourceLocation& rhs);
ZALT_LTSCATALOGUE_EXPORT bool operator!=(const SourceLocation& lhs, const SourceLocation& rhs);

}  // namespace Catalogue
}  // namespace Zalt
