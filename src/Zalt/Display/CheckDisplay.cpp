#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <numeric>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace Zalt {
namespace Display {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::VersionCounter;

// What the store files a text under: reference, version, language, width (-1
// for none) and number of lines. It views the text's own strings, so that the
// index of a large catalogue copies none of them.
using StoreKey = std::tuple<std::string_view, std::uint64_t, std::string_view, int, std::size_t>;

StoreKey storeKey(const Tovra::Mdib::LocalizedText& text, std::size_t lines) {
  return {text.ref().get().value(), text.version() ? text.version()->get() : 0,
          text.lang() ? std::string_view(text.lang()->tag()) : std::string_view(),
          text.textWidth() ? static_cast<int>(*text.textWidth()) : -1, lines};
}

std::string codePointName(char32_t character) {
  char name[16];
  std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned int>(character));
  return name;
}

std::string utf8(char32_t character) {
  std::string encoded;
  if (character < 0x80) {
    encoded.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    encoded += {static_cast<char>(0xC0 | (character >> 6)), static_cast<char>(0x80 | (character & 0x3F))};
  } else if (character < 0x10000) {
    encoded +=
        {static_cast<char>(0xE0 | (character >> 12)), static_cast<char>(0x80 | ((character >> 6) & 0x3F)),
         static_cast<char>(0x80 | (character & 0x3F))};
  } else {
    encoded +=
        {static_cast<char>(0xF0 | (character >> 18)), static_cast<char>(0x80 | ((character >> 12) & 0x3F)),
         static_cast<char>(0x80 | ((character >> 6) & 0x3F)), static_cast<char>(0x80 | (character & 0x3F))};
  }
  return encoded;
}

// The kept texts by what the store files them under, so that an answer of the
// store finds the place of its text, and each reference and version its texts.
class KeptIndex {
public:
  // A reference and version, with where its texts stand in the index, so that
  // finding a text of it searches those alone.
  struct Group {
    std::string reference;
    std::uint64_t version;
    std::size_t begin;
    std::size_t end;
  };

  // A catalogue's texts come in few languages and widths per reference and
  // version: they are sorted by reference and version through a table of
  // those, and each group alone by the rest of the key, which spares most of
  // the string comparisons of one sort of all texts and orders them the same.
  KeptIndex(const Catalogue::Catalogue& catalogue, const std::vector<std::size_t>& kept)
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
      m_groups.push_back(
          {std::string(keys[order[at]].first), keys[order[at]].second, next[at], next[at + 1]});
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

  // Each reference and version once, ascending.
  const std::vector<Group>& groups() const { return m_groups; }

  // `answer` is a text of `group`.
  Catalogue::SourceLocation placeOf(const Group& group,
                                    const Zalt::Localization::LocalizedText& answer) const {
    const StoreKey key = storeKey(answer, answer.numberOfLines());
    const auto found =
        std::lower_bound(m_entries.begin() + static_cast<std::ptrdiff_t>(group.begin),
                         m_entries.begin() + static_cast<std::ptrdiff_t>(group.end), Entry{key, 0});
    return m_catalogue.location(m_catalogue.texts[found->index]);
  }

  // The first text in the catalogue of the reference and version in
  // `language`, or in any language where it has none in that one.
  Catalogue::SourceLocation placeOf(const Group& group, const std::string& language) const {
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

private:
  using GroupKey = std::pair<std::string_view, std::uint64_t>;
  struct GroupKeyHash {
    std::size_t operator()(const GroupKey& key) const {
      return std::hash<std::string_view>()(key.first) ^ (key.second * 0x9E3779B97F4A7C15u);
    }
  };

  struct Entry {
    StoreKey key;
    std::size_t index;
    // The order within one reference and version, whose strings need no
    // comparing there.
    bool operator<(const Entry& other) const {
      return std::tie(std::get<2>(key), std::get<3>(key), std::get<4>(key), index) <
             std::tie(std::get<2>(other.key), std::get<3>(other.key), std::get<4>(other.key), other.index);
    }
  };

  const Catalogue::Catalogue& m_catalogue;
  std::vector<Entry> m_entries;
  std::vector<Group> m_groups;
};

// The lines of one language measured with its chain, each line once: the
// texts of a catalogue repeat few lines across references, versions and areas,
// and shaping them is most of the check's work. Each text is cut into lines
// once too.
class LineMeasures {
public:
  LineMeasures(const FontChain& chain, const std::string& language) : m_shaper(chain, language) {}

