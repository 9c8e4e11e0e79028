#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>

#include <Zalt/Localization/Private/Common/LocalizedTextStoreKeyView.h>

namespace Zalt {
namespace Localization {
namespace Impl {

// Delegates to the views' comparison, so that keys and the views that the
// store searches with can never order differently.
bool operator<(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKey& rhs) {
  return compare(viewOf(lhs), viewOf(rhs)) < 0;
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
