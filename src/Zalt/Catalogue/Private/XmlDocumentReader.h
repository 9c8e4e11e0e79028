// Zalt::Catalogue::Private::XmlDocumentReader: one XML document fed through
// the conforming streaming parser, with every problem of the file at its line
// and column. Readers of particular documents derive from it and take what
// they need from its element and character hooks:
//
//   class TitleReader : public XmlDocumentReader {
//   public:
//     explicit TitleReader(const std::string& name) : XmlDocumentReader(name, 0, "a title file") {}
//   private:
//     void startElement(const Element&) override {}
//     void endElement() override {}
//     void characters(std::string_view) override {}
//     void dropResults() override {}
//   };
//   const std::string name = "title.xml";  // outlives the reader, which refers to it
//   TitleReader reader(name);
//   reader.readAll("<title>Monitor</title>");
//   std::vector<Finding> problems = reader.finishParsing();  // empty: the file is fine
//
// The document is XML 1.0 in UTF-8, UTF-16, ISO-8859-1 or US-ASCII; a document
// type declaration, another encoding or XML 1.1 stops reading at that problem,
// and nothing is ever expanded or fetched. Other problems that the derived
// reader finds are listed too, at most 1,000 per file and then how many more.
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueError.h>

#include <libxml/parser.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {

struct Place {
  std::int32_t line;
  std::int32_t column;
};

class XmlDocumentReader {
public:
  // `fileName` names the document in problems and must outlive the reader;
  // `expectedSize` is the document's size in bytes where it is known, else 0;
  // `documentKind` says what the document must be ("a catalogue file").
  XmlDocumentReader(const std::string& fileName, std::size_t expectedSize, std::string_view documentKind);
  XmlDocumentReader(const XmlDocumentReader&) = delete;
  XmlDocumentReader& operator=(const XmlDocumentReader&) = delete;
  XmlDocumentReader(XmlDocumentReader&&) = delete;
  XmlDocumentReader& operator=(XmlDocumentReader&&) = delete;
  virtual ~XmlDocumentReader();

  // Whether the document has failed for good: the rest of it need not be read.
  bool stopped() const { return m_stopped; }

  void feed(const char* data, std::size_t size);

  // Feeds a whole document held in memory, chunk by chunk.
  void readAll(std::string_view content);

  // Feeds `stream` to its end; throws CatalogueError when it cannot be read.
  void readStream(std::FILE* stream);

  // Ends the document and hands over every problem found, a note of how many
  // more were not listed last; empty where the document is fine. The derived
  // reader throws them, so that the error names its own throw statement.
  std::vector<Finding> finishParsing();

protected:
  // An element's start tag as the parser hands it on: its attributes come in
  // fives (local name, prefix, namespace, value start, value end).
  struct Element {
    std::string_view name;
    const xmlChar* prefix;
    std::string_view xmlNamespace;
    int attributeCount;
    const xmlChar** attributes;

    std::string qualifiedName() const;
    // The value of the unprefixed attribute named `wanted`, with the start of the
    // value in the parser's buffer; none where the element lacks it.
    std::optional<std::string_view> attribute(std::string_view wanted, const xmlChar** start = nullptr) const;
  };

  virtual void startElement(const Element& element) = 0;
  virtual void endElement() = 0;
  // Characters of the current element, CDATA sections included, with XML's
  // line ends; one element's characters may come in several pieces.
  virtual void characters(std::string_view data) = 0;
  // Called once when the first problem is listed: the document yields nothing,
  // so what was taken from it so far can go.
  virtual void dropResults() = 0;
  // Called after the first chunk is fed, which tells how densely the document
  // holds what a reader collects.
  virtual void firstChunkFed(std::size_t expectedSize, std::size_t fed);

  const std::string& fileName() const { return m_fileName; }
  bool hasProblems() const { return !m_problems.empty(); }
  // The number of elements open around the current point, the current one included.
  std::size_t depth() const { return m_depth; }

  // The '<' of the markup that the parser has just read.
  const xmlChar* markupStart() const;
  Place placeOf(const xmlChar* at) const;
  // Where an attribute value starts; `fallback` where the parser rewrote it.
  Place placeOfValue(const xmlChar* value, Place fallback) const;

