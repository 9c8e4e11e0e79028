#include <Zalt/Catalogue/ReadCatalogue.h>

#include <Zalt/Catalogue/WriteCatalogue.h>

#include <libxml/parser.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace Zalt {
namespace Catalogue {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

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

// XML Schema collapses the white space around a number or a token.
std::string_view collapsed(std::string_view value) {
  while (!value.empty() && isXmlSpace(value.front())) {
    value.remove_prefix(1);
  }
  while (!value.empty() && isXmlSpace(value.back())) {
    value.remove_suffix(1);
  }
  return value;
}

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

std::string qualified(const xmlChar* prefix, const xmlChar* local) {
  return prefix != nullptr ? std::string(view(prefix)) + ':' + std::string(view(local))
                           : std::string(view(local));
}

[[noreturn]] void failToRead(const std::string& path, int error) {
  throw CatalogueError(
      {Finding{Finding::Kind::File, {path, 0, 0}, std::string("cannot be read: ") + std::strerror(error)}},
      __FILE__, __LINE__);
}

struct Place {
  std::int32_t line;
  std::int32_t column;
};

// A text element's parts until its end tag.
struct PendingText {
  Place place;
  std::string ref;
  boost::optional<LanguageTag> lang;
  boost::optional<VersionCounter> version;
  boost::optional<LocalizedTextWidth> width;
  std::string content;
};

enum class Open : char { Other, Response, Text };

// Feeds one document to the parser in chunks and takes the texts from its
// events; the parser checks everything XML requires.
class DocumentReader {
public:
  // The parser reports a failed conversion from the file's encoding on its
  // thread's channel for messages without a document; while this reader
  // lives, that channel is the reader's, so nothing reaches stderr.
  // `expectedSize` is the document's size in bytes where it is known, else 0.
  DocumentReader(const std::string& fileName, std::size_t expectedSize)
      : m_fileName(fileName),
        m_expectedSize(expectedSize),
        m_previousChannel(xmlGenericError),
        m_previousChannelContext(xmlGenericErrorContext) {
    xmlSetGenericErrorFunc(this, &DocumentReader::channelMessage);
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
  DocumentReader(const DocumentReader&) = delete;
  DocumentReader& operator=(const DocumentReader&) = delete;
  ~DocumentReader() {
    xmlFreeParserCtxt(m_context);
    xmlSetGenericErrorFunc(m_previousChannelContext, m_previousChannel);
  }

  // Whether the document has failed for good: the rest of it need not be read.
  bool stopped() const { return m_stopped; }

  void feed(const char* data, std::size_t size) {
    if (size > 0 && !m_stopped) {
      parse(data, size, false);
    }
    if (m_fed == 0) {
      reserveLike(m_expectedSize, size);
    }
    m_fed += size;
  }

  Catalogue finish() && {
    if (!m_stopped) {
      m_finishing = true;
      parse(nullptr, 0, true);
    }
    if (!m_problems.empty()) {
      if (m_unlisted > 0) {
        m_problems.push_back({Finding::Kind::File,
                              {m_fileName, 0, 0},
                              std::to_string(m_unlisted) + " more problems are not listed"});
      }
      throw CatalogueError(std::move(m_problems), __FILE__, __LINE__);
    }
    giveBackRoom();
    m_catalogue.files.push_back(m_fileName);
    return std::move(m_catalogue);
  }

private:
  static const xmlSAXHandler& events() {
    static const xmlSAXHandler handler = [] {
      xmlSAXHandler sax{};
      sax.initialized = XML_SAX2_MAGIC;
      sax.startDocument = [](void* self) { static_cast<DocumentReader*>(self)->checkDeclaration(); };
      sax.internalSubset = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
        static_cast<DocumentReader*>(self)->refuseDocumentType();
      };
      sax.startElementNs = [](void* self, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri,
                              int, const xmlChar**, int count, int, const xmlChar** attributes) {
        static_cast<DocumentReader*>(self)->startElement(local, prefix, uri, count, attributes);
      };
      sax.endElementNs = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
        static_cast<DocumentReader*>(self)->endElement();
      };
      sax.characters = [](void* self, const xmlChar* data, int size) {
        static_cast<DocumentReader*>(self)->characters(data, size);
      };
      sax.cdataBlock = [](void* self, const xmlChar* data, int size) {
        static_cast<DocumentReader*>(self)->cdata(data, size);
      };
      sax.ignorableWhitespace = sax.characters;
      sax.serror = [](void* self, xmlErrorPtr error) {
        static_cast<DocumentReader*>(self)->parserError(*error);
      };
      return sax;
    }();
    return handler;
  }

