#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/Private/KeptIndex.h>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace Zalt {
namespace Display {
namespace Private {
namespace {

std::uint64_t versionOf(const Catalogue::Catalogue& catalogue, std::size_t index) {
  return catalogue.texts[index].text.version()->get();
}

}  // namespace

// In the store's key order a reference's texts stand together, by language
// and then newest version first; ordering each reference's few texts by
// version alone, stably, gives its groups in ascending version with their
// texts still in the store's order, and spares any comparison of references
// beyond telling one from the next.
KeptIndex::KeptIndex(const Catalogue::Catalogue& catalogue, const std::vector<std::size_t>& keyOrder)
    : m_catalogue(catalogue) {
  m_entries.reserve(keyOrder.size());
  std::size_t referenceBegin = 0;
  for (const std::size_t index : keyOrder) {
    const Tovra::Mdib::LocalizedText& text = catalogue.texts[index].text;
    if (!m_entries.empty() && text.ref().get().value() !=
                                  catalogue.texts[m_entries[referenceBegin].index].text.ref().get().value()) {
      addReference(m_entries.begin() + static_cast<std::ptrdiff_t>(referenceBegin));
      referenceBegin = m_entries.size();
    }
    m_entries.push_back(
        {text.lang()->tag(), text.textWidth() ? static_cast<int>(*text.textWidth()) : -1, index});
  }
  if (!m_entries.empty()) {
    addReference(m_entries.begin() + static_cast<std::ptrdiff_t>(referenceBegin));
  }
}

// Groups the entries from `begin` to the end, those of one reference.
void KeptIndex::addReference(std::vector<Entry>::iterator begin) {
  const auto version = [this](const Entry& entry) { return versionOf(m_catalogue, entry.index); };
  std::stable_sort(begin, m_entries.end(),
                   [&version](const Entry& lhs, const Entry& rhs) { return version(lhs) < version(rhs); });
  const std::string reference = m_catalogue.texts[begin->index].text.ref().get().value();
  for (auto first = begin; first != m_entries.end();) {
    const std::uint64_t groupVersion = version(*first);
    const auto last = std::find_if(first, m_entries.end(),
                                   [&](const Entry& entry) { return version(entry) != groupVersion; });
    m_groups.push_back({reference, groupVersion, static_cast<std::size_t>(first - m_entries.begin()),
                        static_cast<std::size_t>(last - m_entries.begin())});
    first = last;
  }
}

Catalogue::SourceLocation KeptIndex::placeOf(const Group& group,
                                             const Zalt::Localization::LocalizedText& answer) const {
  const auto key = [](const Entry& entry) { return std::make_tuple(entry.language, entry.width); };
  const Entry wanted{answer.lang()->tag(), answer.textWidth() ? static_cast<int>(*answer.textWidth()) : -1,
                     0};
  const auto sameLanguageAndWidth =
      std::equal_range(m_entries.begin() + static_cast<std::ptrdiff_t>(group.begin),
                       m_entries.begin() + static_cast<std::ptrdiff_t>(group.end), wanted,
                       [&key](const Entry& lhs, const Entry& rhs) { return key(lhs) < key(rhs); });
  const auto found = std::find_if(
      sameLanguageAndWidth.first, sameLanguageAndWidth.second, [this, &answer](const Entry& entry) {
        return displayLines(m_catalogue.texts[entry.index].text.text().value()).size() ==
               answer.numberOfLines();
      });
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
      groupBegin, groupEnd, [&language](const Entry& entry) { return entry.language == language; });
  const auto languageEnd = std::find_if(
      languageBegin, groupEnd, [&language](const Entry& entry) { return entry.language != language; });
  const auto chosen =
      languageBegin != languageEnd ? first(languageBegin, languageEnd) : first(groupBegin, groupEnd);
  return m_catalogue.location(m_catalogue.texts[chosen->index]);
}

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
