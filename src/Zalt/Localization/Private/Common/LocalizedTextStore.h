// Zalt::Localization::Impl::LocalizedTextStore: the ordered table of every
// localized text of a provider, filed by LocalizedTextStoreKey. It picks the
// best-fitting text for a display, lists texts by reference or by filter, and
// checks that every reference offers the same languages in every version.
//
// The store takes no lock and belongs to one thread at a time; the device
// store wraps it with its own mutex and validation.
//
//   LocalizedTextStore store;
//   store.insert(Tovra::Mdib::LocalizedText("Herz", LanguageTag("de-DE"), ref, VersionCounter(3),
//                                           LocalizedTextWidth::Medium));
//   store.checkConsistency();
//   store.text(LocalizedTextReference(ref, VersionCounter(3), LocalizedTextWidth::Large, 1u),
//              LanguageTag("de-DE"));  // Herz, Medium, one line
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Locale/Utf8.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKeyView.h>
#include <Zalt/LtsExport.h>

#include <boost/optional.hpp>

#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace Zalt {
namespace Localization {
namespace Impl {

class ZALT_LTS_EXPORT LocalizedTextStore {
public:
  LocalizedTextStore();
  LocalizedTextStore(const LocalizedTextStore& other);
  // Leaves `other` empty and usable. Not noexcept: the fresh table left behind may allocate.
  LocalizedTextStore(LocalizedTextStore&& other);  // NOLINT(performance-noexcept-move-constructor)
  LocalizedTextStore& operator=(const LocalizedTextStore& other);
  // Leaves `other` empty and usable; not noexcept for the same reason.
  LocalizedTextStore& operator=(LocalizedTextStore&& other);  // NOLINT(performance-noexcept-move-constructor)
  ~LocalizedTextStore();

  void clear();

  // Files a copy of `text` under its key; the first text filed under a key
  // stays. A text without reference, language or version is ignored silently.
  // Throws std::out_of_range for malformed UTF-8, even for an ignored text.
  void insert(const Tovra::Mdib::LocalizedText& text);

  // The widest text of the reference's version that fits the reference's
  // width and number of lines, or LocalizedText::empty() if none fits.
  LocalizedText text(const LocalizedTextReference& reference,
                     const Tovra::Locale::LanguageTag& language) const;

  // Every text of `ref` in every language, of `version` only if given, in key order.
  std::vector<LocalizedText> texts(const Tovra::Mdib::LocalizedTextRef& ref,
                                   const boost::optional<Tovra::Mdib::VersionCounter>& version) const;

  // The texts that `filter` selects, in key order (by number of lines when the
  // filter asks for numbers of lines but not for widths). Without a version in
  // the filter, each reference answers in the newest version of its first
  // wanted language.
  std::vector<Tovra::Mdib::LocalizedText> texts(const LocalizedTextFilter& filter) const;

  // Throws Zalt::InternalConsistencyFailure naming the first reference and
  // version whose languages differ from those of the first reference's lowest
  // version.
  void checkConsistency() const;

protected:
  // For a writer that checks the table after each batch of insertions, as the
  // device store does: call startBatch, insert, then checkConsistencyOfBatch
  // with every text of the batch. The check throws exactly what
  // checkConsistency() would throw, but looks only at the references of the
  // batch, unless the previous batch ended before its check.
  void startBatch();
  void checkConsistencyOfBatch(const std::vector<Tovra::Mdib::LocalizedText>& batch);

private:
  class FilterQuery;
  using Table = std::map<LocalizedTextStoreKey, Tovra::Locale::Utf8, LocalizedTextStoreKeyOrder>;

  // What the last check of a batch found; its views refer to the table's keys.
  // Copies, moves and clear() discard it, so the next batch surveys the table.
  struct ConsistencyRecord {
    bool current = false;
    bool currentAtBatchStart = false;
    std::string_view firstRef;
    // The tags of the first reference's lowest version, ascending.
    std::vector<std::string_view> expectedLanguages;
    std::set<std::string_view> inconsistentRefs;
  };

  void surveyConsistency();
  bool updateExpectedLanguages(const std::vector<std::string_view>& touchedRefs);
  // The first entry of `ref`, which must be in the table.
  Table::const_iterator firstEntryOf(std::string_view ref) const;
  void reclassify(std::string_view ref);
  // Whether every version of the reference that starts at `first` has the
  // expected languages, and where the reference ends.
  std::pair<bool, Table::const_iterator> classify(Table::const_iterator first) const;
  std::vector<std::string_view> expectedLanguagesNow() const;
  // Runs checkConsistency's walk over the first reference and `ref` only; the
  // table must not be empty.
  void checkConsistencyOfFirstAnd(std::string_view ref) const;

  // Each returns the table's end when nothing fits.
  Table::const_iterator textIt(const LocalizedTextReference& reference,
                               const Tovra::Locale::LanguageTag& language) const;
  Table::const_iterator textItByTextWidth(const LocalizedTextReference& reference,
                                          const Tovra::Locale::LanguageTag& language) const;
  Table::const_iterator textItByTextWidthAndNumberOfLines(const LocalizedTextReference& reference,
                                                          const Tovra::Locale::LanguageTag& language) const;

  Table m_table;
  ConsistencyRecord m_consistency;
};

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
