#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Display/DisplayFinding.h>

namespace Zalt {
namespace Display {

const char* name(DisplayFinding::Kind kind) {
  switch (kind) {
    case DisplayFinding::Kind::Overflow:
      return "overflow";
    case DisplayFinding::Kind::Glyph:
      return "glyph";
    case DisplayFinding::Kind::Unanswered:
      return "unanswered";
  }
  return "unknown";
}

std::string placed(const DisplayFinding& finding) {
  // The catalogue's placing reads only the place and the message.
  return Catalogue::placed({Catalogue::Finding::Kind::Width, finding.location, finding.message});
}

}  // namespace Display
}  // namespace Zalt
