#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>

#include <Zalt/Localization/Private/Common/LocalizedTextStoreGroups.h>

#include <algorithm>
#include <set>
#include <utility>

namespace Zalt {
namespace Localization {
namespace Impl {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

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

std::vector<Tovra::Mdib::LocalizedText> LocalizedTextStore::texts(const LocalizedTextFilter& filter) const {
  return FilterQuery(m_table, filter).run();
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
