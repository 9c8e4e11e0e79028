#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/Private/KeptIndex.h>

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace Zalt {
namespace Display {
namespace Private {

KeptIndex::StoreKey KeptIndex::storeKey(const Tovra::Mdib::LocalizedText& text, std::size_t lines) {
  return {text.ref().get().value(), text.version() ? text.version()->get() : 0,
          text.lang() ? std::string_view(text.lang()->tag()) : std::string_view(),
          text.textWidth() ? static_cast<int>(*text.textWidth()) : -1, lines};
}

// A catalogue's texts come in few languages and widths per reference and
// version: they are sorted by reference and version through a table of
// those, and each group alone by the rest of the key, which spares most of
// the string comparisons of one sort of all texts and orders them the same.
KeptIndex::KeptIndex(const Catalogue::Catalogue& catalogue, const std::vector<std::size_t>& kept)
    : m_catalogue(catalogue) {
  std::vector<Entry> entries;
  entries.reserve(kept.size());
  std::vector<std::size_t> groupOf;
  groupOf.reserve(kept.size());
  std::unordered_map<GroupKey, std::size_t, GroupKeyHash> ids;
  std::vector<GroupKey> keys;
  std::unordered_map<std::string_view, std::size_t> lineCounts;
  for (const std::size_t index : kept) {
    const Tovra::Mdib::LocalizedText& text = catalogue.texts[index].text;
    const std::string& value = text.text().value();
    const auto lines = lineCounts.try_emplace(value, 0);
    if (lines.second) {
      lines.first->second = displayLines(value).size();
    }
    entries.push_back({storeKey(text, lines.first->second), index});
    const GroupKey key{std::get<0>(entries.back().key), std::get<1>(entries.back().key)};
    // The texts of a reference and version mostly stand together.
    if (!groupOf.empty() && keys[groupOf.back()] == key) {
      groupOf.push_back(groupOf.back());
      continue;
    }
    const auto id = ids.emplace(key, keys.size());
    if (id.second) {
      keys.push_back(key);
    }
    groupOf.push_back(id.first->second);
  }
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&keys](std::size_t lhs, std::size_t rhs) { return keys[lhs] < keys[rhs]; });
  std::vector<std::size_t> rank(keys.size());
  std::vector<std::size_t> next(keys.size() + 1, 0);
  for (std::size_t at = 0; at < order.size(); ++at) {
    rank[order[at]] = at;
  }
  for (const std::size_t id : groupOf) {
    ++next[rank[id] + 1];
  }
  std::partial_sum(next.begin(), next.end(), next.begin());
  for (std::size_t at = 0; at < order.size(); ++at) {
    m_groups.push_back({std::string(keys[order[at]].first), keys[order[at]].second, next[at], next[at + 1]});
  }
  m_entries.resize(entries.size());
  for (std::size_t at = 0; at < entries.size(); ++at) {
    m_entries[next[rank[groupOf[at]]]++] = entries[at];
  }
  for (const Group& group : m_groups) {
    std::sort(m_entries.begin() + static_cast<std::ptrdiff_t>(group.begin),
              m_entries.begin() + static_cast<std::ptrdiff_t>(group.end));
  }
}

Catalogue::SourceLocation KeptIndex::placeOf(const Group& group,
                                             const Zalt::Localization::LocalizedText& answer) const {
  const StoreKey key = storeKey(answer, answer.numberOfLines());
  const auto found =
      std::lower_bound(m_entries.begin() + static_cast<std::ptrdiff_t>(group.begin),
                       m_entries.begin() + static_cast<std::ptrdiff_t>(group.end), Entry{key, 0});
  return m_catalogue.location(m_catalogue.texts[found->index]);
}

Catalogue::SourceLocation KeptIndex::placeOf(const Group& group, const std::string& language) const {
  const auto first = [](auto begin, auto end) {
    return std::min_element(begin, end,
                            [](const Entry& lhs, const Entry& rhs) { return lhs.index < rhs.index; });
  };
  const auto groupBegin = m_entries.begin() + static_cast<std::ptrdiff_t>(group.begin);
  const auto groupEnd = m_entries.begin() + static_cast<std::ptrdiff_t>(group.end);
  const auto languageBegin = std::find_if(
      groupBegin, groupEnd, [&language](const Entry& entry) { return std::get<2>(entry.key) == language; });
  const auto languageEnd = std::find_if(languageBegin, groupEnd, [&language](const Entry& entry) {
    return std::get<2>(entry.key) != language;
  });
  const auto chosen =
      languageBegin != languageEnd ? first(languageBegin, languageEnd) : first(groupBegin, groupEnd);
  return m_catalogue.location(m_catalogue.texts[chosen->index]);
}

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
