#include <Zalt/Catalogue/Private/XmlDocumentReader.h>

#include <Zalt/Catalogue/Private/AttributeValues.h>
#include <Zalt/Catalogue/Private/DocumentEncoding.h>
#include <Zalt/Catalogue/Private/ParserMemory.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <cstdarg>
#include <new>
#include <stdexcept>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

// Beyond this, more problems of one file tell a user nothing new; a file of
// garbage must not turn into millions of them.
constexpr std::size_t listedProblems = 1000;

// Enough of the document's start to hold any byte-order mark.
constexpr std::size_t markBytes = 3;

// The parser's reasons end in a line feed and some span two lines.
std::string oneLine(const char* message) {
  std::string line = message != nullptr ? message : "unknown error";
  std::replace(line.begin(), line.end(), '\n', ' ');
  return std::string(collapsed(line));
}

// The parser lets an overlong two-byte sequence through in CDATA alone; the
// store's own decoder finds every malformed one.
bool isUtf8(const xmlChar* data, int size) {
  using Decoder = boost::u8_to_u32_iterator<const xmlChar*, char32_t>;
  try {
    // The decoder checks a sequence when it is read, not when it is passed.
    for (Decoder it(data, data, data + size), end(data + size, data, data + size); it != end; ++it) {
      static_cast<void>(*it);
    }
  } catch (const std::out_of_range&) {
    return false;
  }
  return true;
}

}  // namespace

XmlDocumentReader::XmlDocumentReader(std::string fileName, std::size_t expectedSize,
                                     std::string_view documentKind, DocumentType documentType)
    : m_fileName(std::move(fileName)),
      m_expectedSize(expectedSize),
      m_documentKind(documentKind),
      m_documentType(documentType),
      m_channel(*this) {
  const std::size_t failedBefore = failedParserAllocations();
  // The parser's global tables are set up once, before any thread uses them.
  static const bool initialised = (noteFailedParserAllocations(), xmlInitParser(), true);
  static_cast<void>(initialised);
  m_context.reset(
      xmlCreatePushParserCtxt(const_cast<xmlSAXHandler*>(&events()), this, nullptr, 0, m_fileName.c_str()));
  if (!m_context || failedParserAllocations() != failedBefore) {
    throw std::bad_alloc();
  }
  // No internal subset gets past documentType, and no handler for an
  // external one is set, so there is never an entity to expand but the five
  // predefined ones, which this makes the parser decode in attribute values
  // too. Nothing is fetched, and no depth of nesting is refused.
  xmlCtxtUseOptions(m_context.get(), XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_HUGE);
}

XmlDocumentReader::~XmlDocumentReader() = default;

// The parser reports a failed conversion from the file's encoding on its
// thread's channel for messages without a document; while this reader lives,
// that channel is the reader's, so nothing reaches stderr.
XmlDocumentReader::MessageChannel::MessageChannel(XmlDocumentReader& reader)
    : m_previous(xmlGenericError), m_previousContext(xmlGenericErrorContext) {
  xmlSetGenericErrorFunc(&reader, &XmlDocumentReader::channelMessage);
}

XmlDocumentReader::MessageChannel::~MessageChannel() {
  xmlSetGenericErrorFunc(m_previousContext, m_previous);
}

void XmlDocumentReader::feed(const char* data, std::size_t size) {
  m_firstBytes.append(data, std::min(size, markBytes - m_firstBytes.size()));
  if (size > 0 && !m_stopped) {
    parse(data, size, false);
  }
  if (m_fed == 0) {
    firstChunkFed(m_expectedSize, size);
  }
  m_fed += size;
}

std::vector<Finding> XmlDocumentReader::finishParsing() {
  if (!m_stopped) {
    m_finishing = true;
    parse(nullptr, 0, true);
  }
  if (m_unlisted > 0) {
    m_problems.push_back({Finding::Kind::File,
                          {m_fileName, 0, 0},
                          std::to_string(m_unlisted) + " more problems are not listed"});
  }
  return std::move(m_problems);
}

void XmlDocumentReader::firstChunkFed(std::size_t /*expectedSize*/, std::size_t /*fed*/) {}

