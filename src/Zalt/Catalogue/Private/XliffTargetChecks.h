// Zalt::Catalogue::Private XLIFF target checks: what the import asks of a
// translation before a device may show it, apart from the XML around it.
//
//   Private::isBlank(" \u3000");  // true: nothing a user could read
//   Private::keptFormsChange("%1$s of {count}", "{Anzahl} von");  // "lacks '%1$s' and adds '{Anzahl}'"
//   Private::unreviewedBecause("translated", "mt-suggestion", true);  // a machine translation
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {

// Whether `text` is empty or holds only white space: XML's, and every
// character of the Unicode space, line and paragraph separator categories.
// Bytes that are not UTF-8 are not white space.
bool isBlank(std::string_view text);

// How `translation` changes the kept forms (KeptForms.h) of `source`: "lacks
// 'A', 'B'", "adds 'C'" or "lacks 'A' and adds 'C'"; none where it keeps them
// all, in any order. The branches of plural and select arguments follow the
// categories of each language, so of such an argument only its name and type
// count, and where either text has one, each other form counts once however
// often the branches repeat it.
std::optional<std::string> keptFormsChange(std::string_view source, std::string_view translation);

// How the segments of a target, by their mids, differ from its source's: "has
// the segments '1' where its source has '1', '2'"; none where each source
// segment is translated once, in any order, and where neither is segmented.
std::optional<std::string> segmentsChange(const std::vector<std::string>& source,
                                          const std::vector<std::string>& target);

// Why no one has signed a translation off, by its target's state and
// state-qualifier and its unit's approval: a state that asks for review or
// adaptation, a machine translation, or approved="no"; none where nothing does.
std::optional<std::string> unreviewedBecause(std::string_view state, std::string_view stateQualifier,
                                             bool approved);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
