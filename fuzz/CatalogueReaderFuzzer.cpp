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

// At most the lines that the reader counts, at line feeds: a lone CR is
// counted too, and so is every byte 0x0A of a UTF-16 file, so that this
// errs only on the side of more lines.
std::int32_t numberOfLines(const std::string& bytes) {
  std::int32_t lines = 1;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' || (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n'))) {
      ++lines;
    }
  }
  return lines;
}

// `columns` is the most that a column may count.
void checkPlace(const SourceLocation& location, std::int32_t lines, std::size_t columns, const char* what) {
  FUZZ_CHECK(location.file == "fuzz.xml", what << " located in " << location.file);
  FUZZ_CHECK(location.line >= 1 && location.line <= lines,
             what << " at line " << location.line << " of " << lines);
  FUZZ_CHECK(location.column >= 1 && static_cast<std::size_t>(location.column) <= columns,
             what << " at column " << location.column);
}

void checkRoundTrip(const std::vector<CatalogueText>& entries) {
  const std::vector<Tovra::Mdib::LocalizedText> texts = Zalt::Catalogue::mdibTexts(entries);
  // A text that the reader took is UTF-8 of XML's characters, which the writer always takes.
  std::string written;
  try {
    written = Zalt::Catalogue::writeCatalogue(texts);
  } catch (const std::invalid_argument& refused) {
    FUZZ_CHECK(false, "the writer refuses a text read: " << refused.what());
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
      checkPlace(catalogue.location(entry), lines, size + 1, "text");
    }
    for (const Zalt::Catalogue::MisplacedElement& element : catalogue.misplaced) {
      checkPlace(element.location, lines, size + 1, "misplaced element");
    }
    checkRoundTrip(catalogue.texts);
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    FUZZ_CHECK(!error.problems().empty(), "an error without problems");
    for (const Zalt::Catalogue::Finding& problem : error.problems()) {
      // Only the count of problems not listed stands at no place.
      if (problem.location.line != 0 ||
          problem.message.find("more problems are not listed") == std::string::npos) {
        // Where the parser fails in a file it converted to UTF-8, it may count
        // the converted bytes: at most two for each byte of the file.
        checkPlace(problem.location, lines, 2 * size + 1, "problem");
      }
    }
    FUZZ_CHECK(std::string(error.what()).rfind("fuzz.xml:", 0) == 0,
               "message without the file: " << error.what());
  }
  return 0;
}
