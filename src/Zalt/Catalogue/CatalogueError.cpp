#include <Zalt/Catalogue/CatalogueError.h>

#include <sstream>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

std::string message(const std::string& problem, const SourceLocation& location) {
  std::ostringstream out;
  out << location.file << ':';
  if (location.line > 0) {
    out << location.line << ':' << location.column << ':';
  }
  out << ' ' << problem;
  return out.str();
}

}  // namespace

CatalogueError::CatalogueError(const std::string& problem, const SourceLocation& location)
    : CatalogueError(problem, location, std::make_shared<const std::string>(location.file)) {}

CatalogueError::CatalogueError(const std::string& problem, const SourceLocation& location,
                               std::shared_ptr<const std::string> file)
    : Zalt::Exception(message(problem, location), file->c_str(), location.line),
      m_file(std::move(file)),
      m_problem(std::make_shared<const std::string>(problem)),
      m_column(location.column) {}

}  // namespace Catalogue
}  // namespace Zalt
