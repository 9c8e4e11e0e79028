// Zalt::Catalogue::readCatalogue and readCatalogueFile: read the localized
// texts of an XML catalogue, in document order, ready for a device store.
//
// A text is every LocalizedText element of the participant namespace
// (http://standards.ieee.org/downloads/11073/11073-10207-2017/participant) and
// every Text child of a GetLocalizedTextResponse of the message namespace
// (http://standards.ieee.org/downloads/11073/11073-10207-2017/message), at any
// depth and under any prefix:
//
//   <pm:LocalizedText Ref="alarm.hr.high" Lang="en-US" Version="2" TextWidth="m">Heart rate
//   too high</pm:LocalizedText>
//
// Its unprefixed attributes give the reference (Ref), the language (Lang), the
// version (Version, an unsigned 64-bit decimal) and the width (TextWidth: xs,
// s, m, l, xl or xxl). A missing attribute leaves the reference empty or the
// other parts absent, so that a device store rejects the text with its own
// message. The element's character data and CDATA sections are the text,
// whitespace and all, with XML's line-end handling (CR LF and a lone CR become
// LF; "&#13;" stays a carriage return); comments inside it are not part of it.
//
// The file is read strictly as XML 1.0 with namespaces, and a text is exactly
// what the file holds or the file yields nothing: two attributes of one name,
// an entity other than the five predefined ones, a character or character
// reference outside XML's characters, a prefix without a declaration, a
// document type declaration, a Version or TextWidth that no text can have, and
// a Ref or Lang that is not UTF-8 are problems of the file, reported together
// at their lines and columns. Nothing is expanded or fetched. Files come in
// UTF-8 (with or without a byte-order mark), UTF-16 with a byte-order mark, or
// a declared ISO-8859-1; the texts are UTF-8 whatever the file's encoding.
// Malformed UTF-8 in a text's content is left for the store to reject.
//
// Reading takes time linear in the file at any depth of nesting.
//
//   CatalogueTexts catalogue = readCatalogueFile("texts/de.xml");
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CatalogueTexts.h>

#include <string>

namespace Zalt {
namespace Catalogue {

// Reads the file at `path`; locations and problems name the file as `path`.
// Throws CatalogueError with every problem of the file (or the one that it
// cannot be read); nothing is returned then.
ZALT_LTSCATALOGUE_EXPORT CatalogueTexts readCatalogueFile(const std::string& path);

// Reads a catalogue held in memory; locations and problems name `fileName`.
// The content is parsed where it lies, so hand it over with std::move where
// it is not needed afterwards. Throws CatalogueError as readCatalogueFile does.
ZALT_LTSCATALOGUE_EXPORT CatalogueTexts readCatalogue(std::string content, const std::string& fileName);

}  // namespace Catalogue
}  // namespace Zalt
