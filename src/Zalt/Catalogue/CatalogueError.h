// Zalt::Catalogue::CatalogueError: a catalogue file that cannot be taken as a
// whole: it cannot be read, it is not well-formed XML, or an attribute holds a
// value that no localized text can have (a Version that is not an unsigned
// 64-bit decimal, a TextWidth outside xs, s, m, l, xl, xxl). Problems of single
// texts that a device store rejects are not errors of the file.
//
// Unlike the library's other exceptions, file() and line() name the place in
// the catalogue, not in the library's source; what() starts with that place:
//
//   try { readCatalogueFile("de.xml"); }
//   catch (const CatalogueError& e) { std::cerr << e.what(); }  // de.xml:7:3: TextWidth ...
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>
#include <Zalt/Errors/Exception.h>

#include <cstdint>
#include <memory>
#include <string>

namespace Zalt {
namespace Catalogue {

class ZALT_LTSCATALOGUE_EXPORT CatalogueError : public Zalt::Exception {
public:
  // The message is "FILE:LINE:COLUMN: problem", or "FILE: problem" for line 0.
  CatalogueError(const std::string& problem, const SourceLocation& location);

  std::int32_t column() const { return m_column; }
  // The problem alone, without the place.
  const std::string& problem() const { return *m_problem; }

private:
  // The base keeps a pointer to the file name; copies of the exception share
  // the name so that the pointer stays valid as long as any copy lives. The
  // problem is shared too, so that copying an exception never allocates.
  CatalogueError(const std::string& problem, const SourceLocation& location,
                 std::shared_ptr<const std::string> file);

  std::shared_ptr<const std::string> m_file;
  std::shared_ptr<const std::string> m_problem;
  std::int32_t m_column;
};

}  // namespace Catalogue
}  // namespace Zalt
