// Zalt::Catalogue::Impl::FileProblems: the problems of one catalogue file,
// gathered while it is read, each at a byte offset into the document. They
// are found by separate passes (characters, then the element tree), so they
// are put into document order only when they become findings.
//
//   problems.add(offset, "entity '&nbsp;' is not defined");
//   if (!problems.empty()) throw CatalogueError(problems.findings(lines, fileName), ...);
#pragma once

#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/Private/LineIndex.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Impl {

class FileProblems {
public:
  void add(std::size_t offset, std::string message);

  bool empty() const { return m_problems.empty(); }

  // Drops the problems at or after `offset`: what a malformed document holds
  // past its first error is not known.
  void dropFrom(std::size_t offset);

  // Findings of kind File in the order of their places; problems at one
  // place keep the order in which they were added.
  std::vector<Finding> findings(LineIndex& lines, const std::string& fileName);

private:
  struct Problem {
    std::size_t offset;
    std::string message;
  };
  std::vector<Problem> m_problems;
};

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