// An exception must not unwind through the parser's C frames, which leave its
// state half changed: it waits until the parser has returned, and nothing of
// the reader runs on the stopped parser meanwhile. Nor does anything run while
// the parser is being made, before the derived reader exists: a lack of
// memory, all that can go wrong then, comes out of the constructor.
template <typename Event>
void XmlDocumentReader::dispatch(void* self, const Event& event) {
  auto& reader = *static_cast<XmlDocumentReader*>(self);
  if (!reader.m_context || reader.m_stopped) {
    return;
  }
  try {
    event(reader);
  } catch (...) {
    reader.m_thrown = std::current_exception();
    reader.m_stopped = true;
    xmlStopParser(reader.m_context.get());
  }
}

// The error handler's parameter is a pointer to const from libxml2 2.12 on;
// the generic lambda takes either.
const xmlSAXHandler& XmlDocumentReader::events() {
  static const xmlSAXHandler handler = [] {
    xmlSAXHandler sax{};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startDocument = [](void* self) { dispatch(self, [](auto& reader) { reader.checkDeclaration(); }); };
    sax.internalSubset = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
      dispatch(self, [](auto& reader) { reader.documentType(); });
    };
    sax.startElementNs = [](void* self, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int,
                            const xmlChar**, int count, int, const xmlChar** attributes) {
      dispatch(self, [&](auto& reader) {
        reader.elementStarted({view(local), view(prefix), view(uri), Attributes(attributes, count)});
      });
    };
    sax.endElementNs = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
      dispatch(self, [](auto& reader) { reader.elementEnded(); });
    };
    sax.characters = [](void* self, const xmlChar* data, int size) {
      dispatch(self, [&](auto& reader) { reader.textCharacters(data, size); });
    };
    sax.cdataBlock = [](void* self, const xmlChar* data, int size) {
      dispatch(self, [&](auto& reader) { reader.cdata(data, size); });
    };
    sax.ignorableWhitespace = sax.characters;
    sax.serror = [](void* self, auto error) {
      dispatch(self, [&](auto& reader) { reader.parserError(*error); });
    };
    return sax;
  }();
  return handler;
}

// A conversion that fails stops the parser without an error of the document.
void XmlDocumentReader::parse(const char* data, std::size_t size, bool last) {
  const std::size_t failedBefore = failedParserAllocations();
  const int status = xmlParseChunk(m_context.get(), data, static_cast<int>(size), last ? 1 : 0);
  if (m_thrown) {
    std::rethrow_exception(m_thrown);
  }
  if (failedParserAllocations() != failedBefore) {
    throw std::bad_alloc();
  }
  if (status != 0 && !m_stopped) {
    fail({m_context->input->line, m_context->input->col},
         "malformed XML: " + (m_channelMessage[0] == '\0' ? std::string("the parser stopped")
                                                          : oneLine(m_channelMessage.data())));
  }
}

