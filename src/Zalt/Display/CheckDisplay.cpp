#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>

namespace Zalt {
namespace Display {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::VersionCounter;

// What the store files a text under: reference, version, language, width (-1
// for none) and number of lines.
using StoreKey = std::tuple<std::string, std::uint64_t, std::string, int, std::size_t>;

StoreKey storeKey(const Tovra::Mdib::LocalizedText& text, std::size_t lines) {
  return {text.ref().get().value(), text.version() ? text.version()->get() : 0,
          text.lang() ? text.lang()->tag() : std::string(),
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
  std::vector<std::pair<std::string, std::uint64_t>> referencesAndVersions() const {
    std::vector<std::pair<std::string, std::uint64_t>> found;
    for (const Entry& entry : m_entries) {
      std::pair<std::string, std::uint64_t> group{std::get<0>(entry.key), std::get<1>(entry.key)};
      if (found.empty() || found.back() != group) {
        found.push_back(std::move(group));
      }
    }
    return found;
  }

  Catalogue::SourceLocation placeOf(const Zalt::Localization::LocalizedText& answer) const {
    const StoreKey key = storeKey(answer, answer.numberOfLines());
    const auto found = std::lower_bound(m_entries.begin(), m_entries.end(), Entry{key, 0});
    return m_catalogue.location(m_catalogue.texts[found->index]);
  }

  // The first text in the catalogue of the reference and version in
  // `language`, or in any language where it has none in that one.
  Catalogue::SourceLocation placeOf(const std::pair<std::string, std::uint64_t>& group,
                                    const std::string& language) const {
    const auto first = [](auto begin, auto end) {
      return std::min_element(begin, end,
                              [](const Entry& lhs, const Entry& rhs) { return lhs.index < rhs.index; });
    };
    const auto groupBegin = std::lower_bound(m_entries.begin(), m_entries.end(),
                                             Entry{{group.first, group.second, "", -2, 0}, 0});
    const auto groupEnd = std::find_if(groupBegin, m_entries.end(), [&group](const Entry& entry) {
      return std::get<0>(entry.key) != group.first || std::get<1>(entry.key) != group.second;
    });
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
    const auto groups = m_index.referencesAndVersions();
    for (const LanguageTag& language : m_store->languages()) {
      LineShaper shaper(m_profile.chainFor(language), language.tag());
      for (const auto& group : groups) {
        showGroup(shaper, group, language);
      }
    }
    std::stable_sort(m_result.findings.begin(), m_result.findings.end(),
                     [this](const auto& lhs, const auto& rhs) {
                       return std::make_tuple(lhs.location.file, lhs.location.line, lhs.location.column,
                                              areaIndex(lhs.area), lhs.kind) <
                              std::make_tuple(rhs.location.file, rhs.location.line, rhs.location.column,
                                              areaIndex(rhs.area), rhs.kind);
                     });
    return std::move(m_result);
  }

private:
  std::size_t areaIndex(const std::string& name) const {
    const auto found = std::find_if(m_profile.areas.begin(), m_profile.areas.end(),
                                    [&name](const DisplayArea& area) { return area.name == name; });
    return static_cast<std::size_t>(found - m_profile.areas.begin());
  }

  // One reference and version in one language in every area; a text that
  // several areas show is shaped once.
  void showGroup(LineShaper& shaper, const std::pair<std::string, std::uint64_t>& group,
                 const LanguageTag& language) {
    std::map<std::string, std::vector<MeasuredLine>> measured;
    for (std::size_t area = 0; area < m_profile.areas.size(); ++area) {
      const DisplayArea& displayArea = m_profile.areas[area];
      const Zalt::Localization::LocalizedText answer =
          m_store->text(Zalt::Localization::LocalizedTextReference(
                            Tovra::Mdib::LocalizedTextRef(Tovra::Locale::Utf8(group.first)),
                            VersionCounter(group.second), displayArea.textWidth, displayArea.lines),
                        language);
      if (!answer.version()) {
        unanswered(displayArea, group, language);
        continue;
      }
      const std::string& text = answer.text().value();
      auto found = measured.find(text);
      if (found == measured.end()) {
        std::vector<MeasuredLine> lines;
        for (const std::string_view line : displayLines(text)) {
          lines.push_back(shaper.measure(line));
        }
        found = measured.emplace(text, std::move(lines)).first;
      }
      show(area, answer, language, found->second);
    }
  }

  void unanswered(const DisplayArea& area, const std::pair<std::string, std::uint64_t>& group,
                  const LanguageTag& language) {
    m_result.findings.push_back({DisplayFinding::Kind::Unanswered, m_index.placeOf(group, language.tag()),
                                 "area '" + area.name + "' (" + language.tag() +
                                     "): no text of the reference '" + group.first + "' version " +
                                     std::to_string(group.second) + " fits its width " +
                                     Catalogue::textWidthToken(area.textWidth) + " in " +
                                     std::to_string(area.lines) + (area.lines == 1 ? " line" : " lines"),
                                 area.name, boost::none});
  }

  void show(std::size_t area, const Zalt::Localization::LocalizedText& answer, const LanguageTag& language,
            const std::vector<MeasuredLine>& lines) {
    const DisplayArea& displayArea = m_profile.areas[area];
    ShownText shown{
        area, answer.ref(), *answer.version(), language, answer.text().value(), m_index.placeOf(answer),
        {},   false};
    std::u32string missing;
    for (const MeasuredLine& line : lines) {
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
