// Zalt::Catalogue text width tokens: the short names by which catalogue files
// and the checker's options write text widths: xs, s, m, l, xl and xxl, for
// ExtraSmall to ExtraExtraLarge. One table serves the reader, the writer and
// the tool's option parsing, so the three can never disagree.
//
//   textWidthFromToken("xl");                          // LocalizedTextWidth::ExtraLarge
//   textWidthToken(LocalizedTextWidth::ExtraSmall);    // "xs"
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <boost/optional.hpp>

#include <string>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {

// The six tokens with their widths, narrowest first.
ZALT_LTSCATALOGUE_EXPORT const std::vector<std::pair<std::string, Tovra::Mdib::LocalizedTextWidth>>&
textWidthTokens();

// The width of one of the six tokens, exactly as written; none for any other text.
ZALT_LTSCATALOGUE_EXPORT boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidthFromToken(
    const std::string& token);

// The token of `width`; throws std::out_of_range for a value outside the six widths.
ZALT_LTSCATALOGUE_EXPORT const std::string& textWidthToken(Tovra::Mdib::LocalizedTextWidth width);

}  // namespace Catalogue
}  // namespace Zalt
