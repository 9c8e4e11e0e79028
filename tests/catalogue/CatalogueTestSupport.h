// What the catalogue library's tests share: the texts' namespaces to build
// documents with, the problems that a reader throws, and places and findings
// printed as the tool prints them when a check fails.
#pragma once

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/SourceLocation.h>
#include <Zalt/Catalogue/XmlNamespaces.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

inline std::ostream& operator<<(std::ostream& out, const SourceLocation& location) {
  return out << location.file << ':' << location.line << ':' << location.column;
}

inline std::ostream& operator<<(std::ostream& out, const Finding& finding) {
  return out << name(finding.kind) << ' ' << placed(finding);
}

}  // namespace Catalogue
}  // namespace Zalt

namespace CatalogueTestSupport {

inline std::string participant() { return std::string(Zalt::Catalogue::participantNamespace); }
inline std::string message() { return std::string(Zalt::Catalogue::messageNamespace); }

// The problems of the CatalogueError that read(content, fileName) throws, for
// any of the library's readers; a test failure where it throws none.
template <typename Read>
std::vector<Zalt::Catalogue::Finding> problemsReading(const Read& read, const std::string& content,
                                                      const std::string& fileName) {
  try {
    read(content, fileName);
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    return error.problems();
  }
  ADD_FAILURE() << "no CatalogueError for: " << content;
  return {};
}

}  // namespace CatalogueTestSupport
