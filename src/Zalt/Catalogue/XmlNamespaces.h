// Zalt::Catalogue XML namespaces: the namespaces in which the catalogue
// library finds texts and writes them, kept in one place so that readers and
// writers can never disagree on a URI.
//
//   if (element.xmlNamespace == Zalt::Catalogue::participantNamespace) { ... }
#pragma once

#include <string_view>

namespace Zalt {
namespace Catalogue {

// The namespaces of the texts: participant LocalizedText, message Text.
inline constexpr std::string_view participantNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant";
inline constexpr std::string_view messageNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/message";

// The namespace that writeXliff writes; readXliff also reads elements in none.
inline constexpr std::string_view xliffNamespace = "urn:oasis:names:tc:xliff:document:1.2";

}  // namespace Catalogue
}  // namespace Zalt
