// Zalt::Catalogue::Private::readDocument and its kin: the public reading
// functions of each kind of document, run with the reader of that kind. A
// Reader derives from XmlDocumentReader, is built from a file name and the
// document's size, names its result type Result and hands the result over by
// `std::move(reader).result()` once the document is fine:
//
//   Catalogue readCatalogue(std::string_view content, const std::string& fileName) {
//     return Private::readDocument<DocumentReader>(content, fileName);
//   }
//
// Each throws CatalogueError for the problems of a document, which names the
// public function that called in as its throw statement.
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/Private/InputFile.h>
#include <Zalt/Catalogue/Private/XmlDocumentReader.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {

// The statement that calls a reading function.
struct CallSite {
  const char* file;
  std::int32_t line;

  // Where this stands as a default argument, the calling statement's place.
  static CallSite here(const char* file = __builtin_FILE(), std::int32_t line = __builtin_LINE()) {
    return {file, line};
  }
};

// Feeds a whole document held in memory, chunk by chunk.
void feedAll(XmlDocumentReader& reader, std::string_view content);

// Feeds `stream` to its end; throws CatalogueError when it cannot be read.
void feedStream(XmlDocumentReader& reader, std::FILE* stream);

// Ends the document; throws CatalogueError, naming `site`, for its problems.
void finish(XmlDocumentReader& reader, CallSite site);

// Reads one document held in memory with a `Reader`.
template <typename Reader>
typename Reader::Result readDocument(std::string_view content, std::string fileName,
                                     CallSite site = CallSite::here()) {
  Reader reader(std::move(fileName), content.size());
  feedAll(reader, content);
  finish(reader, site);
  return std::move(reader).result();
}

// Reads `stream` to its end with a `Reader`, naming the document `fileName`.
template <typename Reader>
typename Reader::Result readDocument(std::FILE* stream, std::string fileName, std::size_t expectedSize,
                                     CallSite site = CallSite::here()) {
  Reader reader(std::move(fileName), expectedSize);
  feedStream(reader, stream);
  finish(reader, site);
  return std::move(reader).result();
}

// Reads the file at `path` with a `Reader`.
template <typename Reader>
typename Reader::Result readDocumentFile(const std::string& path, CallSite site = CallSite::here()) {
  std::size_t size = 0;
  const File file = openFile(path, size);
  return readDocument<Reader>(file.get(), path, size, site);
}

// Reads `paths` in order ("-" is standard input) with a `Reader` and appends
// the results; reads every file before it throws CatalogueError with the
// problems of all that yield nothing.
template <typename Reader>
typename Reader::Result readDocumentFiles(const std::vector<std::string>& paths,
                                          CallSite site = CallSite::here()) {
  typename Reader::Result all;
  std::vector<Finding> problems;
  for (const std::string& path : paths) {
    try {
      auto file = path == "-" ? readDocument<Reader>(binaryStandardInput(), standardInputName, 0, site)
                              : readDocumentFile<Reader>(path, site);
      if (problems.empty()) {
        all.append(std::move(file));
      }
    } catch (const CatalogueError& error) {
      problems.insert(problems.end(), error.problems().begin(), error.problems().end());
      all = {};
    }
  }
  if (!problems.empty()) {
    throw CatalogueError(std::move(problems), site.file, site.line);
  }
  return all;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
