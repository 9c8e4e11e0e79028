#include <Zalt/Catalogue/Finding.h>

namespace Zalt {
namespace Catalogue {

const char* name(Finding::Kind kind) {
  switch (kind) {
    case Finding::Kind::Rejected:
      return "rejected";
    case Finding::Kind::Dropped:
      return "dropped";
    case Finding::Kind::Languages:
      return "languages";
    case Finding::Kind::Inconsistent:
      return "inconsistent";
  }
  return "unknown";
}

}  // namespace Catalogue
}  // namespace Zalt
