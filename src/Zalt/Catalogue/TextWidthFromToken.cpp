#include <Zalt/Catalogue/TextWidthFromToken.h>

#include <utility>

namespace Zalt {
namespace Catalogue {

boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidthFromToken(const std::string& token) {
  using Tovra::Mdib::LocalizedTextWidth;
  const std::pair<const char*, LocalizedTextWidth> widths[] = {
      {"xs", LocalizedTextWidth::ExtraSmall}, {"s", LocalizedTextWidth::Small},
      {"m", LocalizedTextWidth::Medium},      {"l", LocalizedTextWidth::Large},
      {"xl", LocalizedTextWidth::ExtraLarge}, {"xxl", LocalizedTextWidth::ExtraExtraLarge}};
  for (const auto& width : widths) {
    if (token == width.first) {
      return width.second;
    }
  }
  return boost::none;
}

}  // namespace Catalogue
}  // namespace Zalt
