#include <Zalt/Catalogue/Private/XmlDocumentReader.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

// Big enough that the parser's own work dominates, small enough to stay in cache.
constexpr std::size_t chunkSize = std::size_t{64} * 1024;
// Beyond this, more problems of one file tell a user nothing new; a file of
// garbage must not turn into millions of them.
constexpr std::size_t listedProblems = 1000;

// The encodings that the parser converts itself, by their names and aliases.
constexpr std::array<std::string_view, 11> readEncodings = {
    "UTF-8",      "UTF8",        "UTF-16",      "UTF16",    "UTF-16LE", "UTF-16BE",
    "ISO-8859-1", "ISO-LATIN-1", "ISO LATIN 1", "US-ASCII", "ASCII"};

std::string_view view(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

bool isReadEncoding(std::string_view name) {
  return std::any_of(readEncodings.begin(), readEncodings.end(), [name](std::string_view known) {
    return known.size() == name.size() &&
           std::equal(known.begin(), known.end(), name.begin(), [](char lhs, char rhs) {
             return lhs == (rhs >= 'a' && rhs <= 'z' ? rhs - 'a' + 'A' : rhs);
           });
  });
}

bool isXmlSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool startsCharacter(xmlChar byte) { return (byte & 0xC0U) != 0x80U; }

std::int32_t charactersIn(const xmlChar* begin, const xmlChar* end) {
  return static_cast<std::int32_t>(std::count_if(begin, end, startsCharacter));
}

// The parser's reasons end in a line feed and some span two lines.
std::string oneLine(const char* message) {
  std::string line = message != nullptr ? message : "unknown error";
  std::replace(line.begin(), line.end(), '\n', ' ');
  return std::string(collapsed(line));
}

[[noreturn]] void failToRead(const std::string& path, int error) {
  throw CatalogueError(
      {Finding{Finding::Kind::File, {path, 0, 0}, std::string("cannot be read: ") + std::strerror(error)}},
      __FILE__, __LINE__);
}

// Windows refuses to open a directory with EACCES, which would send a user
// looking for a permission problem; the reason is the same as on Linux.
int openError(const std::string& path, int error) {
  std::error_code unknown;
  return std::filesystem::is_directory(path, unknown) ? EISDIR : error;
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

std::string_view collapsed(std::string_view value) {
  while (!value.empty() && isXmlSpace(value.front())) {
    value.remove_prefix(1);
  }
  while (!value.empty() && isXmlSpace(value.back())) {
    value.remove_suffix(1);
  }
  return value;
}

std::optional<std::uint64_t> versionNumber(std::string_view value) {
  const std::string_view digits = collapsed(value);
  std::uint64_t number = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (parsed.ec != std::errc() || parsed.ptr != digits.data() + digits.size()) {
    return std::nullopt;
  }
  return number;
}

std::string badVersionMessage(std::string_view value) {
  return "Version '" + std::string(value) + "' is not an unsigned 64-bit decimal";
}

std::string XmlDocumentReader::Element::qualifiedName() const {
  return prefix != nullptr ? std::string(view(prefix)) + ':' + std::string(name) : std::string(name);
}

std::optional<std::string_view> XmlDocumentReader::Element::attribute(std::string_view wanted,
                                                                      const xmlChar** start) const {
  for (int index = 0; index < attributeCount; ++index) {
    const xmlChar* const* attribute = attributes + std::ptrdiff_t{5} * index;
    if (attribute[1] == nullptr && view(attribute[0]) == wanted) {
      if (start != nullptr) {
        *start = attribute[3];
      }
      return std::string_view(reinterpret_cast<const char*>(attribute[3]),
                              static_cast<std::size_t>(attribute[4] - attribute[3]));
    }
  }
  return std::nullopt;
}

// The parser reports a failed conversion from the file's encoding on its
// thread's channel for messages without a document; while this reader lives,
// that channel is the reader's, so nothing reaches stderr.
XmlDocumentReader::XmlDocumentReader(const std::string& fileName, std::size_t expectedSize,
                                     std::string_view documentKind)
    : m_fileName(fileName),
      m_expectedSize(expectedSize),
      m_documentKind(documentKind),
      m_previousChannel(xmlGenericError),
      m_previousChannelContext(xmlGenericErrorContext) {
  xmlSetGenericErrorFunc(this, &XmlDocumentReader::channelMessage);
  // The parser's global tables are set up once, before any thread uses them.
  static const bool initialised = (xmlInitParser(), true);
  static_cast<void>(initialised);
  m_context =
      xmlCreatePushParserCtxt(const_cast<xmlSAXHandler*>(&events()), this, nullptr, 0, fileName.c_str());
  if (m_context == nullptr) {
    xmlSetGenericErrorFunc(m_previousChannelContext, m_previousChannel);
    throw std::bad_alloc();
  }
  // No document type declaration gets past refuseDocumentType, so there is
  // never an entity to expand but the five predefined ones, which this makes
  // the parser decode in attribute values too. Nothing is fetched, and no
  // depth of nesting is refused.
  xmlCtxtUseOptions(m_context, XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_HUGE);
}

XmlDocumentReader::~XmlDocumentReader() {
  xmlFreeParserCtxt(m_context);
  xmlSetGenericErrorFunc(m_previousChannelContext, m_previousChannel);
}

void XmlDocumentReader::feed(const char* data, std::size_t size) {
  if (size > 0 && !m_stopped) {
    parse(data, size, false);
  }
  if (m_fed == 0) {
    firstChunkFed(m_expectedSize, size);
  }
  m_fed += size;
}

void XmlDocumentReader::readAll(std::string_view content) {
  for (std::size_t at = 0; at < content.size() && !stopped(); at += chunkSize) {
    feed(content.data() + at, std::min(chunkSize, content.size() - at));
  }
}

void XmlDocumentReader::readStream(std::FILE* stream) {
  std::vector<char> buffer(chunkSize);
  while (!stopped()) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), stream);
    feed(buffer.data(), count);
    if (count < buffer.size()) {
      if (std::ferror(stream) != 0) {
        failToRead(m_fileName, errno);
      }
      break;
    }
  }
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

