// Zalt::Localization::Device::LocalizedTextStoreImpl: the device store behind
// LocalizedTextStore::createLocalizedTextStore(). Besides the interface it
// offers the filter query, localizedTexts, which answers a peer's request:
//
//   auto store = LocalizedTextStore::createLocalizedTextStore();
//   auto& impl = static_cast<LocalizedTextStoreImpl&>(*store);
//   impl.localizedTexts(filter);
//
// It owns the core text table (a private base), one mutex and the set of
// accepted languages. Neither copyable nor movable; share it by pointer.
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>
#include <Zalt/LtsExport.h>

#include <mutex>
#include <set>
#include <vector>

namespace Zalt {
namespace Localization {
namespace Device {

class ZALT_LTS_EXPORT LocalizedTextStoreImpl : public LocalizedTextStore, private Impl::LocalizedTextStore {
public:
  LocalizedTextStoreImpl();
  ~LocalizedTextStoreImpl() override;

  LocalizedTextStoreImpl(const LocalizedTextStoreImpl&) = delete;
  LocalizedTextStoreImpl& operator=(const LocalizedTextStoreImpl&) = delete;
  LocalizedTextStoreImpl(LocalizedTextStoreImpl&&) = delete;
  LocalizedTextStoreImpl& operator=(LocalizedTextStoreImpl&&) = delete;

  void add(std::vector<Tovra::Mdib::LocalizedText>&& texts) override;
  void add(const std::vector<Tovra::Mdib::LocalizedText>& texts) override;
  std::vector<Tovra::Locale::LanguageTag> languages() const override;
  Localization::LocalizedText text(const LocalizedTextReference& reference,
                                   const Tovra::Locale::LanguageTag& language) const override;

  // The MDIB texts that `filter` selects, in table order. Locks, so it sees
  // the store before or after a whole add, never within one.
  std::vector<Tovra::Mdib::LocalizedText> localizedTexts(const LocalizedTextFilter& filter) const;

  // add's checks of one text, for tools that must learn a store's verdict on
  // many texts without filing them: throws InternalConsistencyFailure with
  // add's message where add would reject `text`, given that a store has
  // accepted `knownLanguages`. Returns true if the text's language is new to
  // them, which add then remembers. The text's content is not looked at:
  // malformed UTF-8 surfaces only when the text is filed (numberOfLineBreaks).
  static bool validate(const Tovra::Mdib::LocalizedText& text,
                       const std::set<Tovra::Locale::LanguageTag>& knownLanguages);

private:
  // Validates and files one text; the caller holds `mutex`, and an accepted
  // language joins `knownLanguages`.
  void addNoLock(Tovra::Mdib::LocalizedText&& text);

  // The contracts above refer to these two by name, hence no m_ prefix.
  mutable std::mutex mutex;                             // NOLINT(readability-identifier-naming)
  std::set<Tovra::Locale::LanguageTag> knownLanguages;  // NOLINT(readability-identifier-naming)
};

}  // namespace Device
}  // namespace Localization
}  // namespace Zalt
