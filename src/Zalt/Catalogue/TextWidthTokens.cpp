#include <Zalt/Catalogue/TextWidthTokens.h>

#include <stdexcept>

namespace Zalt {
namespace Catalogue {

using Tovra::Mdib::LocalizedTextWidth;

const std::vector<std::pair<std::string, LocalizedTextWidth>>& textWidthTokens() {
  static const std::vector<std::pair<std::string, LocalizedTextWidth>> tokens = {
      {"xs", LocalizedTextWidth::ExtraSmall}, {"s", LocalizedTextWidth::Small},
      {"m", LocalizedTextWidth::Medium},      {"l", LocalizedTextWidth::Large},
      {"xl", LocalizedTextWidth::ExtraLarge}, {"xxl", LocalizedTextWidth::ExtraExtraLarge}};
  return tokens;
}

boost::optional<LocalizedTextWidth> textWidthFromToken(std::string_view token) {
  for (const auto& width : textWidthTokens()) {
    if (token == width.first) {
      return width.second;
    }
  }
  return boost::none;
}

std::string textWidthTokenList() {
  std::string list;
  for (const auto& token : textWidthTokens()) {
    list += (list.empty() ? "" : ", ") + token.first;
  }
  return list;
}

const std::string& textWidthToken(LocalizedTextWidth width) {
  for (const auto& token : textWidthTokens()) {
    if (token.second == width) {
      return token.first;
    }
  }
  throw std::out_of_range("not a text width");
}

}  // namespace Catalogue
}  // namespace Zalt
