// Zalt::Catalogue::Catalogue: the localized texts read from catalogue files,
// each with the file, line and column of its element. ReadCatalogue.h makes
// catalogues, CheckCatalogue.h checks them and reports Findings.
//
//   const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFile("de.xml");
//   for (const Zalt::Catalogue::CatalogueText& text : catalogue.texts) {
//     const Zalt::Catalogue::SourceLocation where = catalogue.location(text);
//     std::cout << where.file << ':' << where.line << ": " << text.text.ref() << '\n';
//   }
//   store->add(Zalt::Catalogue::mdibTexts(catalogue.texts));
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

// One text as the MDIB value that a device store takes, with the start of its
// element: the index of its file in Catalogue::files, its line and column.
struct CatalogueText {
  Tovra::Mdib::LocalizedText text;
  std::uint32_t file;
  std::int32_t line;
  std::int32_t column;
};

// An element named like a text (LocalizedText, or Text) that stands in another
// namespace or in none: the likely reason why a catalogue holds no text.
struct MisplacedElement {
  SourceLocation location;
  // "LocalizedText" or "Text".
  std::string name;
  // The element's namespace; empty for none.
  std::string xmlNamespace;
};

// What one file read as a catalogue holds: its root element and how many
// texts it yielded, which tells an XLIFF file or an MDIB given in its place.
struct CatalogueFileContent {
  // The index of the file in Catalogue::files.
  std::uint32_t file;
  // The root element's local name and namespace (empty for none).
  std::string rootName;
  std::string rootNamespace;
  std::size_t texts;
};

// The texts of one or more files, in the order read.
struct ZALT_LTSCATALOGUE_EXPORT Catalogue {
  // The files read, named as given ("<stdin>" for standard input).
  std::vector<std::string> files;
  std::vector<CatalogueText> texts;
  // The first of each name and namespace per file.
  std::vector<MisplacedElement> misplaced;
  // One per file read by ReadCatalogue.h, in file order; none for texts made otherwise.
  std::vector<CatalogueFileContent> contents = {};

  // Moves the files, texts, misplaced elements and contents of `other` behind these.
  void append(Catalogue&& other);

  // Where `text`, one of `texts`, stands.
  SourceLocation location(const CatalogueText& text) const;
};

// The file name by which problems and texts name standard input ("-").
inline constexpr const char* standardInputName = "<stdin>";

// The texts without their places: what a device store's add takes. The
// rvalue form moves them out.
ZALT_LTSCATALOGUE_EXPORT std::vector<Tovra::Mdib::LocalizedText> mdibTexts(
    const std::vector<CatalogueText>& texts);
ZALT_LTSCATALOGUE_EXPORT std::vector<Tovra::Mdib::LocalizedText> mdibTexts(
    std::vector<CatalogueText>&& texts);

}  // namespace Catalogue
}  // namespace Zalt