  // A conversion that fails stops the parser without an error of the document.
  void parse(const char* data, std::size_t size, bool last) {
    if (xmlParseChunk(m_context, data, static_cast<int>(size), last ? 1 : 0) != 0 && !m_stopped) {
      fail({m_context->input->line, m_context->input->col},
           "malformed XML: " +
               (m_channelMessage.empty() ? std::string("the parser stopped") : m_channelMessage));
    }
  }

  // NOLINTNEXTLINE(cert-dcl50-cpp): the parser's channel is a printf-style C function.
  static void channelMessage(void* self, const char* format, ...) {
    auto& reader = *static_cast<DocumentReader*>(self);
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

  void checkDeclaration() {
    if (m_context->version != nullptr && view(m_context->version) != "1.0") {
      fail({1, 1},
           "XML " + std::string(view(m_context->version)) + " is not supported: a catalogue file is XML 1.0");
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
  void refuseEncoding(const char* encoding) {
    fail({1, 1}, "encoding '" + std::string(encoding) +
                     "' is not supported: a catalogue file is UTF-8, UTF-16, ISO-8859-1 or US-ASCII");
  }

  void refuseDocumentType() {
    fail(placeOf(markupStart()),
         "a document type declaration is not allowed in a catalogue file (nothing is expanded or fetched)");
  }

  void startElement(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int count,
                    const xmlChar** attributes) {
    const std::string_view name = view(local);
    const std::string_view xmlNamespace = uri != nullptr ? view(uri) : std::string_view();
    const bool parentIsResponse = !m_open.empty() && m_open.back() == Open::Response;
    m_sawElement = true;
    Open kind = Open::Other;
    if (xmlNamespace == messageNamespace && name == "GetLocalizedTextResponse") {
      kind = Open::Response;
    } else if ((xmlNamespace == participantNamespace && name == "LocalizedText") ||
               (xmlNamespace == messageNamespace && name == "Text" && parentIsResponse)) {
      kind = Open::Text;
    } else if (name == "LocalizedText" || (name == "Text" && xmlNamespace != messageNamespace)) {
      noteMisplaced(name, xmlNamespace);
    }
    if (m_inText) {
      problem(placeOf(markupStart()), "element '" + qualified(prefix, local) +
                                          "' inside a localized text: a text holds characters only");
    } else if (kind == Open::Text) {
      beginText(count, attributes);
    }
    m_open.push_back(kind);
  }

  void endElement() {
    m_open.pop_back();
    if (m_inText && m_open.size() == m_textLevel) {
      m_inText = false;
      endText();
    }
  }

  void characters(const xmlChar* data, int size) {
    m_cdataCarriageReturn = false;
    if (isTextContent()) {
      m_text.content.append(reinterpret_cast<const char*>(data), static_cast<std::size_t>(size));
    }
  }

  // The parser lets an overlong two-byte sequence through in CDATA alone; the
  // store's own decoder finds every malformed one.
  static bool isUtf8(const xmlChar* data, int size) {
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

  // The parser hands CDATA sections on with their carriage returns, where
  // XML turns CR LF and a lone CR into LF as everywhere else. A section
  // may come in pieces, and a CR LF may span two.
  void cdata(const xmlChar* data, int size) {
    if (!isUtf8(data, size)) {
      fail({m_context->input->line, m_context->input->col},
           "malformed XML: a CDATA section holds what is not UTF-8");
      return;
    }
    for (const xmlChar* at = data; at < data + size; ++at) {
      const bool lineFeedOfCrLf = *at == '\n' && m_cdataCarriageReturn;
      m_cdataCarriageReturn = *at == '\r';
      if (isTextContent() && !lineFeedOfCrLf) {
        m_text.content += *at == '\r' ? '\n' : static_cast<char>(*at);
      }
    }
  }

  bool isTextContent() const { return m_inText && m_open.size() == m_textLevel + 1; }

  // Warnings (a relative namespace URI, say) are not problems of the file.
  void parserError(const xmlError& error) {
    if (error.level < XML_ERR_ERROR || m_stopped) {
      return;
    }
    if (error.code == XML_ERR_UNSUPPORTED_ENCODING && error.str1 != nullptr) {
      refuseEncoding(error.str1);
    } else {
      fail({error.line, error.int2}, "malformed XML: " + reason(error));
    }
  }

  // At the end of the file the parser's reason is "extra content" whatever
  // is missing; what is missing is known here.
  std::string reason(const xmlError& error) const {
    if (!m_finishing || error.code != XML_ERR_DOCUMENT_END) {
      return oneLine(error.message);
    }
    if (!m_sawElement) {
      return "no root element";
    }
    if (!m_open.empty() && m_context->name != nullptr) {
      return "the file ends inside the element '" + std::string(view(m_context->name)) + "'";
    }
    return oneLine(error.message);
  }

  void beginText(int count, const xmlChar** attributes) {
    m_inText = true;
    m_textLevel = m_open.size();
    m_text = PendingText{placeOf(markupStart()), {}, {}, {}, {}, {}};
    for (int index = 0; index < count; ++index) {
      const xmlChar* const* attribute = attributes + std::ptrdiff_t{5} * index;
      if (attribute[1] == nullptr) {
        textAttribute(view(attribute[0]), attribute[3], attribute[4]);
      }
    }
  }

  void textAttribute(std::string_view name, const xmlChar* begin, const xmlChar* end) {
    const std::string_view value(reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin));
    if (name == "Ref") {
      m_text.ref = value;
    } else if (name == "Lang") {
      m_text.lang = LanguageTag(std::string(value));
    } else if (name == "Version") {
      const std::string_view digits = collapsed(value);
      std::uint64_t number = 0;
      const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), number);
      if (parsed.ec != std::errc() || parsed.ptr != digits.data() + digits.size()) {
        problem(placeOfValue(begin),
                "Version '" + std::string(value) + "' is not an unsigned 64-bit decimal");
      } else {
        m_text.version = VersionCounter(number);
      }
    } else if (name == "TextWidth") {
      m_text.width = textWidthFromToken(std::string(collapsed(value)));
      if (!m_text.width) {
        problem(placeOfValue(begin),
                "TextWidth '" + std::string(value) + "' is not one of " + textWidthTokenList());
      }
    }
  }

  void endText() {
    // A file with a problem yields no texts: none are kept past the first.
    if (!m_problems.empty()) {
      return;
    }
    PendingText& text = m_text;
    m_catalogue.texts.push_back(
        {Tovra::Mdib::LocalizedText(Utf8(std::move(text.content)), std::move(text.lang),
                                    LocalizedTextRef(Utf8(std::move(text.ref))), text.version, text.width),
         0, text.place.line, text.place.column});
  }

  // Growing the texts as they come would copy them some twenty times into
  // ever larger blocks at a million texts. A file's first chunk tells how
  // densely it holds texts, so the whole file's room is taken at once.
  void reserveLike(std::size_t fileSize, std::size_t readSoFar) {
    std::vector<CatalogueText>& texts = m_catalogue.texts;
    if (fileSize > readSoFar && !texts.empty()) {
      const std::size_t expected = texts.size() * (fileSize / readSoFar + 1);
      texts.reserve(expected + expected / 16);
    }
  }

  // What a guess took beyond the texts is given back, where it is worth a copy.
  void giveBackRoom() {
    std::vector<CatalogueText>& texts = m_catalogue.texts;
    if (texts.capacity() > texts.size() + texts.size() / 4 + 64) {
      texts.shrink_to_fit();
    }
  }

  // The first element of each name and namespace is enough to tell a user
  // which namespace the texts were meant to have.
  void noteMisplaced(std::string_view name, std::string_view xmlNamespace) {
    const auto known = std::find_if(m_catalogue.misplaced.begin(), m_catalogue.misplaced.end(),
                                    [&](const MisplacedElement& element) {
                                      return element.name == name && element.xmlNamespace == xmlNamespace;
                                    });
    if (known == m_catalogue.misplaced.end()) {
      const Place place = placeOf(markupStart());
      m_catalogue.misplaced.push_back(
          {{m_fileName, place.line, place.column}, std::string(name), std::string(xmlNamespace)});
    }
  }

  // The '<' of the markup that the parser has just read: no '<' can stand
  // inside a tag or a document type's name, so it is the last one before.
  const xmlChar* markupStart() const {
    const xmlChar* at = m_context->input->cur;
    while (at > m_context->input->base && *at != '<') {
      --at;
    }
    return at;
  }

  // An attribute value lies in the parser's buffer unless the parser had to
  // rewrite it; then its element's start is the nearest place known.
  Place placeOfValue(const xmlChar* value) const {
    const xmlParserInput& input = *m_context->input;
    return value >= input.base && value <= input.cur ? placeOf(value) : m_text.place;
  }

  // The parser counts lines and columns where it stands, at the end of the
  // markup just read, which is still in its buffer together with a stretch
  // before it; an earlier place is counted back from there.
  Place placeOf(const xmlChar* at) const {
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

  void problem(Place place, std::string message) {
    if (m_problems.size() < listedProblems) {
      m_problems.push_back({Finding::Kind::File, {m_fileName, place.line, place.column}, std::move(message)});
    } else {
      ++m_unlisted;
    }
    m_catalogue.texts = {};
  }

  void fail(Place place, std::string message) {
    m_stopped = true;
    if (m_problems.size() == listedProblems) {
      m_problems.pop_back();
      ++m_unlisted;
    }
    problem(place, std::move(message));
    xmlStopParser(m_context);
  }

  const std::string& m_fileName;
  const std::size_t m_expectedSize;
  std::size_t m_fed = 0;
  xmlGenericErrorFunc m_previousChannel;
  void* m_previousChannelContext;
  std::string m_channelMessage;
  xmlParserCtxtPtr m_context = nullptr;
  bool m_finishing = false;
  bool m_sawElement = false;
  bool m_stopped = false;
  std::vector<Open> m_open;
  bool m_inText = false;
  bool m_cdataCarriageReturn = false;
  std::size_t m_textLevel = 0;
  PendingText m_text;
  std::vector<Finding> m_problems;
  std::size_t m_unlisted = 0;
  Catalogue m_catalogue;
};

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Windows refuses to open a directory with EACCES, which would send a user
// looking for a permission problem; the reason is the same as on Linux.
int openError(const std::string& path, int error) {
  std::error_code unknown;
  return std::filesystem::is_directory(path, unknown) ? EISDIR : error;
}

Catalogue readStream(std::FILE* stream, const std::string& name, std::size_t expectedSize) {
  DocumentReader reader(name, expectedSize);
  std::vector<char> buffer(chunkSize);
  while (!reader.stopped()) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), stream);
    reader.feed(buffer.data(), count);
    if (count < buffer.size()) {
      if (std::ferror(stream) != 0) {
        failToRead(name, errno);
      }
      break;
    }
  }
  return std::move(reader).finish();
}

