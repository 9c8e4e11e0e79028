#include <Zalt/Catalogue/SourceLocation.h>

namespace Zalt {
namespace Catalogue {

bool operator==(const SourceLocation& lhs, const SourceLocation& rhs) {
  return lhs.file == rhs.file && lhs.line == rhs.line && lhs.column == rhs.column;
}

bool operator!=(const SourceLocation& lhs, const SourceLocation& rhs) { return !(lhs == rhs); }

}  // namespace Catalogue
}  // namespace Zalt
