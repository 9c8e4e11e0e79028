// Zalt::Catalogue::Private attribute values: how the document readers take a
// number or a token from an attribute as XML Schema reads it.
//
//   if (const auto version = versionNumber(" 2 ")) { ... }  // 2
//   else { problem(place, badVersionMessage(value)); }
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {

// `value` without the XML white space around it, which XML Schema collapses
// around a number or a token.
std::string_view collapsed(std::string_view value);

// A Version attribute's number; none where it is not an unsigned 64-bit decimal.
std::optional<std::uint64_t> versionNumber(std::string_view value);

// "Version 'VALUE' is not an unsigned 64-bit decimal".
std::string badVersionMessage(std::string_view value);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
