#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>

#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Errors/Throw.h>
#include <Zalt/Localization/Private/Common/InternalForms.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKeyView.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <set>
#include <string_view>
#include <utility>

namespace Zalt {
namespace Localization {
namespace Impl {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Entry = std::map<LocalizedTextStoreKey, Tovra::Locale::Utf8>::value_type;

// A group is the texts of one reference, language and version; every lookup
// and every list query works group by group.
bool isSameGroup(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKeyView& rhs) {
  return lhs.ref.get().value() == rhs.ref && lhs.languageTag.tag() == rhs.languageTag &&
         lhs.version == rhs.version;
}

bool isSameGroup(const LocalizedTextStoreKey& lhs, const LocalizedTextStoreKey& rhs) {
  return isSameGroup(lhs, viewOf(rhs));
}

// Orders before every stored key of its group, since no absent width can be
// beaten and every stored text has at least one line.
LocalizedTextStoreKeyView groupStart(std::string_view ref, std::string_view language,
                                     const VersionCounter& version) {
  return LocalizedTextStoreKeyView{ref, language, version, boost::none, 1};
}

VersionCounter newestVersion() { return VersionCounter(std::numeric_limits<std::uint64_t>::max()); }

// The empty tag and the newest possible version order before every stored key of `ref`.
LocalizedTextStoreKeyView referenceStart(std::string_view ref) {
  return groupStart(ref, {}, newestVersion());
}

Tovra::Mdib::LocalizedText toMdibText(const Entry& entry) {
  const LocalizedTextStoreKey& key = entry.first;
  return Tovra::Mdib::LocalizedText(entry.second, key.languageTag, key.ref, key.version, key.textWidth);
}

LocalizedText toLocalizedText(const Entry& entry) {
  return LocalizedText(toMdibText(entry), entry.first.numberOfLines);
}

// An absent width on either side places no limit.
bool fits(const LocalizedTextStoreKey& key, const LocalizedTextReference& reference) {
  return key.numberOfLines <= *reference.numberOfLines &&
         (!reference.textWidth || !key.textWidth || *key.textWidth <= *reference.textWidth);
}

// Compares the languages of each reference, version by version, with those of
// the first reference's lowest version. The sets refer to the tags inside the
// table's keys, so the check copies no tag.
class LanguageConsistencyCheck {
public:
  // Keys must come in table order, which keeps each reference's keys together.
  void visit(const LocalizedTextStoreKey& key) {
    if (m_ref != nullptr && key.ref != *m_ref) {
      checkReference();
    }
    m_ref = &key.ref;
    m_languagesByVersion[key.version].insert(std::cref(key.languageTag));
  }

  // Checks the reference visited last.
  void finish() { checkReference(); }

private:
  using LanguageSet = std::set<std::reference_wrapper<const LanguageTag>, std::less<>>;

  static bool haveSameTags(const LanguageSet& lhs, const LanguageSet& rhs) {
    return std::equal(lhs.begin(), lhs.end(), rhs.begin(), rhs.end(),
                      [](const LanguageTag& left, const LanguageTag& right) { return left == right; });
  }

  void checkReference() {
    if (m_languagesByVersion.empty()) {
      return;
    }
    if (m_expectedLanguages.empty()) {
      const auto& lowest = *m_languagesByVersion.begin();
      m_expectedRef = m_ref;
      m_expectedVersion = lowest.first;
      m_expectedLanguages = lowest.second;
    }
    for (const auto& [version, languages] : m_languagesByVersion) {
      if (!haveSameTags(languages, m_expectedLanguages)) {
        ZALT_THROW(InternalConsistencyFailure, keyForm(*m_ref, version)
                                                   << " has inconsistent languages "
                                                   << languageSetForm(languages) << " in relation to "
                                                   << keyForm(*m_expectedRef, m_expectedVersion) << " with "
                                                   << languageSetForm(m_expectedLanguages));
      }
    }
    m_languagesByVersion.clear();
  }

