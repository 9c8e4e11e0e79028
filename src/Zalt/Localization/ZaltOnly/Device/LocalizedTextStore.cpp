#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <utility>

namespace Zalt {
namespace Localization {
namespace Device {

LocalizedTextStore::LocalizedTextStore(const LocalizedTextStore& /*other*/) = default;

LocalizedTextStore& LocalizedTextStore::operator=(const LocalizedTextStore& /*other*/) = default;

LocalizedTextStore::~LocalizedTextStore() = default;

void LocalizedTextStore::addMany(std::vector<Tovra::Mdib::LocalizedText> texts) { add(std::move(texts)); }

std::shared_ptr<LocalizedTextStore> LocalizedTextStore::createLocalizedTextStore() {
  return std::make_shared<LocalizedTextStoreImpl>();
}

}  // namespace Device
}  // namespace Localization
}  // namespace Zalt
