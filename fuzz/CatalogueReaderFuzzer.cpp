// Fuzz target for the catalogue reader: the whole input is one catalogue file.
// Any bytes must give texts or a CatalogueError, nothing else; every text must
// stand at a line and column of the input, and so must every problem. The
// texts read, written back with writeCatalogue and read again, must come back
// unchanged.
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include "FuzzCheck.h"
#include "XmlReaderChecks.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Zalt::Catalogue::CatalogueText;

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
  const std::int32_t lines = ZaltFuzz::numberOfLines(bytes);
  try {
    const auto catalogue = Zalt::Catalogue::readCatalogue(bytes, "fuzz.xml");
    for (const CatalogueText& entry : catalogue.texts) {
      ZaltFuzz::checkPlace(catalogue.location(entry), "fuzz.xml", lines, size + 1, "text");
    }
    for (const Zalt::Catalogue::MisplacedElement& element : catalogue.misplaced) {
      ZaltFuzz::checkPlace(element.location, "fuzz.xml", lines, size + 1, "misplaced element");
    }
    checkRoundTrip(catalogue.texts);
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    ZaltFuzz::checkFileProblems(error, "fuzz.xml", bytes);
  }
  return 0;
}