const xmlSAXHandler& XmlDocumentReader::events() {
  static const xmlSAXHandler handler = [] {
    xmlSAXHandler sax{};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startDocument = [](void* self) { static_cast<XmlDocumentReader*>(self)->checkDeclaration(); };
    sax.internalSubset = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
      static_cast<XmlDocumentReader*>(self)->refuseDocumentType();
    };
    sax.startElementNs = [](void* self, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int,
                            const xmlChar**, int count, int, const xmlChar** attributes) {
      static_cast<XmlDocumentReader*>(self)->elementStarted(
          {view(local), prefix, uri != nullptr ? view(uri) : std::string_view(), count, attributes});
    };
    sax.endElementNs = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
      static_cast<XmlDocumentReader*>(self)->elementEnded();
    };
    sax.characters = [](void* self, const xmlChar* data, int size) {
      static_cast<XmlDocumentReader*>(self)->textCharacters(data, size);
    };
    sax.cdataBlock = [](void* self, const xmlChar* data, int size) {
      static_cast<XmlDocumentReader*>(self)->cdata(data, size);
    };
    sax.ignorableWhitespace = sax.characters;
    sax.serror = [](void* self, xmlErrorPtr error) {
      static_cast<XmlDocumentReader*>(self)->parserError(*error);
    };
    return sax;
  }();
  return handler;
}

// A conversion that fails stops the parser without an error of the document.
void XmlDocumentReader::parse(const char* data, std::size_t size, bool last) {
  if (xmlParseChunk(m_context, data, static_cast<int>(size), last ? 1 : 0) != 0 && !m_stopped) {
    fail({m_context->input->line, m_context->input->col},
         "malformed XML: " +
             (m_channelMessage.empty() ? std::string("the parser stopped") : m_channelMessage));
  }
}

void XmlDocumentReader::channelMessage(void* self, const char* format, ...) {
  auto& reader = *static_cast<XmlDocumentReader*>(self);
  if (!reader.m_channelMessage.empty()) {
    return;
  }
  std::array<char, 256> message{};
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(message.data(), message.size(), format, arguments);
  va_end(arguments);
  reader.m_channelMessage = oneLine(message.data());
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
}

// The same message whether a converter exists for the encoding or not.
void XmlDocumentReader::refuseEncoding(const char* encoding) {
  fail({1, 1}, "encoding '" + std::string(encoding) + "' is not supported: " + std::string(m_documentKind) +
                   " is UTF-8, UTF-16, ISO-8859-1 or US-ASCII");
}

void XmlDocumentReader::refuseDocumentType() {
  fail(placeOf(markupStart()), "a document type declaration is not allowed in " +
                                   std::string(m_documentKind) + " (nothing is expanded or fetched)");
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

// No '<' can stand inside a tag or a document type's name, so the markup's
// start is the last one before where the parser stands.
const xmlChar* XmlDocumentReader::markupStart() const {
  const xmlChar* at = m_context->input->cur;
  while (at > m_context->input->base && *at != '<') {
    --at;
  }
  return at;
}

// An attribute value lies in the parser's buffer unless the parser had to
// rewrite it; then the caller's fallback is the nearest place known.
Place XmlDocumentReader::placeOfValue(const xmlChar* value, Place fallback) const {
  const xmlParserInput& input = *m_context->input;
  return value >= input.base && value <= input.cur ? placeOf(value) : fallback;
}

// The parser counts lines and columns where it stands, at the end of the
// markup just read, which is still in its buffer together with a stretch
// before it; an earlier place is counted back from there.
Place XmlDocumentReader::placeOf(const xmlChar* at) const {
  const xmlParserInput& input = *m_context->input;
  const auto breaks = static_cast<std::int32_t>(std::count(at, input.cur, '\n'));
  if (breaks == 0) {
    return {input.line, input.col - charactersIn(at, input.cur)};
  }
  const xmlChar* lineStart = at;
  while (lineStart > input.base && lineStart[-1] != '\n') {
    --lineStart;
  }
  const bool byteOrderMark = input.consumed == 0 && lineStart == input.base && at - lineStart >= 3 &&
                             std::memcmp(lineStart, "\xEF\xBB\xBF", 3) == 0;
  return {input.line - breaks, 1 + charactersIn(lineStart + (byteOrderMark ? 3 : 0), at)};
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
  xmlStopParser(m_context);
}

File openFile(const std::string& path, std::size_t& size) {
  File file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    failToRead(path, openError(path, errno));
  }
  std::error_code unknown;
  const std::uintmax_t bytes = std::filesystem::file_size(path, unknown);
  size = unknown ? 0 : static_cast<std::size_t>(bytes);
  return file;
}

std::FILE* binaryStandardInput() {
#ifdef _WIN32
  // In text mode Windows would turn CR LF into LF and stop at the first Ctrl-Z,
  // so a UTF-16 document or one with CR LF line ends would not arrive as written.
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  return stdin;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
