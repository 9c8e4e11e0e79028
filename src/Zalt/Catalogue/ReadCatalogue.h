// Zalt::Catalogue::readCatalogue and readCatalogueFile: read the localized
// texts of an XML catalogue, in document order, ready for a device store.
//
// A text is every LocalizedText element of the participant namespace
// (http://standards.ieee.org/downloads/11073/11073-10207-2017/participant) and
// every Text element of a GetLocalizedTextResponse of the message namespace
// (http://standards.ieee.org/downloads/11073/11073-10207-2017/message), at any
// depth and under any prefix:
//
//   <pm:LocalizedText Ref="alarm.hr.high" Lang="en-US" Version="2" TextWidth="m">Heart rate
//   too high</pm:LocalizedText>
//
// Its attributes give the reference (Ref), the language (Lang), the version
// (Version, an unsigned 64-bit decimal) and the width (TextWidth: xs, s, m, l,
// xl or xxl). A missing attribute leaves the reference empty or the other
// parts absent, so that a device store rejects the text with its own message.
// The element's character data and CDATA sections are the text, whitespace
// and all; comments inside it are not part of it. Line ends in the file (CR LF,
// a lone CR) become LF, as in every XML document; "&#13;" stays a carriage
// return. Only the predefined entities and character references are decoded.
//
//   std::vector<CatalogueText> texts = readCatalogueFile("texts/de.xml");
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CatalogueText.h>

#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

// Reads the file at `path`; each text's location names the file as `path`.
// Throws CatalogueError if the file cannot be read, is not well-formed XML, or
// has a Version or TextWidth that no text can have; nothing is returned then.
ZALT_LTSCATALOGUE_EXPORT std::vector<CatalogueText> readCatalogueFile(const std::string& path);

// Reads a catalogue held in memory; locations and errors name `fileName`.
// Throws CatalogueError as readCatalogueFile does.
ZALT_LTSCATALOGUE_EXPORT std::vector<CatalogueText> readCatalogue(const std::string& content,
                                                                  const std::string& fileName);

}  // namespace Catalogue
}  // namespace Zalt
