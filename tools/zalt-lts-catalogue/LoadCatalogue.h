// Reads the files of one catalogue, in order, collecting the problems of every
// file so that one run reports them all.
#pragma once

#include <Zalt/Catalogue/ReadCatalogue.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

struct LoadedCatalogue {
  // The texts, when every file could be read without problems.
  Zalt::Catalogue::Catalogue catalogue;
  // Every problem of every file, of kind File, in the order of the files.
  std::vector<Zalt::Catalogue::Finding> problems;
};

// "-" stands for standard input.
LoadedCatalogue loadCatalogue(const std::vector<std::string>& files);

// One "FILE:LINE:COLUMN: message" line per finding, whatever its values hold.
void printPlaced(std::ostream& out, const std::vector<Zalt::Catalogue::Finding>& findings);

}  // namespace ZaltCatalogueTool
