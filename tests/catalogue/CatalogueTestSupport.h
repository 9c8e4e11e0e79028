// What the catalogue library's tests share: the texts' namespaces and an MDIB
// around a body to build documents with, the problems that a reader throws, an
// XLIFF import one line a text or finding, and places and findings printed as
// the tool prints them when a check fails.
#pragma once

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/ReadXliff.h>
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

// A response around `body`, which starts on line 2.
inline std::string mdib(const std::string& body) {
  return "<msg:GetMdibResponse xmlns:msg='" + message() + "' xmlns:pm='" + participant() + "'>\n" + body +
         "</msg:GetMdibResponse>";
}

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

// "REF@VERSION/WIDTH/LANG 'TEXT' FILE:L:C" per text, "KIND FILE:L:C: MESSAGE" per finding.
inline std::vector<std::string> described(const Zalt::Catalogue::XliffImport& imported) {
  std::vector<std::string> lines;
  for (const auto& each : imported.catalogue.texts) {
    const auto where = imported.catalogue.location(each);
    const auto& width = each.text.textWidth();
    lines.push_back(each.text.ref().get().value() + '@' + std::to_string(each.text.version()->get()) + '/' +
                    (width ? std::to_string(static_cast<int>(*width)) : "-") + '/' + each.text.lang()->tag() +
                    " '" + each.text.text().value() + "' " + where.file + ':' + std::to_string(where.line) +
                    ':' + std::to_string(where.column));
  }
  for (const auto& finding : imported.findings) {
    lines.push_back(std::string(name(finding.kind)) + ' ' + placed(finding));
  }
  return lines;
}

}  // namespace CatalogueTestSupport