  // The lines of `text`, as displayLines cuts it, measured.
  const std::vector<const MeasuredLine*>& linesOf(std::string_view text) {
    const auto found = m_texts.find(text);
    if (found != m_texts.end()) {
      return found->second;
    }
    const std::string& kept = m_kept.emplace_back(text);
    std::vector<const MeasuredLine*> lines;
    for (const std::string_view line : displayLines(kept)) {
      lines.push_back(&measure(line));
    }
    return m_texts.emplace(kept, std::move(lines)).first->second;
  }

private:
  const MeasuredLine& measure(std::string_view line) {
    const auto found = m_measured.find(line);
    if (found != m_measured.end()) {
      return found->second;
    }
    // The keys view the kept copies, which a deque never moves.
    const std::string& kept = m_kept.emplace_back(line);
    return m_measured.emplace(kept, m_shaper.measure(kept)).first->second;
  }

  LineShaper m_shaper;
  std::deque<std::string> m_kept;
  std::unordered_map<std::string_view, MeasuredLine> m_measured;
  std::unordered_map<std::string_view, std::vector<const MeasuredLine*>> m_texts;
};

class DisplayChecker {
public:
  DisplayChecker(const DisplayProfile& profile, const Catalogue::Catalogue& catalogue,
                 const Catalogue::CatalogueCheck& check, const ShownTextVisitor& visit)
      : m_profile(profile), m_index(catalogue, check.kept), m_visit(visit) {
    try {
      m_store->add(Catalogue::keptTexts(catalogue, check));
    } catch (const Zalt::InternalConsistencyFailure&) {
      // The catalogue check reports it; the store checks languages after filing every text, so it still
      // answers.
    }
  }

  DisplayCheck run() {
    const std::vector<KeptIndex::Group>& groups = m_index.groups();
    for (const LanguageTag& language : m_store->languages()) {
      LineMeasures measures(m_profile.chainFor(language), language.tag());
      for (const auto& group : groups) {
        showGroup(measures, group, language);
      }
    }
    const auto order = [this](const DisplayFinding& finding) {
      return std::make_tuple(std::cref(finding.location.file), finding.location.line, finding.location.column,
                             areaIndex(finding.area), finding.kind);
    };
    std::stable_sort(m_result.findings.begin(), m_result.findings.end(),
                     [&order](const auto& lhs, const auto& rhs) { return order(lhs) < order(rhs); });
    return std::move(m_result);
  }

private:
  std::size_t areaIndex(const std::string& name) const {
    const auto found = std::find_if(m_profile.areas.begin(), m_profile.areas.end(),
                                    [&name](const DisplayArea& area) { return area.name == name; });
    return static_cast<std::size_t>(found - m_profile.areas.begin());
  }

  // One reference and version in one language in every area.
  void showGroup(LineMeasures& measures, const KeptIndex::Group& group, const LanguageTag& language) {
    for (std::size_t area = 0; area < m_profile.areas.size(); ++area) {
      const DisplayArea& displayArea = m_profile.areas[area];
      const Zalt::Localization::LocalizedText answer =
          m_store->text(Zalt::Localization::LocalizedTextReference(
                            Tovra::Mdib::LocalizedTextRef(Tovra::Locale::Utf8(group.reference)),
                            VersionCounter(group.version), displayArea.textWidth, displayArea.lines),
                        language);
      if (!answer.version()) {
        unanswered(displayArea, group, language);
        continue;
      }
      show(area, group, answer, language, measures);
    }
  }

