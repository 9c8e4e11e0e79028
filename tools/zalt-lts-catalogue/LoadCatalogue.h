// Reads the files of one catalogue, in order, collecting the problems of every
// file so that one run reports them all.
#pragma once

#include <Zalt/Catalogue/CatalogueTexts.h>
#include <Zalt/Catalogue/Finding.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// The file name "-" stands for standard input, which texts and problems name thus.
inline constexpr const char* standardInputName = "<stdin>";

struct LoadedCatalogue {
  // The texts of the files without problems.
  Zalt::Catalogue::CatalogueTexts catalogue;
  // Every problem of every file, of kind File, in the order of the files.
  std::vector<Zalt::Catalogue::Finding> problems;
};

LoadedCatalogue loadCatalogue(const std::vector<std::string>& files);

// One "FILE:LINE:COLUMN: message" line per finding.
void printPlaced(std::ostream& out, const std::vector<Zalt::Catalogue::Finding>& findings);

}  // namespace ZaltCatalogueTool
