#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Errors/Throw.h>

namespace Zalt {
namespace Localization {
namespace Device {

LocalizedTextStoreImpl::LocalizedTextStoreImpl() = default;

LocalizedTextStoreImpl::~LocalizedTextStoreImpl() = default;

void LocalizedTextStoreImpl::add(std::vector<Tovra::Mdib::LocalizedText>&& texts) {
  const std::lock_guard<std::mutex> lock(mutex);
  startBatch();
  for (Tovra::Mdib::LocalizedText& text : texts) {
    addNoLock(std::move(text));
  }
  // addNoLock only reads its text, so the batch still names every reference it touched.
  checkConsistencyOfBatch(texts);
}

void LocalizedTextStoreImpl::add(const std::vector<Tovra::Mdib::LocalizedText>& texts) {
  const std::lock_guard<std::mutex> lock(mutex);
  startBatch();
  for (const Tovra::Mdib::LocalizedText& text : texts) {
    addNoLock(Tovra::Mdib::LocalizedText(text));
  }
  checkConsistencyOfBatch(texts);
}

std::vector<Tovra::Locale::LanguageTag> LocalizedTextStoreImpl::languages() const {
  const std::lock_guard<std::mutex> lock(mutex);
  return {knownLanguages.begin(), knownLanguages.end()};
}

// Unlocked by design: the render path must never wait for a catalogue load.
Localization::LocalizedText LocalizedTextStoreImpl::text(const LocalizedTextReference& reference,
                                                         const Tovra::Locale::LanguageTag& language) const {
  return Impl::LocalizedTextStore::text(reference, language);
}

std::vector<Tovra::Mdib::LocalizedText> LocalizedTextStoreImpl::localizedTexts(
    const LocalizedTextFilter& filter) const {
  const std::lock_guard<std::mutex> lock(mutex);
  return texts(filter);
}

// The text is only read; the core table keeps its own copy. A language is
// remembered only once its text has passed every check.
void LocalizedTextStoreImpl::addNoLock(Tovra::Mdib::LocalizedText&& text) {
  if (validate(text, knownLanguages)) {
    knownLanguages.insert(*text.lang());
  }
  insert(text);
}

// A language's form is checked only the first time it is met.
bool LocalizedTextStoreImpl::validate(const Tovra::Mdib::LocalizedText& text,
                                      const std::set<Tovra::Locale::LanguageTag>& knownLanguages) {
  if (!text.lang()) {
    ZALT_THROW(InternalConsistencyFailure, "Cannot add localized text without language");
  }
  if (!text.version()) {
    ZALT_THROW(InternalConsistencyFailure, "Cannot add localized text without version");
  }
  if (text.ref().get().empty()) {
    ZALT_THROW(InternalConsistencyFailure, "Cannot add localized text without reference");
  }
  const Tovra::Locale::LanguageTag& language = *text.lang();
  if (knownLanguages.find(language) != knownLanguages.end()) {
    return false;
  }
  if (!language.is2LetterLangAnd2LetterCountry()) {
    ZALT_THROW(
        InternalConsistencyFailure,
        "Invalid language tag (expected ll-CC (language + country), like 'en-US'), got: " << language.tag());
  }
  return true;
}

}  // namespace Device
}  // namespace Localization
}  // namespace Zalt
