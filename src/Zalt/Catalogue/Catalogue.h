// Zalt::Catalogue::Catalogue: the localized texts read from catalogue files,
// each with the file, line and column of its element, and the vocabulary in
// which the catalogue library reports problems: Finding, SourceLocation and
// CatalogueError. ReadCatalogue.h makes catalogues, CheckCatalogue.h checks them.
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
#include <Zalt/Errors/Exception.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {

// The namespaces of the texts: participant LocalizedText, message Text.
inline constexpr std::string_view participantNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/participant";
inline constexpr std::string_view messageNamespace =
    "http://standards.ieee.org/downloads/11073/11073-10207-2017/message";

// Where something stands in a file: its name as given, and the line and the
// column, both counted from 1; line 0 where no line applies (a file that
// cannot be read).
struct SourceLocation {
  std::string file;
  std::int32_t line;
  std::int32_t column;
};

ZALT_LTSCATALOGUE_EXPORT bool operator==(const SourceLocation& lhs, const SourceLocation& rhs);
ZALT_LTSCATALOGUE_EXPORT bool operator!=(const SourceLocation& lhs, const SourceLocation& rhs);

// One problem of a catalogue, at the place in a file that causes it.
struct Finding {
  enum class Kind {
    // The file cannot be read or is not a catalogue file; it yields no texts.
    File,
    // The store throws for this text; the message is the store's.
    Rejected,
    // The store keeps an earlier text under the same key and drops this one.
    Dropped,
    // A reference in one version lacks languages that the others have, or
    // has languages that they lack.
    Languages,
    // The store's language check fails for the whole catalogue; the message
    // is the store's.
    Inconsistent,
    // Nothing to work on: no localized text in the whole catalogue, no text
    // named by an MDIB, or no translated unit in XLIFF files.
    Empty,
    // The text's declared width is narrower than its widest line needs, or
    // the text holds a control character that no display can place.
    Width,
    // A text that an MDIB names lacks languages of the catalogue in the
    // version named, or the catalogue has no text for its reference.
    Missing,
    // The catalogue holds the reference, but not in the version named.
    Version,
    // A language that the texts cannot have where it stands: a text that an
    // MDIB names has a language that the catalogue lacks, or an XLIFF file's
    // target-language is missing or not a store's tag (ll-CC).
    Language,
    // A reference of the catalogue that the MDIB never names.
    Unused,
    // An MDIB gives a text inline, where no catalogue can localize it.
    Inline,
    // An XLIFF unit without a translation: no target, an empty one, or one
    // whose state is new or needs-translation.
    Untranslated,
    // An XLIFF unit whose id is missing or is not one that writeXliff writes.
    Id,
    // An XLIFF translation that holds an element, where a text holds
    // characters only.
    Markup,
    // An XLIFF translation with another number of lines than its unit's
    // text: the store would file it under another key.
    Lines,
  };

  Kind kind;
  SourceLocation location;
  std::string message;
};

// The kind's name in JSON: "file", "rejected", "dropped", "languages",
// "inconsistent", "empty", "width", "missing", "version", "language",
// "unused", "inline", "untranslated", "id", "markup" or "lines".
ZALT_LTSCATALOGUE_EXPORT const char* name(Finding::Kind kind);

// "FILE:LINE:COLUMN: message", or "FILE: message" where no line applies.
ZALT_LTSCATALOGUE_EXPORT std::string placed(const Finding& finding);

ZALT_LTSCATALOGUE_EXPORT bool operator==(const Finding& lhs, const Finding& rhs);
ZALT_LTSCATALOGUE_EXPORT bool operator!=(const Finding& lhs, const Finding& rhs);

// Files that yield no texts. Like every Zalt::Exception, file() and line()
// name the library's throw statement; the places in the catalogue are the
// problems, findings of kind File in the order of the files and, within a
// file, of their places. what() is the first of them, followed by
// " (and N more problems)" where there are more.
class ZALT_LTSCATALOGUE_EXPORT CatalogueError : public Zalt::Exception {
public:
  // `problems` holds at least one finding.
  CatalogueError(std::vector<Finding> problems, const char* file, std::int32_t line);

  const std::vector<Finding>& problems() const { return *m_problems; }

private:
  // Shared so that copying an exception never allocates.
  std::shared_ptr<const std::vector<Finding>> m_problems;
};

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

// The texts of one or more files, in the order read.
struct ZALT_LTSCATALOGUE_EXPORT Catalogue {
  // The files read, named as given ("<stdin>" for standard input).
  std::vector<std::string> files;
  std::vector<CatalogueText> texts;
  // The first of each name and namespace per file.
  std::vector<MisplacedElement> misplaced;

  // Moves the files, texts and misplaced elements of `other` behind these.
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
