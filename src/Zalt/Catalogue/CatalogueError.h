// Zalt::Catalogue::CatalogueError: a catalogue file that yields no texts. It
// cannot be read, it is not well-formed XML 1.0 with namespaces, it uses what a
// catalogue file may not (a document type declaration, an undefined entity, a
// character outside XML's characters, an encoding other than UTF-8, UTF-16 and
// ISO-8859-1), or an attribute holds a value that no localized text can have.
// Problems of single texts that a device store rejects are not errors of the
// file; checkCatalogue reports those.
//
// Like every Zalt::Exception, file() and line() name the library's throw
// statement. The places in the catalogue are the error's own data: one finding
// of kind File per problem, all of them for one file in one read (malformed XML
// stops at its first error). what() begins with the first problem:
//
//   try { readCatalogueFile("de.xml"); }
//   catch (const CatalogueError& e) {
//     for (const Finding& problem : e.problems()) { ... }  // de.xml:7:3: TextWidth ...
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

class ZALT_LTSCATALOGUE_EXPORT CatalogueError : public Zalt::Exception {
public:
  // `problems` holds at least one finding, each of kind File; `file` and `line`
  // are those of the throw statement, as for every Zalt::Exception. what() is
  // the first problem as "FILE:LINE:COLUMN: message" ("FILE: message" where
  // no line applies), followed by " (and N more problems)" if there are more.
  CatalogueError(std::vector<Finding> problems, const char* file, std::int32_t line);

  // Every problem found in the file, in the order of their places.
  const std::vector<Finding>& problems() const { return *m_problems; }

private:
  // Shared so that copying an exception never allocates.
  std::shared_ptr<const std::vector<Finding>> m_problems;
};

}  // namespace Catalogue
}  // namespace Zalt
