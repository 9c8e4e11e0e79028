#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>

namespace Zalt {
namespace Localization {
namespace Impl {

bool operator<(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKey& rhs) {
  // One three-way comparison per text field, since the map compares keys at
  // every step of a descent.
  if (const int byRef = lhs.ref.get().value().compare(rhs.ref.get().value()); byRef != 0) {
    return byRef < 0;
  }
  if (const int byTag = lhs.languageTag.tag().compare(rhs.languageTag.tag()); byTag != 0) {
    return byTag < 0;
  }
  if (lhs.version != rhs.version) {
    return rhs.version < lhs.version;  // newest first
  }
  if (lhs.textWidth != rhs.textWidth) {
    return lhs.textWidth < rhs.textWidth;  // boost::optional puts an absent width first
  }
  return lhs.numberOfLines < rhs.numberOfLines;
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
