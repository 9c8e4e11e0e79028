// Zalt::Catalogue::Impl::reportForbiddenCharacters: finds the characters that
// XML forbids wherever they stand (in text, attribute values, comments or
// CDATA alike): the C0 controls but tab, LF and CR, and U+FFFE and U+FFFF.
// Surrogates cannot occur here: in UTF-8 they are malformed sequences, and an
// unpaired one in UTF-16 is refused while converting.
//
//   if (!reportForbiddenCharacters(document, problems)) { ...no parse... }
//   if (startsForbiddenCharacter(text, index)) { ...cannot be written... }
#pragma once

#include <Zalt/Catalogue/Private/FileProblems.h>

#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Impl {

// Whether a forbidden character starts at byte `at` of the UTF-8 `text`.
bool startsForbiddenCharacter(std::string_view text, std::size_t at);

// Adds a problem for each forbidden character. Returns false if one of them
// is a NUL, past which an in-place parser sees nothing.
bool reportForbiddenCharacters(std::string_view document, FileProblems& problems);

}  // namespace Impl
}  // namespace Catalogue
}  // namespace Zalt
