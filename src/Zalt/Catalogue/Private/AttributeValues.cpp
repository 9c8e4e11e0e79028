#include <Zalt/Catalogue/Private/AttributeValues.h>

#include <charconv>
#include <system_error>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

bool isXmlSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

std::string_view collapsed(std::string_view value) {
  while (!value.empty() && isXmlSpace(value.front())) {
    value.remove_prefix(1);
  }
  while (!value.empty() && isXmlSpace(value.back())) {
    value.remove_suffix(1);
  }
  return value;
}

std::optional<std::uint64_t> versionNumber(std::string_view value) {
  const std::string_view digits = collapsed(value);
  std::uint64_t number = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (parsed.ec != std::errc() || parsed.ptr != digits.data() + digits.size()) {
    return std::nullopt;
  }
  return number;
}

std::string badVersionMessage(std::string_view value) {
  return "Version '" + std::string(value) + "' is not an unsigned 64-bit decimal";
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