  const LocalizedTextRef* m_ref = nullptr;
  std::map<VersionCounter, LanguageSet> m_languagesByVersion;
  const LocalizedTextRef* m_expectedRef = nullptr;
  VersionCounter m_expectedVersion;
  LanguageSet m_expectedLanguages;
};

}  // namespace

// One run of texts(filter). It answers a filter that names references exactly
// as the walk over the whole table would, restricted to those references; the
// lower-bound searches only skip what that walk would not take.
class LocalizedTextStore::FilterQuery {
public:
  FilterQuery(const Table& table, const LocalizedTextFilter& filter) : m_table(table), m_filter(filter) {}

  std::vector<Tovra::Mdib::LocalizedText> run() && {
    if (m_filter.refs().empty()) {
      walkWholeTable();
    } else {
      for (const LocalizedTextRef& ref : m_filter.refs()) {
        walkReference(ref);
      }
    }
    return std::move(m_result);
  }

private:
  using Iterator = Table::const_iterator;
  using SortedByLines = std::vector<Iterator>;

  void walkWholeTable() {
    for (auto it = m_table.begin(); it != m_table.end();) {
      const LocalizedTextRef& ref = it->first.ref;
      m_referenceVersion = boost::none;
      it = walkGroups(it, [&ref](const LocalizedTextStoreKey& key) { return key.ref == ref; });
    }
  }

  void walkReference(const LocalizedTextRef& ref) {
    m_referenceVersion = boost::none;
    if (m_filter.languageTags().empty()) {
      walkGroups(m_table.lower_bound(referenceStart(ref.get().value())),
                 [&ref](const LocalizedTextStoreKey& key) { return key.ref == ref; });
      return;
    }
    // Wanted languages come in tag order, as in the table, so the first
    // accepted group is the same one the whole-table walk would accept first.
    const VersionCounter startVersion = m_filter.version().value_or(newestVersion());
    for (const LanguageTag& language : m_filter.languageTags()) {
      walkGroups(m_table.lower_bound(groupStart(ref.get().value(), language.tag(), startVersion)),
                 [&ref, &language](const LocalizedTextStoreKey& key) {
                   return key.ref == ref && key.languageTag == language;
                 });
    }
  }

  // Walks group by group from `it` while `inScope` holds; returns where it stopped.
  template <typename InScope>
  Iterator walkGroups(Iterator it, InScope inScope) {
    while (it != m_table.end() && inScope(it->first)) {
      const auto groupEnd = endOfGroup(it);
      if (accepts(it->first)) {
        appendGroup(it, groupEnd);
      }
      it = groupEnd;
    }
    return it;
  }

  Iterator endOfGroup(Iterator first) const {
    auto it = first;
    while (it != m_table.end() && isSameGroup(it->first, first->first)) {
      ++it;
    }
    return it;
  }

  bool accepts(const LocalizedTextStoreKey& groupKey) {
    const std::set<LanguageTag>& languages = m_filter.languageTags();
    if (!languages.empty() && languages.count(groupKey.languageTag) == 0) {
      return false;
    }
    if (m_filter.version()) {
      return groupKey.version == *m_filter.version();
    }
    // A reference answers in one version only: that of its first accepted
    // group, which is the newest version of its first wanted language.
    if (!m_referenceVersion) {
      m_referenceVersion = groupKey.version;
    }
    return groupKey.version == *m_referenceVersion;
  }

  void appendGroup(Iterator first, Iterator last) {
    const bool byWidth = !m_filter.textWidths().empty();
    const bool byLines = !m_filter.numberOfLines().empty();
    if (byWidth) {
      appendByWidth(first, last, byLines);
    } else if (byLines) {
      appendByLinesAcrossWidths(first, last);
    } else {
      append(first, last);
    }
  }

  // For each wanted width, ascending, takes the run of the widest stored width
  // not wider than it among the texts not yet passed, so no text is taken
  // twice. Texts without a width never answer a request by width.
  void appendByWidth(Iterator first, Iterator last, bool byLines) {
    auto cursor = first;
    while (cursor != last && !cursor->first.textWidth) {
      ++cursor;
    }
    for (const LocalizedTextWidth wanted : m_filter.textWidths()) {
      auto runStart = cursor;
      while (cursor != last && !(wanted < *cursor->first.textWidth)) {
        runStart = cursor;
        cursor = endOfWidthRun(cursor, last);
      }
      if (runStart == cursor) {
        continue;
      }
      if (byLines) {
        appendByLines(runStart, cursor);
      } else {
        append(runStart, cursor);
      }
    }
  }

