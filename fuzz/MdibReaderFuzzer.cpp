// Fuzz target for the MDIB reader: the whole input is one MDIB document. Any
// bytes must give text uses or a CatalogueError, nothing else; every use and
// every problem must stand at a place of the input. A use names its text by
// reference, in document order, or gives it inline in an element named like a
// user of the LocalizedText type, with characters other than white space.
// The document is parsed as a catalogue is: it is well-formed for both readers
// or for neither, and each text that the catalogue reader takes with a
// reference is a use at the same place, of the same reference, version and
// language.
#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Catalogue/ReadMdibTexts.h>

#include "FuzzCheck.h"
#include "XmlReaderChecks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using Zalt::Catalogue::CatalogueError;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::MdibTexts;
using Zalt::Catalogue::MdibTextUse;

constexpr std::array<std::string_view, 12> textElements = {
    "LocalizedText", "CodingSystemName",      "ConceptDescription", "IdentifierName", "Label",
    "Documentation", "Manufacturer",          "ModelName",          "Description",    "Text",
    "ErrorInfo",     "InvocationErrorMessage"};

void checkUse(const MdibTextUse& use) {
  FUZZ_CHECK(use.file == 0, "a use of file " << use.file);
  FUZZ_CHECK(!use.element.empty(), "a use without its element");
  if (use.isInline) {
    FUZZ_CHECK(use.ref.empty() && !use.version, "an inline text with a reference or version");
    FUZZ_CHECK(std::find(textElements.begin(), textElements.end(), use.element) != textElements.end(),
               "an inline text in the element '" << use.element << "'");
    FUZZ_CHECK(use.text.find_first_not_of(" \t\r\n") != std::string::npos,
               "an inline text of white space alone: '" << use.text << "'");
  } else {
    FUZZ_CHECK(use.text.empty(), "a reference with the text '" << use.text << "'");
  }
}

// Start tags come one after another, so the uses of references, which are
// taken at theirs, stand in strictly increasing places.
void checkReferencesInDocumentOrder(const MdibTexts& texts) {
  const MdibTextUse* previous = nullptr;
  for (const MdibTextUse& use : texts.uses) {
    if (use.isInline) {
      continue;
    }
    if (previous != nullptr) {
      FUZZ_CHECK(std::tie(previous->line, previous->column) < std::tie(use.line, use.column),
                 "reference '" << use.ref << "' at " << use.line << ':' << use.column << " after "
                               << previous->line << ':' << previous->column);
    }
    previous = &use;
  }
}

// Problems that only one of the readers looks for, in what a well-formed
// document holds: the attributes of the texts each takes, elements in a
// catalogue's text, and a catalogue read as an MDIB.
bool isContentProblem(const Finding& problem) {
  const std::string& message = problem.message;
  return message.find("is not an unsigned 64-bit decimal") != std::string::npos ||
         message.rfind("TextWidth '", 0) == 0 ||
         message.find("inside a localized text") != std::string::npos ||
         message.find("and no MDIB content") != std::string::npos;
}

// Whether the problems, if any, leave the document well-formed; none where a
// reader stopped listing them, as what it left out cannot be told.
std::optional<bool> wellFormed(const std::vector<Finding>& problems) {
  if (std::any_of(problems.begin(), problems.end(), [](const Finding& problem) {
        return problem.message.find("more problems are not listed") != std::string::npos;
      })) {
    return std::nullopt;
  }
  return std::all_of(problems.begin(), problems.end(), isContentProblem);
}

void checkTextsOfTheCatalogueReader(const MdibTexts& texts, const Zalt::Catalogue::Catalogue& catalogue) {
  for (const Zalt::Catalogue::CatalogueText& text : catalogue.texts) {
    const std::string& ref = text.text.ref().get().value();
    if (ref.empty()) {
      continue;
    }
    const auto use = std::find_if(texts.uses.begin(), texts.uses.end(), [&](const MdibTextUse& each) {
      return !each.isInline && each.line == text.line && each.column == text.column;
    });
    FUZZ_CHECK(use != texts.uses.end(),
               "no use at " << text.line << ':' << text.column << " of '" << ref << "'");
    FUZZ_CHECK(use->ref == ref, "the use of '" << ref << "' names '" << use->ref << "'");
    const auto& version = text.text.version();
    FUZZ_CHECK(use->version == (version ? std::optional<std::uint64_t>(version->get()) : std::nullopt),
               "the use of '" << ref << "' has another version");
    const auto& lang = text.text.lang();
    FUZZ_CHECK(use->lang == (lang ? std::optional<std::string>(lang->tag()) : std::nullopt),
               "the use of '" << ref << "' has another language");
  }
}

// The catalogue reader on the same bytes.
void checkAgainstTheCatalogueReader(const std::string& bytes, const std::optional<MdibTexts>& texts,
                                    const std::vector<Finding>& problems) {
  std::optional<Zalt::Catalogue::Catalogue> catalogue;
  std::vector<Finding> catalogueProblems;
  try {
    catalogue = Zalt::Catalogue::readCatalogue(bytes, "fuzz.xml");
  } catch (const CatalogueError& error) {
    catalogueProblems = error.problems();
  }
  const std::optional<bool> mdibWellFormed = wellFormed(problems);
  const std::optional<bool> catalogueWellFormed = wellFormed(catalogueProblems);
  if (mdibWellFormed && catalogueWellFormed && *mdibWellFormed != *catalogueWellFormed) {
    const std::vector<Finding>& other = *mdibWellFormed ? catalogueProblems : problems;
    FUZZ_CHECK(false, "well-formed for the "
                          << (*mdibWellFormed ? "MDIB" : "catalogue") << " reader alone; the other reports: "
                          << std::find_if_not(other.begin(), other.end(), isContentProblem)->message);
  }
  if (texts && catalogue) {
    checkTextsOfTheCatalogueReader(*texts, *catalogue);
  }
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::optional<MdibTexts> texts;
  std::vector<Finding> problems;
  try {
    texts = Zalt::Catalogue::readMdibTexts(bytes, "fuzz.xml");
    FUZZ_CHECK(texts->files == std::vector<std::string>{"fuzz.xml"}, texts->files.size() << " files");
    const std::int32_t lines = ZaltFuzz::numberOfLines(bytes);
    for (const MdibTextUse& use : texts->uses) {
      checkUse(use);
      ZaltFuzz::checkPlace(texts->location(use), "fuzz.xml", lines, size + 1, "use");
    }
    checkReferencesInDocumentOrder(*texts);
  } catch (const CatalogueError& error) {
    ZaltFuzz::checkFileProblems(error, "fuzz.xml", bytes);
    problems = error.problems();
  }
  checkAgainstTheCatalogueReader(bytes, texts, problems);
  return 0;
}
