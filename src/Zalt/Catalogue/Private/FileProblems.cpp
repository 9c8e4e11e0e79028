#include <Zalt/Catalogue/Private/FileProblems.h>

#include <algorithm>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace Impl {

void FileProblems::add(std::size_t offset, std::string message) {
  m_problems.push_back({offset, std::move(message)});
}

void FileProblems::dropFrom(std::size_t offset) {
  m_problems.erase(std::remove_if(m_problems.begin(), m_problems.end(),
                                  [offset](const Problem& problem) { return problem.offset >= offset; }),
                   m_problems.end());
}

std::vector<Finding> FileProblems::findings(LineIndex& lines, const std::string& fileName) {
  std::stable_sort(m_problems.begin(), m_problems.end(),
                   [](const Problem& lhs, const Problem& rhs) { return lhs.offset < rhs.offset; });
  std::vector<Finding> result;
  result.reserve(m_problems.size());
  for (Problem& problem : m_problems) {
    const SourcePosition position = lines.locate(problem.offset);
    result.push_back(
        {Finding::Kind::File, {fileName, position.line, position.column}, std::move(problem.message)});
  }
  return result;
}

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
