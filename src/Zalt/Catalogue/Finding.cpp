#include <Zalt/Catalogue/Finding.h>

namespace Zalt {
namespace Catalogue {

const char* name(Finding::Kind kind) {
  switch (kind) {
    case Finding::Kind::File:
      return "file";
    case Finding::Kind::Rejected:
      return "rejected";
    case Finding::Kind::Dropped:
      return "dropped";
    case Finding::Kind::Languages:
      return "languages";
    case Finding::Kind::Inconsistent:
      return "inconsistent";
    case Finding::Kind::Empty:
      return "empty";
    case Finding::Kind::Width:
      return "width";
    case Finding::Kind::Missing:
      return "missing";
    case Finding::Kind::Version:
      return "version";
    case Finding::Kind::Language:
      return "language";
    case Finding::Kind::Unused:
      return "unused";
    case Finding::Kind::Inline:
      return "inline";
    case Finding::Kind::Untranslated:
      return "untranslated";
    case Finding::Kind::Id:
      return "id";
    case Finding::Kind::Markup:
      return "markup";
    case Finding::Kind::Lines:
      return "lines";
    case Finding::Kind::Unreviewed:
      return "unreviewed";
    case Finding::Kind::Segments:
      return "segments";
    case Finding::Kind::Placeholder:
      return "placeholder";
    case Finding::Kind::Identity:
      return "identity";
  }
  return "unknown";
}

std::string placed(const Finding& finding) {
  std::string text = finding.location.file + ':';
  if (finding.location.line > 0) {
    text += std::to_string(finding.location.line) + ':' + std::to_string(finding.location.column) + ':';
  }
  return text + ' ' + finding.message;
}

bool operator==(const Finding& lhs, const Finding& rhs) {
  return lhs.kind == rhs.kind && lhs.location == rhs.location && lhs.message == rhs.message;
}

bool operator!=(const Finding& lhs, const Finding& rhs) { return !(lhs == rhs); }

}  // namespace Catalogue
}  // namespace Zalt
