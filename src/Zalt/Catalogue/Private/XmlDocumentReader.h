// Zalt::Catalogue::Private::XmlDocumentReader: one XML document fed through
// the conforming streaming parser, with every problem of the file at its line
// and column. Readers of particular documents derive from it and take what
// they need from its element and character hooks; ReadDocument.h runs them.
//
//   class TitleReader : public XmlDocumentReader {
//   public:
//     explicit TitleReader(std::string name) : XmlDocumentReader(std::move(name), 0, "a title file") {}
//   private:
//     void startElement(const Element&) override {}
//     void endElement() override {}
//     void characters(std::string_view) override {}
//     void dropResults() override {}
//   };
//   TitleReader reader("title.xml");
//   const std::string_view document = "<title>Monitor</title>";
//   reader.feed(document.data(), document.size());
//   std::vector<Finding> problems = reader.finishParsing();  // empty: the file is fine
//
// The document is XML 1.0 in UTF-8, UTF-16, ISO-8859-1 or US-ASCII; a document
// type declaration (unless the reader lets one without an internal subset
// pass), another encoding, a byte-order mark that the declared encoding
// contradicts or XML 1.1 stops reading at that problem, and nothing is ever
// expanded or fetched. Other problems that the derived
// reader finds are listed too, at most 1,000 per file and then how many more.
//
// What a hook throws (std::bad_alloc, say) stops the parser and comes out of
// the feeding call that made the parser call the hook; the parser, written in
// C, never sees it. An allocation that fails in the parser itself comes out as
// std::bad_alloc too, whatever the parser made of it (ParserMemory.h).
#pragma once

#include <Zalt/Catalogue/Finding.h>
#include <Zalt/Catalogue/Private/InputPlaces.h>
#include <Zalt/Catalogue/Private/XmlElement.h>

#include <libxml/parser.h>

#include <array>
#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {

class XmlDocumentReader {
public:
  // What a document type declaration does to the document.
  enum class DocumentType {
    // Any declaration is a problem of the file.
    Refused,
    // One that only names a definition, as tools write to say which
    // vocabulary the document is in, is passed over; an internal subset is
    // a problem of the file.
    SkippedWithoutInternalSubset,
  };

  // `fileName` names the document in problems; `expectedSize` is the
  // document's size in bytes where it is known, else 0; `documentKind` says
  // what the document must be ("a catalogue file").
  XmlDocumentReader(std::string fileName, std::size_t expectedSize, std::string_view documentKind,
                    DocumentType documentType = DocumentType::Refused);
  XmlDocumentReader(const XmlDocumentReader&) = delete;
  XmlDocumentReader& operator=(const XmlDocumentReader&) = delete;
  XmlDocumentReader(XmlDocumentReader&&) = delete;
  XmlDocumentReader& operator=(XmlDocumentReader&&) = delete;
  virtual ~XmlDocumentReader();

  // Whether the document has failed for good: the rest of it need not be read.
  bool stopped() const { return m_stopped; }

  // Feeds the next piece of the document, which may be empty. Throws what a
  // hook threw while the parser read it, as finishParsing does.
  void feed(const char* data, std::size_t size);

  // Ends the document and hands over every problem found, a note of how many
  // more were not listed last; empty where the document is fine.
  std::vector<Finding> finishParsing();

  // The name by which problems name the document.
  const std::string& fileName() const { return m_fileName; }

protected:
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

  bool hasProblems() const { return !m_problems.empty(); }
  // The number of elements open around the current point, the current one included.
  std::size_t depth() const { return m_depth; }

  // Where the markup that the parser has just read starts, at its '<'.
  Place markupPlace() const;
  // Where the value of `attribute`, one of the current element's, starts;
  // `fallback` where the parser rewrote it.
  Place placeOfValue(const Attribute& attribute, Place fallback) const;

  // A problem after which reading goes on.
  void problem(Place place, std::string message);
  // A problem that stops the parser.
  void fail(Place place, std::string message);

private:
  // Installs a reader's channel for the parser's messages without a document
  // on its thread, and puts the one before back.
  class MessageChannel {
  public:
    explicit MessageChannel(XmlDocumentReader& reader);
    MessageChannel(const MessageChannel&) = delete;
    MessageChannel& operator=(const MessageChannel&) = delete;
    ~MessageChannel();

  private:
    xmlGenericErrorFunc m_previous;
    void* m_previousContext;
  };

  struct ContextFree {
    void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
  };

  template <typename Event>
  static void dispatch(void* self, const Event& event);
  static const xmlSAXHandler& events();
  void parse(const char* data, std::size_t size, bool last);
  // NOLINTNEXTLINE(cert-dcl50-cpp): the parser's channel is a printf-style C function.
  static void channelMessage(void* self, const char* format, ...);
  void checkDeclaration();
  void checkByteOrderMark();
  void refuseEncoding(const char* encoding);
  void documentType();
  void elementStarted(const Element& element);
  void elementEnded();
  void textCharacters(const xmlChar* data, int size);
  void cdata(const xmlChar* data, int size);
  void parserError(const xmlError& error);
  std::string reason(const xmlError& error) const;

  const std::string m_fileName;
  const std::size_t m_expectedSize;
  const std::string_view m_documentKind;
  const DocumentType m_documentType;
  std::size_t m_fed = 0;
  // Where a byte-order mark would be.
  std::string m_firstBytes;
  // The first message on the channel, kept where taking it needs no memory.
  std::array<char, 256> m_channelMessage{};
  // What a hook threw, until the parser has returned.
  std::exception_ptr m_thrown;
  // Declared after the channel, so that the parser is freed before its
  // channel goes.
  MessageChannel m_channel;
  std::unique_ptr<xmlParserCtxt, ContextFree> m_context;
  bool m_finishing = false;
  bool m_sawElement = false;
  bool m_stopped = false;
  std::size_t m_depth = 0;
  bool m_cdataCarriageReturn = false;
  std::string m_cdataText;
  std::vector<Finding> m_problems;
  std::size_t m_unlisted = 0;
};

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