Catalogue readStandardInput() {
#ifdef _WIN32
  // In text mode Windows would turn CR LF into LF and stop at the first Ctrl-Z,
  // so a UTF-16 catalogue or one with CR LF line ends would not arrive as written.
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  return readStream(stdin, standardInputName, 0);
}

}  // namespace

Catalogue readCatalogue(std::string_view content, const std::string& fileName) {
  DocumentReader reader(fileName, content.size());
  for (std::size_t at = 0; at < content.size() && !reader.stopped(); at += chunkSize) {
    reader.feed(content.data() + at, std::min(chunkSize, content.size() - at));
  }
  return std::move(reader).finish();
}

Catalogue readCatalogueFile(const std::string& path) {
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    failToRead(path, openError(path, errno));
  }
  std::error_code unknown;
  const std::uintmax_t size = std::filesystem::file_size(path, unknown);
  return readStream(file.get(), path, unknown ? 0 : static_cast<std::size_t>(size));
}

Catalogue readCatalogueFiles(const std::vector<std::string>& paths) {
  Catalogue catalogue;
  std::vector<Finding> problems;
  for (const std::string& path : paths) {
    try {
      Catalogue file = path == "-" ? readStandardInput() : readCatalogueFile(path);
      if (problems.empty()) {
        catalogue.append(std::move(file));
      }
    } catch (const CatalogueError& error) {
      problems.insert(problems.end(), error.problems().begin(), error.problems().end());
      catalogue = {};
    }
  }
  if (!problems.empty()) {
    throw CatalogueError(std::move(problems), __FILE__, __LINE__);
  }
  return catalogue;
}

}  // namespace Catalogue
}  // namespace Zalt
