// Tovra::Mdib::LocalizedTextRef: names one text of the MDIB, independently of
// language and version. Ordered byte-wise on its UTF-8 bytes.
//
//   Tovra::Mdib::LocalizedTextRef ref(Tovra::Locale::Utf8("hr"));
//   ref.get().value();  // "hr"
#pragma once

#include <Tovra/Locale/Utf8.h>
#include <Tovra/Utils/StrongTypedef.h>

namespace Tovra {
namespace Mdib {

struct LocalizedTextRefTag {};

using LocalizedTextRef =
    StrongTypedef<Locale::Utf8, LocalizedTextRefTag, Skill::TotallyOrdered, Skill::Streamable>;

}  // namespace Mdib
}  // namespace Tovra
