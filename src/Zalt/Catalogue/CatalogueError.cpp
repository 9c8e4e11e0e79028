#include <Zalt/Catalogue/CatalogueError.h>

#include <string>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

std::string message(const std::vector<Finding>& problems) {
  std::string text = placed(problems.front());
  if (problems.size() > 1) {
    text += " (and " + std::to_string(problems.size() - 1) +
            (problems.size() == 2 ? " more problem)" : " more problems)");
  }
  return text;
}

}  // namespace

CatalogueError::CatalogueError(std::vector<Finding> problems, const char* file, std::int32_t line)
    : Zalt::Exception(message(problems), file, line),
      m_problems(std::make_shared<const std::vector<Finding>>(std::move(problems))) {}

}  // namespace Catalogue
}  // namespace Zalt
