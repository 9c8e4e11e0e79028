// Zalt::Catalogue::writeCatalogue: a catalogue file from texts, which
// readCatalogue reads back as the same texts.
//
//   const std::vector<Tovra::Mdib::LocalizedText> texts = {Tovra::Mdib::LocalizedText(
//       Tovra::Locale::Utf8("Alarm\nsilenced"), Tovra::Locale::LanguageTag("en-US"),
//       Tovra::Mdib::LocalizedTextRef(Tovra::Locale::Utf8("alarm.silenced")), Tovra::Mdib::VersionCounter(1),
//       Tovra::Mdib::LocalizedTextWidth::ExtraSmall)};
//   const std::string file = Zalt::Catalogue::writeCatalogue(texts);
#pragma once

#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <string>
#include <vector>

namespace Zalt {
namespace Catalogue {

// A catalogue file's bytes: UTF-8, one LocalizedText element of the participant
// namespace per text, in the order given, with Ref, Lang, Version and TextWidth
// where the text has them, escaped so that reading it back gives the same
// texts, carriage returns and tabs included. Throws std::invalid_argument,
// naming the text's reference, for a text, reference or language that is not
// UTF-8 or holds a character that no XML file can carry (a C0 control other
// than tab, LF and CR, U+FFFE, U+FFFF).
ZALT_LTSCATALOGUE_EXPORT std::string writeCatalogue(const std::vector<Tovra::Mdib::LocalizedText>& texts);

}  // namespace Catalogue
}  // namespace Zalt
