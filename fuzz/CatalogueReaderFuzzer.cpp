// Fuzz target for the catalogue reader: the whole input is one catalogue file.
// Any bytes must give texts or a CatalogueError, nothing else; every text must
// stand at a line and column of the input, and so must every problem. The
// texts read, written back with writeCatalogue and read again, must come back
// unchanged.
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include "FuzzCheck.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Zalt::Catalogue::CatalogueText;
using Zalt::Catalogue::SourceLocation;

// Lines as the reader counts them: LF, CR LF and a lone CR each end one.
// Conversion from UTF-16 keeps the line ends, so counting its bytes errs
// only on the side of more lines.
std::int32_t numberOfLines(const std::string& bytes) {
  std::int32_t lines = 1;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' || (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n'))) {
      ++lines;
    }
  }
  return lines;
}

void checkPlace(const SourceLocation& location, std::int32_t lines, std::size_t size, const char* what) {
  FUZZ_CHECK(location.file == "fuzz.xml", what << " located in " << location.file);
  FUZZ_CHECK(location.line >= 1 && location.line <= lines,
             what << " at line " << location.line << " of " << lines);
  FUZZ_CHECK(location.column >= 1 && static_cast<std::size_t>(location.column) <= size + 1,
             what << " at column " << location.column);
}

// The writer refuses only characters that no file can carry; the reader can
// return one only by joining the halves of a malformed sequence that stand
// apart in the file, such as "\xEF\xBF" and "<![CDATA[\xBE]]>".
bool holdsUnwritableCharacter(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool control = byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
    const bool nonCharacter = byte == 0xEF && i + 2 < text.size() &&
                              static_cast<unsigned char>(text[i + 1]) == 0xBF &&
                              (static_cast<unsigned char>(text[i + 2]) & 0xFEU) == 0xBE;
    if (control || nonCharacter) {
      return true;
    }
  }
  return false;
}

void checkRoundTrip(const std::vector<CatalogueText>& entries) {
  const std::vector<Tovra::Mdib::LocalizedText> texts = Zalt::Catalogue::mdibTexts(entries);
  std::string written;
  try {
    written = Zalt::Catalogue::writeCatalogue(texts);
  } catch (const std::invalid_argument& refused) {
    bool explained = false;
    for (const Tovra::Mdib::LocalizedText& text : texts) {
      explained = explained || holdsUnwritableCharacter(text.text().value());
    }
    FUZZ_CHECK(explained, "the writer refuses a text read: " << refused.what());
    return;
  }
  try {
    const auto reread =
        Zalt::Catalogue::mdibTexts(Zalt::Catalogue::readCatalogue(written, "again.xml").texts);
    FUZZ_CHECK(reread.size() == texts.size(), reread.size() << " texts read back of " << texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      FUZZ_CHECK(reread[i] == texts[i], "text " << i << " read back as '" << reread[i].text() << "', was '"
                                                << texts[i].text() << "', in:\n"
                                                << written);
    }
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    FUZZ_CHECK(false, "the written catalogue cannot be read: " << error.what() << "\n" << written);
  }
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::int32_t lines = numberOfLines(bytes);
  try {
    const auto catalogue = Zalt::Catalogue::readCatalogue(bytes, "fuzz.xml");
    for (const CatalogueText& entry : catalogue.texts) {
      checkPlace(entry.location, lines, size, "text");
    }
    for (const Zalt::Catalogue::MisplacedElement& element : catalogue.misplaced) {
      checkPlace(element.location, lines, size, "misplaced element");
    }
    checkRoundTrip(catalogue.texts);
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    FUZZ_CHECK(!error.problems().empty(), "an error without problems");
    for (const Zalt::Catalogue::Finding& problem : error.problems()) {
      checkPlace(problem.location, lines, size, "problem");
    }
    FUZZ_CHECK(std::string(error.what()).rfind("fuzz.xml:", 0) == 0,
               "message without the file: " << error.what());
  }
  return 0;
}
