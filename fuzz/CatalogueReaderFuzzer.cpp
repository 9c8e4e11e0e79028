// Fuzz target for the catalogue reader: the whole input is one catalogue file.
// Any bytes must give texts or a CatalogueError, nothing else; every text must
// stand at a line and column of the input, and an error must name a line of it.
#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include "FuzzCheck.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

// Lines as the reader counts them: LF, CR LF and a lone CR each end one.
std::int32_t numberOfLines(const std::string& bytes) {
  std::int32_t lines = 1;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' || (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n'))) {
      ++lines;
    }
  }
  return lines;
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::int32_t lines = numberOfLines(bytes);
  try {
    for (const Zalt::Catalogue::CatalogueText& entry :
         Zalt::Catalogue::readCatalogue(bytes, "fuzz.xml").texts) {
      FUZZ_CHECK(entry.location.file == "fuzz.xml", "text located in " << entry.location.file);
      FUZZ_CHECK(entry.location.line >= 1 && entry.location.line <= lines,
                 "text at line " << entry.location.line << " of " << lines);
      FUZZ_CHECK(entry.location.column >= 1 && static_cast<std::size_t>(entry.location.column) <= size,
                 "text at column " << entry.location.column);
    }
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    FUZZ_CHECK(error.line() >= 1 && error.line() <= lines,
               "error at line " << error.line() << " of " << lines);
    FUZZ_CHECK(std::string(error.what()).rfind("fuzz.xml:", 0) == 0,
               "message without the file: " << error.what());
  }
  return 0;
}
