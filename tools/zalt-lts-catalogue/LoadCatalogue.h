// Reads the files of one document (a catalogue, an MDIB, XLIFF files), in
// order, collecting the problems of every file so that one run reports them all.
//
//   const LoadedCatalogue loaded = loadCatalogue(request.files);
//   if (!loaded.problems.empty()) { printPlaced(std::cerr, loaded.problems); }
#pragma once

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

template <typename Document>
struct Loaded {
  // What the files hold, when every one could be read without problems.
  Document document;
  // Every problem of every file, of kind File, in the order of the files.
  std::vector<Zalt::Catalogue::Finding> problems;
};

// `files` read by `read`, one of the library's readers of several files; "-"
// stands for standard input.
template <typename Document>
Loaded<Document> loadFiles(Document (*read)(const std::vector<std::string>&),
                           const std::vector<std::string>& files) {
  try {
    return {read(files), {}};
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    return {{}, error.problems()};
  }
}

using LoadedCatalogue = Loaded<Zalt::Catalogue::Catalogue>;

inline LoadedCatalogue loadCatalogue(const std::vector<std::string>& files) {
  return loadFiles(Zalt::Catalogue::readCatalogueFiles, files);
}

// One "FILE:LINE:COLUMN: message" line per finding, whatever its values hold.
void printPlaced(std::ostream& out, const std::vector<Zalt::Catalogue::Finding>& findings);

}  // namespace ZaltCatalogueTool
