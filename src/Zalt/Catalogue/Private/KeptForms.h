// Zalt::Catalogue::Private::keptForms: what a translator keeps as written in a
// text, each stretch as it is written, in the order of the text. The forms are
// the ones PseudoTranslation.h lists: markup and entities written as text,
// placeholders, escapes, and the syntax of message arguments, whose branches
// hold text to translate; '#' counts in the branches of plural and
// selectordinal arguments, where it stands for the number.
//
//   keptForms("<b>{n, plural, one {# item} other {# items}}</b> %1$s");
//   // {"<b>", "{n, plural, one {", "#", "} other {", "#", "}}", "</b>", "%1$s"}
//
// pseudoTranslation leaves these stretches alone and translates the rest. A
// translation keeps its source's forms when both texts have the same ones in
// any order, as translations may reorder placeholders:
//
//   const auto formsOf = [](std::string_view text) {
//     const std::vector<std::string_view> forms = keptForms(text);
//     return std::multiset<std::string_view>(forms.begin(), forms.end());
//   };
//   formsOf(source) == formsOf(translation);  // false where %1$s is dropped or {count} became {Anzahl}
#pragma once

#include <Zalt/Catalogue/CatalogueExport.h>

#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace Private {

// The stretches of `text` kept as written, as views into `text`, in the order
// of the text and without overlap. What only looks like a form (a < b,
// Fish & chips, {Press OK}, an argument whose braces do not close) is text.
ZALT_LTSCATALOGUE_EXPORT std::vector<std::string_view> keptForms(std::string_view text);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