  static Iterator endOfWidthRun(Iterator first, Iterator last) {
    auto it = first;
    while (it != last && it->first.textWidth == first->first.textWidth) {
      ++it;
    }
    return it;
  }

  void appendByLinesAcrossWidths(Iterator first, Iterator last) {
    SortedByLines sorted;
    for (auto it = first; it != last; ++it) {
      sorted.push_back(it);
    }
    // Stable, so texts with as many lines keep their key order.
    std::stable_sort(sorted.begin(), sorted.end(), [](Iterator lhs, Iterator rhs) {
      return lhs->first.numberOfLines < rhs->first.numberOfLines;
    });
    appendByLines(sorted.cbegin(), sorted.cend());
  }

  // For each wanted number of lines, ascending, appends the texts that have
  // the most lines not above it. [first, last) is sorted by number of lines;
  // a text passed for a smaller wanted number is not looked at again.
  template <typename Position>
  void appendByLines(Position first, Position last) {
    const std::set<NumberOfLines>& wanted = m_filter.numberOfLines();
    auto limit = wanted.begin();
    Position runStart = last;
    for (Position it = first; it != last && limit != wanted.end();) {
      if (*limit < linesAt(it)) {
        if (runStart != last) {
          append(runStart, it);
          runStart = last;
        }
        ++limit;  // the same text is weighed again against the next limit
      } else {
        if (runStart == last || linesAt(runStart) < linesAt(it)) {
          runStart = it;
        }
        ++it;
      }
    }
    if (runStart != last) {
      append(runStart, last);
    }
  }

  static const Entry& entryAt(Iterator it) { return *it; }
  static const Entry& entryAt(SortedByLines::const_iterator it) { return **it; }

  template <typename Position>
  static NumberOfLines linesAt(Position position) {
    return entryAt(position).first.numberOfLines;
  }

  template <typename Position>
  void append(Position first, Position last) {
    for (Position it = first; it != last; ++it) {
      m_result.push_back(toMdibText(entryAt(it)));
    }
  }

