// Reads the files of one catalogue, in order, reporting every file that
// cannot be read or parsed on stderr.
#pragma once

#include <Zalt/Catalogue/CatalogueTexts.h>

#include <boost/optional.hpp>

#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// None when any file failed; each failure has been reported.
boost::optional<Zalt::Catalogue::CatalogueTexts> loadCatalogue(const std::vector<std::string>& files);

}  // namespace ZaltCatalogueTool
