// The language consistency check after a batch of insertions, at the cost of
// what the batch brought.
//
// The check of the whole table passes when every version of every reference
// has the languages of the first reference's lowest version (the expected
// languages), and otherwise names the first reference, in key order, that
// does not. The record keeps, from one batch to the next, the expected
// languages and the set of references that do not have them. A batch changes
// only the versions it brought texts for: in a reference that had the
// expected languages, the batch's own texts and one search per expected
// language that it did not bring tell whether they still have them; a
// reference that lacked them is walked again as a whole. The first reference
// of the set is then the one the whole check would name, and the walk over
// the first reference and that one throws the same exception. The record is
// rebuilt from the whole table when the expected languages change or when the
// previous batch ended before its check, since the texts it filed are then
// unknown.
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

// One language and version of a reference that a batch brought texts for.
struct AddedGroup {
  std::string_view ref;
  Tovra::Mdib::VersionCounter version;
  std::string_view language;

  bool operator==(const AddedGroup& other) const {
    return ref == other.ref && version == other.version && language == other.language;
  }
  bool operator<(const AddedGroup& other) const {
    if (ref != other.ref) {
      return ref < other.ref;
    }
    if (version != other.version) {
      return version < other.version;
    }
    return language < other.language;
  }
};

// The batch's groups, ascending and each once. Texts usually come group by
// group, so dropping neighbours first leaves little to sort.
std::vector<AddedGroup> groupsOf(const std::vector<Tovra::Mdib::LocalizedText>& batch) {
  std::vector<AddedGroup> groups;
  for (const Tovra::Mdib::LocalizedText& text : batch) {
    const AddedGroup group{text.ref().get().value(), *text.version(), text.lang()->tag()};
    if (groups.empty() || !(groups.back() == group)) {
      groups.push_back(group);
    }
  }
  std::sort(groups.begin(), groups.end());
  groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
  return groups;
}

using GroupIterator = std::vector<AddedGroup>::const_iterator;

GroupIterator endOfReference(GroupIterator first, GroupIterator last) {
  return std::find_if(first, last, [first](const AddedGroup& group) { return group.ref != first->ref; });
}

std::vector<std::string_view> referencesOf(const std::vector<AddedGroup>& groups) {
  std::vector<std::string_view> refs;
  for (auto it = groups.begin(); it != groups.end(); it = endOfReference(it, groups.end())) {
    refs.push_back(it->ref);
  }
  return refs;
}

// For a reference that had the expected languages in every version before
// the batch: whether it still has. Only the versions the batch brought texts
// for can have changed, and each of them now holds what it held (nothing, or
// the expected languages) and what the batch added, so a version fails with
// a language that is not expected, or without one that is expected and
// neither came nor was there.
template <typename HasGroup>
bool keepsExpectedLanguages(GroupIterator first, GroupIterator last,
                            const std::vector<std::string_view>& expected, const HasGroup& hasGroup) {
  for (auto version = first; version != last;) {
    const auto versionEnd = std::find_if(
        version, last, [version](const AddedGroup& group) { return group.version != version->version; });
    auto added = version;
    for (const std::string_view language : expected) {
      if (added != versionEnd && added->language == language) {
        ++added;
      } else if (!hasGroup(version->ref, language, version->version)) {
        return false;
      }
    }
    if (added != versionEnd) {
      return false;  // a language that is not expected came
    }
    version = versionEnd;
  }
  return true;
}

}  // namespace

void LocalizedTextStore::startBatch() {
  m_consistency.currentAtBatchStart = std::exchange(m_consistency.current, false);
}

void LocalizedTextStore::checkConsistencyOfBatch(const std::vector<Tovra::Mdib::LocalizedText>& batch) {
  if (!m_consistency.currentAtBatchStart || m_table.empty()) {
    surveyConsistency();
  } else {
    const std::vector<AddedGroup> added = groupsOf(batch);
    const auto hasGroup = [this](std::string_view ref, std::string_view language,
                                 const Tovra::Mdib::VersionCounter& version) {
      const auto found =
          m_table.lower_bound(LocalizedTextStoreKeyView{ref, language, version, boost::none, 1});
      return found != m_table.end() && refOf(found->first) == ref &&
             found->first.languageTag.tag() == language && found->first.version == version;
    };
    if (updateExpectedLanguages(referencesOf(added))) {
      for (auto run = added.cbegin(); run != added.cend();) {
        const auto runEnd = endOfReference(run, added.cend());
        // A reference that lacked the expected languages may have gained them
        // anywhere, so only a walk over all of it can clear it.
        if (m_consistency.inconsistentRefs.count(run->ref) != 0) {
          reclassify(run->ref);
        } else if (!keepsExpectedLanguages(run, runEnd, m_consistency.expectedLanguages, hasGroup)) {
          m_consistency.inconsistentRefs.insert(refOf(firstEntryOf(run->ref)->first));
        }
        run = runEnd;
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
LocalizedTextStore::Table::const_iterator LocalizedTextStore::firstEntryOf(std::string_view ref) const {
  return m_table.lower_bound(LocalizedTextStoreKeyView{
      ref, {}, Tovra::Mdib::VersionCounter(std::numeric_limits<std::uint64_t>::max()), boost::none, 1});
}

void LocalizedTextStore::reclassify(std::string_view ref) {
  const auto first = firstEntryOf(ref);
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
