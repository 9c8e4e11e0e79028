// Zalt::Catalogue::readMdibTexts: the texts that a device's MDIB names by
// reference or gives inline, read from its XML document.
//
//   const Zalt::Catalogue::MdibTexts mdib = Zalt::Catalogue::readMdibTextsFile("mdib.xml");
//   for (const Zalt::Catalogue::MdibTextUse& use : mdib.uses) {
//     std::cout << mdib.location(use).line << ": " << use.ref << '\n';
//   }
//
// An MDIB document (a GetMdibResponse, an Mdib, or anything that holds MDIB
// content) is read by the same conforming parser as a catalogue, with the same
// refusals and file problems; a document whose elements of the participant and
// message namespaces are a catalogue's alone (LocalizedText, LocalizedTexts,
// GetLocalizedTextResponse and its Text), with at least one text, is a file
// problem too. A text use is every element of the participant or
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
//
// An MDS names the text catalogue that its texts come from in a
// ProductionSpecification of its own (not of a VMD or a channel) whose SpecType
// has Code 68008 in the default coding system (no CodingSystem, or the MDIB
// model's default one); its ProductionSpec holds the catalogue's identifier:
//
//   <pm:Mds Handle="mds0">
//     <pm:ProductionSpecification>
//       <pm:SpecType Code="68008"/>
//       <pm:ProductionSpec>urn:oid:1.3.6.1.4.1.1234.4.1.2.1</pm:ProductionSpec>
//     </pm:ProductionSpecification>
#pragma once

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/SourceLocation.h>

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

// The text catalogue that one MDS declares, at the start of its ProductionSpec
// element: the index of its file in MdibTexts::files, its line and column.
struct CatalogueIdentifier {
  // The ProductionSpec's characters, white space at either end left out.
  std::string value;
  // The Handle of the MDS that declares it, where the MDS has one.
  std::optional<std::string> mds;
  std::uint32_t file;
  std::int32_t line;
  std::int32_t column;
};

// The text uses of one or more MDIB documents, in document order.
struct ZALT_LTSCATALOGUE_EXPORT MdibTexts {
  // The files read, named as given ("<stdin>" for standard input).
  std::vector<std::string> files;
  std::vector<MdibTextUse> uses;
  // The catalogue identifiers that the MDSs declare, in document order.
  std::vector<CatalogueIdentifier> catalogueIds;

  // Moves the files, uses and identifiers of `other` behind these.
  void append(MdibTexts&& other);

  // Where `use`, one of `uses`, stands.
  SourceLocation location(const MdibTextUse& use) const;
  // Where `identifier`, one of `catalogueIds`, stands.
  SourceLocation location(const CatalogueIdentifier& identifier) const;
};

// Reads the files in order ("-" is standard input); reads every file before it
// throws CatalogueError with the problems of all that cannot be read or are
// not well-formed.
ZALT_LTSCATALOGUE_EXPORT MdibTexts readMdibTextsFiles(const std::vector<std::string>& paths);

// Reads one file; throws CatalogueError as readMdibTextsFiles does.
ZALT_LTSCATALOGUE_EXPORT MdibTexts readMdibTextsFile(const std::string& path);

// Reads a document held in memory, naming it `fileName`; throws CatalogueError.
ZALT_LTSCATALOGUE_EXPORT MdibTexts readMdibTexts(std::string_view content, const std::string& fileName);

}  // namespace Catalogue
}  // namespace Zalt
