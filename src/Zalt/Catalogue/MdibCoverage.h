// Zalt::Catalogue MDIB coverage: the texts that a device's MDIB names by
// reference, read from its XML document, and whether a catalogue holds each of
// them in the version and the languages the device will ask for.
//
//   const Zalt::Catalogue::MdibTexts mdib = Zalt::Catalogue::readMdibTextsFile("mdib.xml");
//   const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile("texts.xml");
//   const Zalt::Catalogue::CoverageCheck coverage =
//       Zalt::Catalogue::checkCoverage(mdib, catalogue, Zalt::Catalogue::checkCatalogue(catalogue));
//   for (const Zalt::Catalogue::Finding& finding : coverage.findings) {
//     std::cerr << Zalt::Catalogue::placed(finding) << '\n';
//   }
//
// An MDIB document (a GetMdibResponse, an Mdib, or anything that holds MDIB
// content) is read by the same conforming parser as a catalogue, with the same
// refusals and file problems. A text use is every element of the participant or
// the message namespace, at any depth and under any prefix, that carries an
// unprefixed Ref attribute, with its Version (an unsigned 64-bit decimal; any
// other is a file problem) and Lang if given:
//
//   <pm:Type Code="149530"><pm:ConceptDescription Ref="label.pulse" Lang="en-US"/></pm:Type>
//
// An element of those namespaces named like a user of the LocalizedText type
// (LocalizedText, CodingSystemName, ConceptDescription, IdentifierName, Label,
// Documentation, Manufacturer, ModelName, Description, Text, ErrorInfo or
// InvocationErrorMessage) without a Ref but with characters other than white
// space is a text given inline, which no catalogue can localize.
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CheckCatalogue.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {

// One text of an MDIB, named by reference or given inline, at the start of its
// element: the index of its file in MdibTexts::files, its line and column.
struct MdibTextUse {
  // Whether the text is given inline rather than named by `ref`.
  bool isInline;
  // The Ref attribute's value; empty for an inline text.
  std::string ref;
  std::optional<std::uint64_t> version;
  std::optional<std::string> lang;
  // The element's local name ("Label", say).
  std::string element;
  // An inline text's characters; empty for a reference.
  std::string text;
  std::uint32_t file;
  std::int32_t line;
  std::int32_t column;
};

// The text uses of one or more MDIB documents, in document order.
struct ZALT_LTSCATALOGUE_EXPORT MdibTexts {
  // The files read, named as given ("<stdin>" for standard input).
  std::vector<std::string> files;
  std::vector<MdibTextUse> uses;

  // Moves the files and uses of `other` behind these.
  void append(MdibTexts&& other);

  // Where `use`, one of `uses`, stands.
  SourceLocation location(const MdibTextUse& use) const;
};

// Reads the files in order ("-" is standard input); reads every file before it
// throws CatalogueError with the problems of all that cannot be read or are
// not well-formed.
ZALT_LTSCATALOGUE_EXPORT MdibTexts readMdibTextsFiles(const std::vector<std::string>& paths);

// Reads one file; throws CatalogueError as readMdibTextsFiles does.
ZALT_LTSCATALOGUE_EXPORT MdibTexts readMdibTextsFile(const std::string& path);

// Reads a document held in memory, naming it `fileName`; throws CatalogueError.
ZALT_LTSCATALOGUE_EXPORT MdibTexts readMdibTexts(std::string_view content, const std::string& fileName);

struct CoverageCheck {
  // Empty where the MDIB names no text; the findings of the uses in their
  // order (Missing, Version, Language and Inline), then the Unused ones in catalogue order.
  std::vector<Finding> findings;
  // The uses that name a text by reference.
  std::size_t referencesNamed = 0;
  // Those of them that the catalogue holds in their version in every language it holds.
  std::size_t covered = 0;
};

// Checks the uses of `mdib` against the texts of `catalogue` that a store keeps
// by `check` of it; the languages of the catalogue are those of its kept texts.
//   - Missing: a reference in its version (without a Version, the latest one
//     the catalogue holds for it) lacks some of those languages, once per
//     reference and version, or the catalogue has no text for it at all;
//   - Version: the catalogue holds the reference, but not in the version named;
//   - Language: a use's Lang is not one of the catalogue's languages;
//   - Unused: a reference of the catalogue that no use names, at its first
//     kept text; left out with `allowUnused`;
//   - Inline: each text given inline;
//   - Empty: the MDIB names no text at all, by reference or inline.
// Sorts the kept texts once and looks each use up in them: the cost grows as
// n log n in the kept texts and as log n per use.
ZALT_LTSCATALOGUE_EXPORT CoverageCheck checkCoverage(const MdibTexts& mdib, const Catalogue& catalogue,
                                                     const CatalogueCheck& check, bool allowUnused = false);

}  // namespace Catalogue
}  // namespace Zalt
