#include <Tovra/Mdib/LocalizedTextWidth.h>

#include <Tovra/Format/Stream.h>

#include <ostream>

namespace Tovra {
namespace Mdib {

const char* name(LocalizedTextWidth width) {
  switch (width) {
    case LocalizedTextWidth::ExtraSmall:
      return "ExtraSmall";
    case LocalizedTextWidth::Small:
      return "Small";
    case LocalizedTextWidth::Medium:
      return "Medium";
    case LocalizedTextWidth::Large:
      return "Large";
    case LocalizedTextWidth::ExtraLarge:
      return "ExtraLarge";
    case LocalizedTextWidth::ExtraExtraLarge:
      return "ExtraExtraLarge";
  }
  return "[Unknown LocalizedTextWidth]";
}

std::ostream& operator<<(std::ostream& out, LocalizedTextWidth width) { return out << name(width); }

Format::Stream& operator<<(Format::Stream& out, LocalizedTextWidth width) { return out << name(width); }

}  // namespace Mdib
}  // namespace Tovra
