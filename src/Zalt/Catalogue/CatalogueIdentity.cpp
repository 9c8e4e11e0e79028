#include <Zalt/Catalogue/CatalogueIdentity.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

namespace Zalt {
namespace Catalogue {
namespace {

constexpr std::string_view oidPrefix = "urn:oid:";
constexpr std::string_view uuidPrefix = "urn:uuid:";

char lowered(char character) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

std::string lowered(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char character) { return lowered(character); });
  return result;
}

bool startsCaseless(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && lowered(text.substr(0, prefix.size())) == prefix;
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

bool isArc(std::string_view arc) {
  return !arc.empty() && std::all_of(arc.begin(), arc.end(), isDigit) &&
         (arc.size() == 1 || arc.front() != '0');
}

// Two or more arcs under one of the roots 0, 1 and 2.
bool isOid(std::string_view oid) {
  const std::size_t firstDot = oid.find('.');
  const std::string_view root = oid.substr(0, firstDot);
  if (firstDot == std::string_view::npos || (root != "0" && root != "1" && root != "2")) {
    return false;
  }
  for (std::size_t start = firstDot + 1;;) {
    const std::size_t dot = oid.find('.', start);
    if (!isArc(oid.substr(start, dot - start))) {
      return false;
    }
    if (dot == std::string_view::npos) {
      return true;
    }
    start = dot + 1;
  }
}

bool isUuid(std::string_view uuid) {
  constexpr std::array<std::size_t, 4> hyphens = {8, 13, 18, 23};
  if (uuid.size() != 36) {
    return false;
  }
  for (std::size_t at = 0; at < uuid.size(); ++at) {
    const bool hyphen = std::find(hyphens.begin(), hyphens.end(), at) != hyphens.end();
    if (hyphen ? uuid[at] != '-' : !std::isxdigit(static_cast<unsigned char>(uuid[at]))) {
      return false;
    }
  }
  return true;
}

std::string ofMds(const CatalogueIdentifier& identifier) {
  return identifier.mds ? "MDS '" + *identifier.mds + "'" : std::string("an MDS without a handle");
}

}  // namespace

bool isCatalogueIdentifier(std::string_view identifier) {
  if (startsCaseless(identifier, oidPrefix)) {
    return isOid(identifier.substr(oidPrefix.size()));
  }
  return startsCaseless(identifier, uuidPrefix) && isUuid(identifier.substr(uuidPrefix.size()));
}

std::string comparedForm(std::string_view identifier) {
  if (startsCaseless(identifier, uuidPrefix)) {
    return lowered(identifier);
  }
  const std::size_t namespaceEnd = identifier.find(':', identifier.find(':') + 1);
  return namespaceEnd == std::string_view::npos
             ? std::string(identifier)
             : lowered(identifier.substr(0, namespaceEnd)) + std::string(identifier.substr(namespaceEnd));
}

IdentityCheck checkIdentity(const MdibTexts& mdib) {
  IdentityCheck result;
  for (const CatalogueIdentifier& identifier : mdib.catalogueIds) {
    const SourceLocation where = mdib.location(identifier);
    const bool valid = isCatalogueIdentifier(identifier.value);
    if (!valid) {
      result.findings.push_back({Finding::Kind::Identity, where,
                                 "the text catalogue identifier '" + identifier.value + "' of " +
                                     ofMds(identifier) +
                                     " is neither urn:oid: and an OID nor urn:uuid: and a UUID"});
    }
    if (!result.catalogueId) {
      result.catalogueId = identifier.value;
      result.location = where;
    } else if (valid && comparedForm(identifier.value) != comparedForm(*result.catalogueId)) {
      // One that is no identifier is told once, as such.
      result.findings.push_back({Finding::Kind::Identity, where,
                                 ofMds(identifier) + " declares text catalogue '" + identifier.value +
                                     "', where an earlier MDS declares '" + *result.catalogueId +
                                     "': one MDIB takes its texts from one catalogue"});
    }
  }
  return result;
}

}  // namespace Catalogue
}  // namespace Zalt
