// Zalt::Display::Private::readLocatedJson: a JSON document as a tree whose
// every value and object key knows its line and column, so that what is
// wrong with a profile's content is reported at its place, as a syntax error is.
//
//   const LocatedValue root = readLocatedJson(bytes);  // throws LocatedJsonError
//   for (const LocatedMember& member : root.members) { member.keyPlace.line; ... }
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Display {
namespace Private {

// Lines and columns count from 1; columns count characters.
struct JsonPlace {
  std::int32_t line;
  std::int32_t column;
};

struct LocatedMember;

// NOLINTNEXTLINE(bugprone-exception-escape): its members' moves throw nothing; tidy sees json's assertions.
struct LocatedValue {
  // The value itself for a string, number, boolean or null; an empty object
  // or array for those, whose content is below.
  nlohmann::json scalar;
  JsonPlace place;
  // An object's members in the order written, duplicates included.
  std::vector<LocatedMember> members;
  std::vector<LocatedValue> elements;
};

struct LocatedMember {
  std::string key;
  JsonPlace keyPlace;
  LocatedValue value;
};

// A document that is not JSON, at the place where reading stopped.
class LocatedJsonError : public std::runtime_error {
public:
  LocatedJsonError(const std::string& message, JsonPlace where) : std::runtime_error(message), place(where) {}
  JsonPlace place;
};

// The one JSON value of `document` (UTF-8, with or without a byte-order mark).
LocatedValue readLocatedJson(std::string_view document);

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
