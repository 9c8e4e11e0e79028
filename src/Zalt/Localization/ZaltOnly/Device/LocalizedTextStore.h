// Zalt::Localization::Device::LocalizedTextStore: the text store of a device
// (the provider of an MDIB). It takes MDIB texts in, validates them strictly,
// and answers which languages it holds and which text fits a display best.
//
// Stores are made by the factory and shared by pointer; the library keeps none.
//
//   auto store = LocalizedTextStore::createLocalizedTextStore();
//   store->add(catalogue);                 // throws on bad input, see add
//   store->languages();                    // {de-DE, en-US}
//   store->text(statusBarReference, LanguageTag("de-DE"));
//
// The filter query, localizedTexts, is left off this interface on purpose: it
// is the provider's alone. Every store the factory makes is a
// LocalizedTextStoreImpl, which offers it:
//
//   auto& provider = static_cast<LocalizedTextStoreImpl&>(*store);
//   provider.localizedTexts(filter);
//
// Thread safety: add, addMany, languages and the filter query serialise on one
// mutex. text takes no lock, so a caller must not let it overlap an add on the
// same store; text calls may overlap each other and the other queries.
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
  // Memory and lock failures pass through as the standard library's exceptions.
  // Both forms only read the caller's texts: a vector passed as an rvalue keeps
  // its texts.
  virtual void add(std::vector<Tovra::Mdib::LocalizedText>&& texts) = 0;
  virtual void add(const std::vector<Tovra::Mdib::LocalizedText>& texts) = 0;

  // Every language of which a text was accepted, sorted, without duplicates.
  // Locks. Throws only what allocation and locking throw.
  virtual std::vector<Tovra::Locale::LanguageTag> languages() const = 0;

  // The best-fitting text of the reference in `language`, or LocalizedText::empty()
  // when none fits. Takes no lock: must not overlap an add on the same store.
  // Throws only what allocation throws.
  virtual LocalizedText text(const LocalizedTextReference& reference,
                             const Tovra::Locale::LanguageTag& language) const = 0;

  virtual ~LocalizedTextStore();

  // Hands the vector to the rvalue add; the lock is add's.
  void addMany(std::vector<Tovra::Mdib::LocalizedText> texts);

  // A new, empty LocalizedTextStoreImpl in one allocation.
  static std::shared_ptr<LocalizedTextStore> createLocalizedTextStore();

protected:
  LocalizedTextStore() = default;
};

}  // namespace Device
}  // namespace Localization
}  // namespace Zalt
