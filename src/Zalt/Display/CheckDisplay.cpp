#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <algorithm>
#include <cstdio>
#include <deque>
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
  struct Entry;

public:
  // A reference and version, with where its texts stand in the index, so that
  // finding a text of it searches those alone.
  struct Group {
    std::string reference;
    std::uint64_t version;
    std::size_t begin;
    std::size_t end;
  };

  KeptIndex(const Catalogue::Catalogue& catalogue, const std::vector<std::size_t>& kept)
      : m_catalogue(catalogue) {
    m_entries.reserve(kept.size());
    for (const std::size_t index : kept) {
      const Tovra::Mdib::LocalizedText& text = catalogue.texts[index].text;
      m_entries.push_back({storeKey(text, displayLines(text.text().value()).size()), index});
    }
    std::sort(m_entries.begin(), m_entries.end());
  }

  // Each reference and version once, ascending.
  std::vector<Group> groups() const {
    std::vector<Group> found;
    for (std::size_t at = 0; at < m_entries.size(); ++at) {
      const std::string_view reference = std::get<0>(m_entries[at].key);
      const std::uint64_t version = std::get<1>(m_entries[at].key);
      if (found.empty() || found.back().reference != reference || found.back().version != version) {
        found.push_back({std::string(reference), version, at, at});
      }
      found.back().end = at + 1;
    }
    return found;
  }

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
  struct Entry {
    StoreKey key;
    std::size_t index;
    bool operator<(const Entry& other) const {
      return std::tie(key, index) < std::tie(other.key, other.index);
    }
  };

  const Catalogue::Catalogue& m_catalogue;
  std::vector<Entry> m_entries;
};

// The lines of one language measured with its chain, each line once: the
// texts of a catalogue repeat few lines across references, versions and areas,
// and shaping them is most of the check's work.
class LineMeasures {
public:
  LineMeasures(const FontChain& chain, const std::string& language) : m_shaper(chain, language) {}

  const MeasuredLine& operator()(std::string_view line) {
    const auto found = m_measured.find(line);
    if (found != m_measured.end()) {
      return found->second;
    }
    // The key views the kept copy, which a deque never moves.
    const std::string& kept = m_lines.emplace_back(line);
    return m_measured.emplace(kept, m_shaper.measure(kept)).first->second;
  }

private:
  LineShaper m_shaper;
  std::deque<std::string> m_lines;
  std::unordered_map<std::string_view, MeasuredLine> m_measured;
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
    const auto groups = m_index.groups();
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

  void show(std::size_t area, const KeptIndex::Group& group, const Zalt::Localization::LocalizedText& answer,
            const LanguageTag& language, LineMeasures& measures) {
    const DisplayArea& displayArea = m_profile.areas[area];
    ShownText shown{area,
                    answer.ref(),
                    *answer.version(),
                    language,
                    answer.text().value(),
                    m_index.placeOf(group, answer),
                    {},
                    false};
    std::u32string missing;
    for (const std::string_view text : displayLines(shown.text)) {
      const MeasuredLine& line = measures(text);
      shown.linePixels.push_back(line.pixels(displayArea.size));
      for (const char32_t character : line.missing) {
        if (missing.find(character) == std::u32string::npos) {
          missing.push_back(character);
        }
      }
    }
    const auto widest = std::max_element(shown.linePixels.begin(), shown.linePixels.end());
    if (*widest > displayArea.width) {
      overflow(displayArea, shown, static_cast<std::size_t>(widest - shown.linePixels.begin()));
    }
    if (!missing.empty()) {
      glyph(displayArea, shown, missing);
    }
    shown.hasFinding = *widest > displayArea.width || !missing.empty();
    ++m_result.shown;
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
};

}  // namespace

DisplayCheck checkDisplay(const DisplayProfile& profile, const Catalogue::Catalogue& catalogue,
                          const Catalogue::CatalogueCheck& check, const ShownTextVisitor& visit) {
  return DisplayChecker(profile, catalogue, check, visit).run();
}

}  // namespace Display
}  // namespace Zalt
