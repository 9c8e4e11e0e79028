// Zalt::Catalogue::CatalogueError: what the readers of the catalogue library
// throw for files that yield nothing, with every problem at its place.
//
//   try {
//     Zalt::Catalogue::readCatalogueFile("de.xml");
//   } catch (const Zalt::Catalogue::CatalogueError& error) {
//     for (const Zalt::Catalogue::Finding& problem : error.problems()) { ... }
//   }
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Errors/Exception.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace Zalt {
namespace Catalogue {

// Files that yield no texts. Like every Zalt::Exception, file() and line()
// name the library's throw statement; the places in the catalogue are the
// problems, findings of kind File in the order of the files and, within a
// file, of their places. what() is the first of them, followed by
// " (and N more problems)" where there are more.
class ZALT_LTSCATALOGUE_EXPORT CatalogueError : public Zalt::Exception {
public:
  // `problems` holds at least one finding.
  CatalogueError(std::vector<Finding> problems, const char* file, std::int32_t line);

  const std::vector<Finding>& problems() const { return *m_problems; }

private:
  // Shared so that copying an exception never allocates.
  std::shared_ptr<const std::vector<Finding>> m_problems;
};

}  // namespace Catalogue
}  // namespace Zalt
