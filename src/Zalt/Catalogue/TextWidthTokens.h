// Zalt::Catalogue width tokens: the names under which catalogue files, XLIFF
// ids and the tool's options write the six text widths, in one table.
//
//   Zalt::Catalogue::textWidthFromToken("xl");  // LocalizedTextWidth::ExtraLarge
//   Zalt::Catalogue::textWidthToken(Tovra::Mdib::LocalizedTextWidth::Small);  // "s"
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <boost/optional.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {

// The six width tokens of catalogue files and the tool's options (xs, s, m, l,
// xl, xxl for ExtraSmall to ExtraExtraLarge), narrowest first. The reader, the
// writer and the tool all take them from here.
ZALT_LTSCATALOGUE_EXPORT const std::vector<std::pair<std::string, Tovra::Mdib::LocalizedTextWidth>>&
textWidthTokens();

// The width of one of the six tokens, exactly as written; none for any other text.
ZALT_LTSCATALOGUE_EXPORT boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidthFromToken(
    std::string_view token);

// The token of `width`; throws std::out_of_range for a value outside the six widths.
ZALT_LTSCATALOGUE_EXPORT const std::string& textWidthToken(Tovra::Mdib::LocalizedTextWidth width);

// "xs, s, m, l, xl, xxl": the tokens as messages list them.
ZALT_LTSCATALOGUE_EXPORT std::string textWidthTokenList();

}  // namespace Catalogue
}  // namespace Zalt
