// Checks that the fuzz targets of the catalogue library's XML readers share:
// every place a reader reports lies within the input, and a document that
// yields nothing says why at such places.
//
//   const std::int32_t lines = ZaltFuzz::numberOfLines(bytes);
//   ZaltFuzz::checkPlace(catalogue.location(text), "fuzz.xml", lines, bytes.size() + 1, "text");
#pragma once

#include "FuzzCheck.h"

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZaltFuzz {

// At most the lines that the reader counts, at line feeds: a lone CR is
// counted too, and so is every byte 0x0A of a UTF-16 file, so that this
// errs only on the side of more lines.
inline std::int32_t numberOfLines(const std::string& bytes) {
  std::int32_t lines = 1;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' || (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n'))) {
      ++lines;
    }
  }
  return lines;
}

// `columns` is the most that a column may count.
inline void checkPlace(const Zalt::Catalogue::SourceLocation& location, const std::string& file,
                       std::int32_t lines, std::size_t columns, const char* what) {
  FUZZ_CHECK(location.file == file, what << " located in " << location.file);
  FUZZ_CHECK(location.line >= 1 && location.line <= lines,
             what << " at line " << location.line << " of " << lines);
  FUZZ_CHECK(location.column >= 1 && static_cast<std::size_t>(location.column) <= columns,
             what << " at column " << location.column);
}

// The error of a document `bytes` named `file` that yields nothing: file
// problems, each at a place of the input, and a message that names the file.
inline void checkFileProblems(const Zalt::Catalogue::CatalogueError& error, const std::string& file,
                              const std::string& bytes) {
  FUZZ_CHECK(!error.problems().empty(), "an error without problems");
  const std::int32_t lines = numberOfLines(bytes);
  for (const Zalt::Catalogue::Finding& problem : error.problems()) {
    FUZZ_CHECK(problem.kind == Zalt::Catalogue::Finding::Kind::File,
               "a problem of kind " << name(problem.kind));
    // Only what concerns the whole file stands at no place: the count of
    // problems not listed, and a document that is not of the kind read.
    const bool wholeFile = problem.message.find("more problems are not listed") != std::string::npos ||
                           problem.message.find("and no MDIB content") != std::string::npos;
    if (problem.location.line != 0 || problem.location.column != 0 || !wholeFile) {
      // Where the parser fails in a file it converted to UTF-8, it may count
      // the converted bytes: at most two for each byte of the file.
      checkPlace(problem.location, file, lines, 2 * bytes.size() + 1, "problem");
    }
  }
  FUZZ_CHECK(std::string(error.what()).rfind(file + ":", 0) == 0,
             "message without the file: " << error.what());
}

}  // namespace ZaltFuzz
