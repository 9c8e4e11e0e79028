// Zalt::Catalogue::textWidthFromToken: the short tokens by which
// catalogue files and the checker's options name text widths: xs, s, m, l,
// xl and xxl, for ExtraSmall to ExtraExtraLarge.
//
//   textWidthFromToken("xl");  // LocalizedTextWidth::ExtraLarge
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <boost/optional.hpp>

#include <string>

namespace Zalt {
namespace Catalogue {

// The width of one of the six tokens, exactly as written; none for any other text.
ZALT_LTSCATALOGUE_EXPORT boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidthFromToken(
    const std::string& token);

}  // namespace Catalogue
}  // namespace Zalt
