// Zalt::Localization::Device::LocalizedTextStore: the text store of a device
// (the provider of an MDIB). It takes MDIB texts in, validates them strictly,
// and answers which languages it holds and which text fits a display best.
//
// Stores are made by the factory and shared by pointer; the library keeps none.
//
//   auto store = LocalizedTextStore::createLocalizedTextStore();
//   store->add(catalogue);                 // throws Zalt::InternalConsistencyFailure on bad input
//   store->languages();                    // {de-DE, en-US}
//   store->text(statusBarReference, LanguageTag("de-DE"));
//
// Thread safety: add, addMany and languages serialise on one mutex. text takes
// no lock, so a caller must not let it overlap an add on the same store.
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/LtsExport.h>

#include <memory>
#include <vector>

namespace Zalt {
namespace Localization {
namespace Device {

class ZALT_LTS_EXPORT LocalizedTextStore {
public:
  // The interface has no state: copying it copies nothing.
  LocalizedTextStore(const LocalizedTextStore& other);
  LocalizedTextStore& operator=(const LocalizedTextStore& other);

  // Validates and files each text in order under the store's lock, then checks
  // that every reference offers the same languages in every version (also for
  // an empty vector). Throws Zalt::InternalConsistencyFailure for the first text
  // without language, version or reference, or with a new language tag not of
  // the form "ll-CC", and for inconsistent languages; std::out_of_range for
  // malformed UTF-8. Texts filed before a failure stay; the store stays usable.
  // The caller's texts are read, not moved from.
  virtual void add(std::vector<Tovra::Mdib::LocalizedText>&& texts) = 0;
  virtual void add(const std::vector<Tovra::Mdib::LocalizedText>& texts) = 0;

  // Every language of which a text was accepted, sorted, without duplicates. Locks.
  virtual std::vector<Tovra::Locale::LanguageTag> languages() const = 0;

  // The best-fitting text of the reference in `language`, or LocalizedText::empty().
  // Takes no lock: must not overlap an add on the same store.
  virtual LocalizedText text(const LocalizedTextReference& reference,
                             const Tovra::Locale::LanguageTag& language) const = 0;

  virtual ~LocalizedTextStore();

  // Hands the vector to the rvalue add; the lock is add's.
  void addMany(std::vector<Tovra::Mdib::LocalizedText> texts);

  // A new, empty store in one allocation. Its filter query, localizedTexts, is
  // reached through LocalizedTextStoreImpl.
  static std::shared_ptr<LocalizedTextStore> createLocalizedTextStore();

protected:
  LocalizedTextStore() = default;
};

}  // namespace Device
}  // namespace Localization
}  // namespace Zalt