  void unanswered(const DisplayArea& area, const KeptIndex::Group& group, const LanguageTag& language) {
    m_result.findings.push_back({DisplayFinding::Kind::Unanswered, m_index.placeOf(group, language.tag()),
                                 "area '" + area.name + "' (" + language.tag() +
                                     "): no text of the reference '" + group.reference + "' version " +
                                     std::to_string(group.version) + " fits its width " +
                                     Catalogue::textWidthToken(area.textWidth) + " in " +
                                     std::to_string(area.lines) + (area.lines == 1 ? " line" : " lines"),
                                 area.name, boost::none});
  }

  // Most texts fit and have every glyph: what the visitor and the findings
  // need of a text (its copies and its place) is made only when one asks.
  void show(std::size_t area, const KeptIndex::Group& group, const Zalt::Localization::LocalizedText& answer,
            const LanguageTag& language, LineMeasures& measures) {
    const DisplayArea& displayArea = m_profile.areas[area];
    m_linePixels.clear();
    std::u32string missing;
    for (const MeasuredLine* line : measures.linesOf(answer.text().value())) {
      m_linePixels.push_back(line->pixels(displayArea.size));
      for (const char32_t character : line->missing) {
        if (missing.find(character) == std::u32string::npos) {
          missing.push_back(character);
        }
      }
    }
    ++m_result.shown;
    const auto widest = std::max_element(m_linePixels.begin(), m_linePixels.end());
    const bool tooWide = *widest > displayArea.width;
    if (!tooWide && missing.empty() && !m_visit) {
      return;
    }
    const ShownText shown{area,
                          answer.ref(),
                          *answer.version(),
                          language,
                          answer.text().value(),
                          m_index.placeOf(group, answer),
                          m_linePixels,
                          tooWide || !missing.empty()};
    if (tooWide) {
      overflow(displayArea, shown, static_cast<std::size_t>(widest - m_linePixels.begin()));
    }
    if (!missing.empty()) {
      glyph(displayArea, shown, missing);
    }
    if (m_visit) {
      m_visit(shown);
    }
  }

  void overflow(const DisplayArea& area, const ShownText& shown, std::size_t line) {
    const std::int64_t pixels = shown.linePixels[line];
    const std::string lineText(displayLines(shown.text)[line]);
    m_result.findings.push_back(
        {DisplayFinding::Kind::Overflow, shown.location,
         "area '" + area.name + "' (" + shown.language.tag() + "): \"" + lineText + "\"" +
             (shown.linePixels.size() > 1 ? " (line " + std::to_string(line + 1) + ")" : std::string()) +
             " is " + std::to_string(pixels) + " pixels wide: " + std::to_string(pixels - area.width) +
             (pixels - area.width == 1 ? " pixel" : " pixels") + " too wide for its box of " +
             std::to_string(area.width),
         area.name, DisplayFinding::Overflow{pixels, area.width, pixels - area.width}});
  }

  void glyph(const DisplayArea& area, const ShownText& shown, const std::u32string& missing) {
    std::string named;
    for (const char32_t character : missing) {
      named += (named.empty() ? "" : ", ") + utf8(character) + " " + codePointName(character);
    }
    m_result.findings.push_back(
        {DisplayFinding::Kind::Glyph, shown.location,
         "area '" + area.name + "' (" + shown.language.tag() + "): no font has " + named, area.name,
         boost::none});
  }

  const DisplayProfile& m_profile;
  KeptIndex m_index;
  const ShownTextVisitor& m_visit;
  std::shared_ptr<Zalt::Localization::Device::LocalizedTextStore> m_store =
      Zalt::Localization::Device::LocalizedTextStore::createLocalizedTextStore();
  DisplayCheck m_result;
  // The widths of the lines of the text at hand, kept to spare an allocation per text.
  std::vector<std::int64_t> m_linePixels;
};

}  // namespace

DisplayCheck checkDisplay(const DisplayProfile& profile, const Catalogue::Catalogue& catalogue,
                          const Catalogue::CatalogueCheck& check, const ShownTextVisitor& visit) {
  return DisplayChecker(profile, catalogue, check, visit).run();
}

}  // namespace Display
}  // namespace Zalt