  const Table& m_table;
  const LocalizedTextFilter& m_filter;
  boost::optional<VersionCounter> m_referenceVersion;
  std::vector<Tovra::Mdib::LocalizedText> m_result;
};

LocalizedTextStore::LocalizedTextStore() = default;

// A copy's keys are new strings, so the copy starts without a consistency record.
LocalizedTextStore::LocalizedTextStore(const LocalizedTextStore& other) : m_table(other.m_table) {}

// A moved-from std::map is only valid, not necessarily empty; exchanging
// guarantees the empty source that callers may rely on.
// NOLINTNEXTLINE(performance-noexcept-move-constructor): a fresh table may allocate its sentinel.
LocalizedTextStore::LocalizedTextStore(LocalizedTextStore&& other)
    : m_table(std::exchange(other.m_table, Table())) {
  other.m_consistency = ConsistencyRecord();
}

LocalizedTextStore& LocalizedTextStore::operator=(const LocalizedTextStore& other) {
  m_table = other.m_table;
  m_consistency = ConsistencyRecord();
  return *this;
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): a fresh table may allocate its sentinel.
LocalizedTextStore& LocalizedTextStore::operator=(LocalizedTextStore&& other) {
  m_table = std::exchange(other.m_table, Table());
  m_consistency = ConsistencyRecord();
  other.m_consistency = ConsistencyRecord();
  return *this;
}

LocalizedTextStore::~LocalizedTextStore() = default;

void LocalizedTextStore::clear() {
  m_table.clear();
  m_consistency = ConsistencyRecord();
}

void LocalizedTextStore::insert(const Tovra::Mdib::LocalizedText& text) {
  // Counted first, so malformed UTF-8 is reported whether or not the text is complete.
  const NumberOfLines numberOfLines = numberOfLineBreaks(text.text()) + 1;
  if (text.ref().get().empty() || !text.lang() || !text.version()) {
    return;
  }
  // try_emplace leaves an existing entry untouched: the first text filed under a key stays.
  m_table.try_emplace(
      LocalizedTextStoreKey{text.ref(), *text.lang(), *text.version(), text.textWidth(), numberOfLines},
      text.text());
}

LocalizedText LocalizedTextStore::text(const LocalizedTextReference& reference,
                                       const Tovra::Locale::LanguageTag& language) const {
  const auto it = textIt(reference, language);
  return it == m_table.end() ? LocalizedText::empty() : toLocalizedText(*it);
}

LocalizedTextStore::Table::const_iterator LocalizedTextStore::textIt(
    const LocalizedTextReference& reference, const Tovra::Locale::LanguageTag& language) const {
  if (!reference.numberOfLines) {
    return textItByTextWidth(reference, language);
  }
  if (*reference.numberOfLines == 0) {
    return m_table.end();
  }
  return textItByTextWidthAndNumberOfLines(reference, language);
}

LocalizedTextStore::Table::const_iterator LocalizedTextStore::textItByTextWidth(
    const LocalizedTextReference& reference, const Tovra::Locale::LanguageTag& language) const {
  const LocalizedTextStoreKeyView wanted{reference.ref.get().value(), language.tag(), reference.version,
                                         reference.textWidth, 1};
  const auto candidate = m_table.lower_bound(wanted);
  if (candidate != m_table.end()) {
    if (compare(wanted, viewOf(candidate->first)) == 0) {
      return candidate;
    }
    // With no width asked for, the group's first text answers: one without a
    // width if there is any, else the narrowest.
    if (!reference.textWidth && isSameGroup(candidate->first, wanted)) {
      return candidate;
    }
  }
  // Otherwise the text just before the one-line key of the wanted width
  // answers: the widest narrower width, with its most lines. A text of the
  // wanted width that has more than one line is stepped over on purpose.
  if (candidate == m_table.begin()) {
    return m_table.end();
  }
  const auto previous = std::prev(candidate);
  return isSameGroup(previous->first, wanted) ? previous : m_table.end();
}

LocalizedTextStore::Table::const_iterator LocalizedTextStore::textItByTextWidthAndNumberOfLines(
    const LocalizedTextReference& reference, const Tovra::Locale::LanguageTag& language) const {
  const LocalizedTextStoreKeyView first =
      groupStart(reference.ref.get().value(), language.tag(), reference.version);
  auto best = m_table.end();
  // The group runs from narrow to wide, so letting a later fit with as many
  // lines win picks the widest of the texts with the most lines.
  for (auto it = m_table.lower_bound(first); it != m_table.end() && isSameGroup(it->first, first); ++it) {
    if (fits(it->first, reference) &&
        (best == m_table.end() || best->first.numberOfLines <= it->first.numberOfLines)) {
      best = it;
    }
  }
  return best;
}

std::vector<LocalizedText> LocalizedTextStore::texts(
    const Tovra::Mdib::LocalizedTextRef& ref,
    const boost::optional<Tovra::Mdib::VersionCounter>& version) const {
  std::vector<LocalizedText> result;
  for (auto it = m_table.lower_bound(referenceStart(ref.get().value()));
       it != m_table.end() && it->first.ref == ref; ++it) {
    if (!version || it->first.version == *version) {
      result.push_back(toLocalizedText(*it));
    }
  }
  return result;
}

std::vector<Tovra::Mdib::LocalizedText> LocalizedTextStore::texts(const LocalizedTextFilter& filter) const {
  return FilterQuery(m_table, filter).run();
}

void LocalizedTextStore::checkConsistency() const {
  LanguageConsistencyCheck check;
  for (const auto& entry : m_table) {
    check.visit(entry.first);
  }
  check.finish();
}

// When every other reference is known to agree with the first one, this walk
// meets the same first mismatch as the walk over the whole table.
void LocalizedTextStore::checkConsistencyOfFirstAnd(std::string_view ref) const {
  LanguageConsistencyCheck check;
  const auto visitReference = [this, &check](Table::const_iterator it) {
    const LocalizedTextRef& current = it->first.ref;
    for (; it != m_table.end() && it->first.ref == current; ++it) {
      check.visit(it->first);
    }
  };
  visitReference(m_table.begin());
  const auto start = m_table.lower_bound(referenceStart(ref));
  if (start != m_table.begin() && start != m_table.end()) {
    visitReference(start);
  }
  check.finish();
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
