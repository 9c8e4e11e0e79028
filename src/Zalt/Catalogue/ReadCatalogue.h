// Zalt::Catalogue reading: the localized texts of XML catalogue files, in
// document order, ready for a device store, with every problem of a file at its
// line and column. A device loads its store in three lines; files that yield no
// texts throw CatalogueError with all of their problems:
//
//   const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogueFiles({"de.xml", "en.xml"});
//   auto store = Zalt::Localization::Device::LocalizedTextStore::createLocalizedTextStore();
//   store->add(Zalt::Catalogue::mdibTexts(catalogue.texts));
//
// A catalogue file is XML 1.0 with namespaces, read by a conforming streaming
// parser, in UTF-8 (with or without a byte-order mark), UTF-16 (with a
// byte-order mark), ISO-8859-1 or US-ASCII. Its texts are every LocalizedText
// element of the participant namespace and every Text child of a
// GetLocalizedTextResponse of the message namespace, at any depth and under any
// prefix:
//
//   <pm:LocalizedText Ref="alarm.hr.high" Lang="en-US" Version="2" TextWidth="m">Heart rate
//   too high</pm:LocalizedText>
//
// The unprefixed attributes give the reference (Ref), the language (Lang), the
// version (Version, an unsigned 64-bit decimal) and the width (TextWidth: xs,
// s, m, l, xl or xxl); a missing one leaves the reference empty or the part
// absent, for a device store to reject. The element's characters, CDATA
// sections included, are the text, with XML's line ends (CR LF and a lone CR
// become LF; "&#13;" stays a carriage return).
//
// A file that is not well-formed (malformed UTF-8 included), declares another
// encoding or XML 1.1, or has a document type declaration stops at that
// problem; nothing is ever expanded or fetched. An element inside a text and a
// Version or TextWidth that no text can have are problems too, but reading goes
// on to report all of them, at most 1,000 per file and then how many more.
// Lines are counted at line feeds; columns count characters. Reading streams a
// file through the parser and costs time linear in it at any depth.
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {

// Reads the files in order as one catalogue; "-" is standard input. Reads
// every file before it throws CatalogueError with the problems of all that
// yield no texts (a file that cannot be read: "PATH: cannot be read: REASON").
ZALT_LTSCATALOGUE_EXPORT Catalogue readCatalogueFiles(const std::vector<std::string>& paths);

// Reads one file; throws CatalogueError as readCatalogueFiles does.
ZALT_LTSCATALOGUE_EXPORT Catalogue readCatalogueFile(const std::string& path);

// Reads a catalogue held in memory, naming it `fileName`; throws CatalogueError.
ZALT_LTSCATALOGUE_EXPORT Catalogue readCatalogue(std::string_view content, const std::string& fileName);

}  // namespace Catalogue
}  // namespace Zalt
