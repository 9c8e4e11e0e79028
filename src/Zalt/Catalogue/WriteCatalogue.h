// Zalt::Catalogue::writeCatalogue: writes localized texts as a catalogue file
// that readCatalogue reads back as the same texts: UTF-8, one LocalizedText
// element of the participant namespace per text, in the order given, with the
// attributes Ref, Lang, Version and TextWidth where the text has them.
//
//   std::ofstream out("pseudo.xml", std::ios::binary);
//   out << writeCatalogue(texts);
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

// The catalogue file's bytes. Content and attributes are escaped so that
// reading them back gives the same characters, carriage returns and tabs
// included. Throws std::invalid_argument, naming the text's reference, for a
// text that holds a character that no XML file can carry (a C0 control other
// than tab, LF and CR, U+FFFE, U+FFFF), and for a reference or language that
// is not UTF-8, which the reader refuses. Content that is not UTF-8 is
// written as it is: it reads back as the same bytes, for a store to reject.
ZALT_LTSCATALOGUE_EXPORT std::string writeCatalogue(const std::vector<Tovra::Mdib::LocalizedText>& texts);

}  // namespace Catalogue
}  // namespace Zalt
