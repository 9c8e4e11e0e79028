// Tovra::Mdib::LocalizedTextWidth: the width class of a localized text, from
// extra small to extra extra large. Widths order by their numeric value, so a
// smaller value is a narrower text. Other values can occur in received data;
// they are kept and print as "[Unknown LocalizedTextWidth]".
#pragma once

#include <Tovra/Mdib/MdibExport.h>

#include <cstdint>
#include <iosfwd>

namespace Tovra {
namespace Format {
class Stream;
}

namespace Mdib {

enum class LocalizedTextWidth : std::int32_t {
  ExtraSmall = 0,
  Small = 1,
  Medium = 2,
  Large = 3,
  ExtraLarge = 4,
  ExtraExtraLarge = 5,
};

// The printed name ("Medium"), or "[Unknown LocalizedTextWidth]" for any other value.
TOVRA_MDIB_EXPORT const char* name(LocalizedTextWidth width);

// Both write name(width).
TOVRA_MDIB_EXPORT std::ostream& operator<<(std::ostream& out, LocalizedTextWidth width);
TOVRA_MDIB_EXPORT Format::Stream& operator<<(Format::Stream& out, LocalizedTextWidth width);

}  // namespace Mdib
}  // namespace Tovra
