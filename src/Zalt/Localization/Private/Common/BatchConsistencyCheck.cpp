// The language consistency check after a batch of insertions, at the cost of
// what the batch touched.
//
// The check of the whole table passes when every version of every reference
// has the languages of the first reference's lowest version (the expected
// languages), and otherwise names the first reference, in key order, that
// does not. The record keeps, from one batch to the next, the expected
// languages and the set of references that do not have them. A batch changes
// only the references it names, so only those are classified again; the
// first reference of the set is then the one the whole check would name, and
// the walk over the first reference and that one throws the same exception.
// The record is rebuilt from the whole table when the expected languages
// change or when the previous batch ended before its check, since the texts
// it filed are then unknown.
#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace Zalt {
namespace Localization {
namespace Impl {
namespace {

std::string_view refOf(const LocalizedTextStoreKey& key) { return key.ref.get().value(); }

// The batch's references, ascending and each once. Texts usually come
// reference by reference, so dropping neighbours first leaves little to sort.
std::vector<std::string_view> referencesOf(const std::vector<Tovra::Mdib::LocalizedText>& batch) {
  std::vector<std::string_view> refs;
  refs.reserve(batch.size());
  for (const Tovra::Mdib::LocalizedText& text : batch) {
    if (refs.empty() || refs.back() != text.ref().get().value()) {
      refs.emplace_back(text.ref().get().value());
    }
  }
  std::sort(refs.begin(), refs.end());
  refs.erase(std::unique(refs.begin(), refs.end()), refs.end());
  return refs;
}

}  // namespace

void LocalizedTextStore::startBatch() {
  m_consistency.currentAtBatchStart = std::exchange(m_consistency.current, false);
}

void LocalizedTextStore::checkConsistencyOfBatch(const std::vector<Tovra::Mdib::LocalizedText>& batch) {
  if (!m_consistency.currentAtBatchStart || m_table.empty()) {
    surveyConsistency();
  } else {
    const std::vector<std::string_view> touched = referencesOf(batch);
    if (updateExpectedLanguages(touched)) {
      for (const std::string_view ref : touched) {
        reclassify(ref);
      }
    } else {
      surveyConsistency();
    }
  }
  m_consistency.current = true;
  if (!m_consistency.inconsistentRefs.empty()) {
    checkConsistencyOfFirstAnd(*m_consistency.inconsistentRefs.begin());
  }
}

void LocalizedTextStore::surveyConsistency() {
  m_consistency.inconsistentRefs.clear();
  m_consistency.firstRef = m_table.empty() ? std::string_view() : refOf(m_table.begin()->first);
  m_consistency.expectedLanguages = expectedLanguagesNow();
  for (auto it = m_table.cbegin(); it != m_table.cend();) {
    const auto [agrees, next] = classify(it);
    if (!agrees) {
      m_consistency.inconsistentRefs.insert(m_consistency.inconsistentRefs.end(), refOf(it->first));
    }
    it = next;
  }
}

// False when the expected languages changed, which can set any reference
// apart; a new first reference with the same languages changes nothing.
bool LocalizedTextStore::updateExpectedLanguages(const std::vector<std::string_view>& touchedRefs) {
  const std::string_view firstRef = refOf(m_table.begin()->first);
  if (firstRef == m_consistency.firstRef &&
      !std::binary_search(touchedRefs.begin(), touchedRefs.end(), firstRef)) {
    return true;
  }
  std::vector<std::string_view> expected = expectedLanguagesNow();
  if (expected != m_consistency.expectedLanguages) {
    return false;
  }
  m_consistency.firstRef = firstRef;
  m_consistency.expectedLanguages = std::move(expected);
  return true;
}

// `ref` has at least one entry: every text of a batch is filed or was already.
void LocalizedTextStore::reclassify(std::string_view ref) {
  const auto first = m_table.lower_bound(LocalizedTextStoreKeyView{
      ref, {}, Tovra::Mdib::VersionCounter(std::numeric_limits<std::uint64_t>::max()), boost::none, 1});
  if (classify(first).first) {
    m_consistency.inconsistentRefs.erase(ref);
  } else {
    // A view of the table's own key: the batch's texts do not outlive the call.
    m_consistency.inconsistentRefs.insert(refOf(first->first));
  }
}

// Walks the reference whose first entry is `first`. The entries of one
// language and version lie together, so each such group is met once.
std::pair<bool, LocalizedTextStore::Table::const_iterator> LocalizedTextStore::classify(
    Table::const_iterator first) const {
  const std::vector<std::string_view>& expected = m_consistency.expectedLanguages;
  const std::string_view ref = refOf(first->first);
  std::vector<Tovra::Mdib::VersionCounter> versions;
  std::size_t groups = 0;
  bool onlyExpected = true;
  const LocalizedTextStoreKey* previous = nullptr;
  auto it = first;
  for (; it != m_table.end() && refOf(it->first) == ref; ++it) {
    const LocalizedTextStoreKey& key = it->first;
    const std::string_view tag = key.languageTag.tag();
    if (previous == nullptr || previous->version != key.version || previous->languageTag.tag() != tag) {
      ++groups;
      versions.push_back(key.version);
      onlyExpected = onlyExpected && std::binary_search(expected.begin(), expected.end(), tag);
    }
    previous = &key;
  }
  std::sort(versions.begin(), versions.end());
  versions.erase(std::unique(versions.begin(), versions.end()), versions.end());
  // Every group is a distinct language and version: with only expected
  // languages, each version has all of them exactly when the count is full.
  return {onlyExpected && groups == versions.size() * expected.size(), it};
}

// The tags of the first reference's lowest version, ascending as the walk
// meets them; empty for an empty table.
std::vector<std::string_view> LocalizedTextStore::expectedLanguagesNow() const {
  std::vector<std::string_view> tags;
  if (m_table.empty()) {
    return tags;
  }
  const std::string_view firstRef = refOf(m_table.begin()->first);
  Tovra::Mdib::VersionCounter lowest;
  for (auto it = m_table.begin(); it != m_table.end() && refOf(it->first) == firstRef; ++it) {
    const LocalizedTextStoreKey& key = it->first;
    if (tags.empty() || key.version < lowest) {
      lowest = key.version;
      tags.assign(1, key.languageTag.tag());
    } else if (key.version == lowest && tags.back() != key.languageTag.tag()) {
      tags.emplace_back(key.languageTag.tag());
    }
  }
  return tags;
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