  // A problem after which reading goes on.
  void problem(Place place, std::string message);
  // A problem that stops the parser.
  void fail(Place place, std::string message);

private:
  static const xmlSAXHandler& events();
  void parse(const char* data, std::size_t size, bool last);
  // NOLINTNEXTLINE(cert-dcl50-cpp): the parser's channel is a printf-style C function.
  static void channelMessage(void* self, const char* format, ...);
  void checkDeclaration();
  void refuseEncoding(const char* encoding);
  void refuseDocumentType();
  void elementStarted(const Element& element);
  void elementEnded();
  void textCharacters(const xmlChar* data, int size);
  void cdata(const xmlChar* data, int size);
  void parserError(const xmlError& error);
  std::string reason(const xmlError& error) const;

  const std::string& m_fileName;
  const std::size_t m_expectedSize;
  const std::string_view m_documentKind;
  std::size_t m_fed = 0;
  xmlGenericErrorFunc m_previousChannel;
  void* m_previousChannelContext;
  std::string m_channelMessage;
  xmlParserCtxtPtr m_context = nullptr;
  bool m_finishing = false;
  bool m_sawElement = false;
  bool m_stopped = false;
  std::size_t m_depth = 0;
  bool m_cdataCarriageReturn = false;
  std::string m_cdataText;
  std::vector<Finding> m_problems;
  std::size_t m_unlisted = 0;
};

// XML Schema collapses the white space around a number or a token.
std::string_view collapsed(std::string_view value);

// A Version attribute's number; none where it is not an unsigned 64-bit decimal.
std::optional<std::uint64_t> versionNumber(std::string_view value);

// "Version 'VALUE' is not an unsigned 64-bit decimal".
std::string badVersionMessage(std::string_view value);

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Opens `path` for reading in binary mode, with its size in bytes where it is
// known (else 0); throws CatalogueError ("PATH: cannot be read: REASON").
File openFile(const std::string& path, std::size_t& size);

// Standard input, switched to binary mode where the system distinguishes it.
std::FILE* binaryStandardInput();

// Reads one document held in memory with a `Reader`, a reader derived from
// XmlDocumentReader that is built from a file name and the document's size
// and hands its result over by `std::move(reader).finish()`, which throws
// CatalogueError for the document's problems.
template <typename Reader>
auto readDocument(std::string_view content, const std::string& fileName) {
  Reader reader(fileName, content.size());
  reader.readAll(content);
  return std::move(reader).finish();
}

// Reads `stream` to its end with a `Reader`, naming the document `fileName`.
template <typename Reader>
auto readDocument(std::FILE* stream, const std::string& fileName, std::size_t expectedSize) {
  Reader reader(fileName, expectedSize);
  reader.readStream(stream);
  return std::move(reader).finish();
}

// Reads the file at `path` with a `Reader`.
template <typename Reader>
auto readDocumentFile(const std::string& path) {
  std::size_t size = 0;
  const File file = openFile(path, size);
  return readDocument<Reader>(file.get(), path, size);
}

// Reads `paths` in order ("-" is standard input) with a `Reader` and appends
// the results; reads every file before it throws CatalogueError with the
// problems of all that yield nothing.
template <typename Reader>
auto readDocumentFiles(const std::vector<std::string>& paths) {
  static const std::string standardInput = standardInputName;
  decltype(std::declval<Reader>().finish()) all;
  std::vector<Finding> problems;
  for (const std::string& path : paths) {
    try {
      auto file = path == "-" ? readDocument<Reader>(binaryStandardInput(), standardInput, 0)
                              : readDocumentFile<Reader>(path);
      if (problems.empty()) {
        all.append(std::move(file));
      }
    } catch (const CatalogueError& error) {
      problems.insert(problems.end(), error.problems().begin(), error.problems().end());
      all = {};
    }
  }
  if (!problems.empty()) {
    throw CatalogueError(std::move(problems), __FILE__, __LINE__);
  }
  return all;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
