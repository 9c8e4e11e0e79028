// Fuzz target for the XLIFF reader: the whole input is one XLIFF file, as a
// translator sends it back. Any bytes must give translations or a
// CatalogueError, nothing else; every text and every finding must stand at a
// line of the input. Each text read must be one that a catalogue file can
// carry, and the kept texts, exported again without translations, must come
// back as exactly that many untranslated units.
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include "FuzzCheck.h"

#include <boost/optional.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

using Zalt::Catalogue::Finding;
using Zalt::Catalogue::SourceLocation;

// At most the lines that the reader counts: every LF and CR counts here.
std::int32_t numberOfLines(const std::string& bytes) {
  return 1 + static_cast<std::int32_t>(std::count_if(bytes.begin(), bytes.end(),
                                                     [](char byte) { return byte == '\n' || byte == '\r'; }));
}

void checkLine(const SourceLocation& location, std::int32_t lines, const char* what) {
  FUZZ_CHECK(location.file == "fuzz.xlf", what << " located in " << location.file);
  FUZZ_CHECK(location.line >= 0 && location.line <= lines,
             what << " at line " << location.line << " of " << lines);
}

// A language that no text of `catalogue` has, if one of a few is free.
boost::optional<Tovra::Locale::LanguageTag> unusedLanguage(const Zalt::Catalogue::Catalogue& catalogue) {
  for (const char* candidate : {"zz-ZZ", "yy-YY", "xx-XX", "ww-WW"}) {
    const Tovra::Locale::LanguageTag language(candidate);
    if (std::none_of(catalogue.texts.begin(), catalogue.texts.end(),
                     [&](const auto& text) { return text.text.lang() == language; })) {
      return language;
    }
  }
  return boost::none;
}

// The kept texts of one language, sent out again into a language that the
// catalogue lacks: no unit has a target, so each comes back as an
// untranslated unit and none as a text.
void checkExportedAgain(const Zalt::Catalogue::Catalogue& catalogue) {
  const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(catalogue);
  const boost::optional<Tovra::Locale::LanguageTag> other = unusedLanguage(catalogue);
  if (check.kept.empty() || !other) {
    return;
  }
  const Tovra::Locale::LanguageTag language = *catalogue.texts[check.kept.front()].text.lang();
  const auto units =
      static_cast<std::size_t>(std::count_if(check.kept.begin(), check.kept.end(), [&](std::size_t index) {
        return *catalogue.texts[index].text.lang() == language;
      }));
  const std::string xliff = Zalt::Catalogue::writeXliff(catalogue, check, language, *other, "fuzz.xml");
  try {
    const Zalt::Catalogue::XliffImport again = Zalt::Catalogue::readXliff(xliff, "again.xlf");
    FUZZ_CHECK(again.catalogue.texts.empty(), again.catalogue.texts.size()
                                                  << " texts from units without targets");
    FUZZ_CHECK(again.findings.size() == units, again.findings.size()
                                                   << " findings for " << units << " units");
    for (const Finding& finding : again.findings) {
      FUZZ_CHECK(finding.kind == Finding::Kind::Untranslated,
                 "a unit exported comes back as: " << finding.message << "\n"
                                                   << xliff);
    }
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    FUZZ_CHECK(false, "the export cannot be read: " << error.what() << "\n" << xliff);
  }
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::int32_t lines = numberOfLines(bytes);
  try {
    const Zalt::Catalogue::XliffImport imported = Zalt::Catalogue::readXliff(bytes, "fuzz.xlf");
    for (const Zalt::Catalogue::CatalogueText& text : imported.catalogue.texts) {
      checkLine(imported.catalogue.location(text), lines, "text");
    }
    for (const Finding& finding : imported.findings) {
      checkLine(finding.location, lines, "finding");
    }
    try {
      Zalt::Catalogue::writeCatalogue(Zalt::Catalogue::mdibTexts(imported.catalogue.texts));
    } catch (const std::invalid_argument& refused) {
      FUZZ_CHECK(false, "the writer refuses a text read: " << refused.what());
    }
    checkExportedAgain(imported.catalogue);
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    FUZZ_CHECK(!error.problems().empty(), "an error without problems");
    FUZZ_CHECK(std::string(error.what()).rfind("fuzz.xlf:", 0) == 0,
               "message without the file: " << error.what());
  }
  return 0;
}