// The channel is called from inside the parser's input buffer, which stopping
// the parser would free under it: it takes the message without allocating,
// so that it cannot throw, and leaves it to parse() to act.
void XmlDocumentReader::channelMessage(void* self, const char* format, ...) {
  auto& reader = *static_cast<XmlDocumentReader*>(self);
  if (reader.m_stopped || reader.m_channelMessage[0] != '\0') {
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(reader.m_channelMessage.data(), reader.m_channelMessage.size(), format, arguments);
  va_end(arguments);
}

void XmlDocumentReader::checkDeclaration() {
  if (m_context->version != nullptr && view(m_context->version) != "1.0") {
    fail({1, 1}, "XML " + std::string(view(m_context->version)) +
                     " is not supported: " + std::string(m_documentKind) + " is XML 1.0");
    return;
  }
  const xmlCharEncodingHandler* encoder =
      m_context->input->buf != nullptr ? m_context->input->buf->encoder : nullptr;
  // The declared name, and the converter the parser chose for it or found by the file's first bytes.
  const std::array<const char*, 2> names = {reinterpret_cast<const char*>(m_context->encoding),
                                            encoder != nullptr ? encoder->name : nullptr};
  for (const char* encoding : names) {
    if (encoding != nullptr && !isReadEncoding(encoding)) {
      refuseEncoding(encoding);
      return;
    }
  }
  checkByteOrderMark();
}

// The parser follows the declaration over the mark: a UTF-8 file declared
// ISO-8859-1 would read without a word, each of its non-ASCII characters as
// two others.
void XmlDocumentReader::checkByteOrderMark() {
  const std::string_view marked = markedEncoding(m_firstBytes);
  const auto* const declared = reinterpret_cast<const char*>(m_context->encoding);
  if (!marked.empty() && declared != nullptr && !fitsMark(marked, declared)) {
    fail({1, 1}, "the byte-order mark says " + std::string(marked) + " but the declaration says '" +
                     std::string(declared) + "'");
  }
}

// The same message whether a converter exists for the encoding or not.
void XmlDocumentReader::refuseEncoding(const char* encoding) {
  fail({1, 1}, "encoding '" + std::string(encoding) + "' is not supported: " + std::string(m_documentKind) +
                   " is UTF-8, UTF-16, ISO-8859-1 or US-ASCII");
}

// The parser calls this with the declaration read up to its internal subset,
// if it has one. A declaration without one only names a definition, which
// is never fetched: where the reader allows it, nothing of it is used.
void XmlDocumentReader::documentType() {
  const bool hasInternalSubset = *m_context->input->cur == '[';
  if (m_documentType == DocumentType::SkippedWithoutInternalSubset && !hasInternalSubset) {
    return;
  }
  const std::string what =
      m_documentType == DocumentType::Refused ? "a document type declaration" : "an internal subset";
  fail(markupPlace(),
       what + " is not allowed in " + std::string(m_documentKind) + " (nothing is expanded or fetched)");
}

void XmlDocumentReader::elementStarted(const Element& element) {
  m_sawElement = true;
  startElement(element);
  ++m_depth;
}

void XmlDocumentReader::elementEnded() {
  --m_depth;
  endElement();
}

void XmlDocumentReader::textCharacters(const xmlChar* data, int size) {
  m_cdataCarriageReturn = false;
  characters(std::string_view(reinterpret_cast<const char*>(data), static_cast<std::size_t>(size)));
}

// The parser hands CDATA sections on with their carriage returns, where XML
// turns CR LF and a lone CR into LF as everywhere else. A section may come in
// pieces, and a CR LF may span two.
void XmlDocumentReader::cdata(const xmlChar* data, int size) {
  if (!isUtf8(data, size)) {
    fail({m_context->input->line, m_context->input->col},
         "malformed XML: a CDATA section holds what is not UTF-8");
    return;
  }
  m_cdataText.clear();
  for (const xmlChar* at = data; at < data + size; ++at) {
    const bool lineFeedOfCrLf = *at == '\n' && m_cdataCarriageReturn;
    m_cdataCarriageReturn = *at == '\r';
    if (!lineFeedOfCrLf) {
      m_cdataText += *at == '\r' ? '\n' : static_cast<char>(*at);
    }
  }
  characters(m_cdataText);
}

// Warnings (a relative namespace URI, say) are not problems of the file.
void XmlDocumentReader::parserError(const xmlError& error) {
  if (error.level < XML_ERR_ERROR || m_stopped) {
    return;
  }
  if (error.code == XML_ERR_UNSUPPORTED_ENCODING && error.str1 != nullptr) {
    refuseEncoding(error.str1);
  } else {
    fail({error.line, error.int2}, "malformed XML: " + reason(error));
  }
}

// At the end of the file the parser's reason is "extra content" whatever is
// missing; what is missing is known here.
std::string XmlDocumentReader::reason(const xmlError& error) const {
  if (!m_finishing || error.code != XML_ERR_DOCUMENT_END) {
    return oneLine(error.message);
  }
  if (!m_sawElement) {
    return "no root element";
  }
  if (m_depth > 0 && m_context->name != nullptr) {
    return "the file ends inside the element '" + std::string(view(m_context->name)) + "'";
  }
  return oneLine(error.message);
}

Place XmlDocumentReader::markupPlace() const {
  const xmlParserInput& input = *m_context->input;
  return placeOf(input, markupStart(input));
}

// An attribute value lies in the parser's buffer unless the parser had to
// rewrite it; then the caller's fallback is the nearest place known.
Place XmlDocumentReader::placeOfValue(const Attribute& attribute, Place fallback) const {
  const auto* const value = reinterpret_cast<const xmlChar*>(attribute.value.data());
  const xmlParserInput& input = *m_context->input;
  return isRead(input, value) ? placeOf(input, value) : fallback;
}

void XmlDocumentReader::problem(Place place, std::string message) {
  if (m_problems.size() < listedProblems) {
    m_problems.push_back({Finding::Kind::File, {m_fileName, place.line, place.column}, std::move(message)});
  } else {
    ++m_unlisted;
  }
  dropResults();
}

void XmlDocumentReader::fail(Place place, std::string message) {
  m_stopped = true;
  if (m_problems.size() == listedProblems) {
    m_problems.pop_back();
    ++m_unlisted;
  }
  problem(place, std::move(message));
  xmlStopParser(m_context.get());
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
