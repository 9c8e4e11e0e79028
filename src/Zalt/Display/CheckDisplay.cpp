#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/Private/KeptIndex.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <boost/regex/pending/unicode_iterator.hpp>

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

std::string codePointName(char32_t character) {
  char name[16];
  std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned int>(character));
  return name;
}

std::string utf8(char32_t character) {
  using Encoder = boost::u32_to_u8_iterator<const char32_t*, char>;
  return std::string(Encoder(&character), Encoder(&character + 1));
}

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
      : m_profile(profile), m_index(catalogue, check.keyOrder), m_visit(visit) {
    try {
      m_store->add(Catalogue::keptTexts(catalogue, check));
    } catch (const Zalt::InternalConsistencyFailure&) {
      // The catalogue check reports it; the store checks languages after filing every text, so it still
      // answers.
    }
  }

  DisplayCheck run() {
    const std::vector<Private::KeptIndex::Group>& groups = m_index.groups();
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
  void showGroup(LineMeasures& measures, const Private::KeptIndex::Group& group,
                 const LanguageTag& language) {
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

  void unanswered(const DisplayArea& area, const Private::KeptIndex::Group& group,
                  const LanguageTag& language) {
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
  void show(std::size_t area, const Private::KeptIndex::Group& group,
            const Zalt::Localization::LocalizedText& answer, const LanguageTag& language,
            LineMeasures& measures) {
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
  Private::KeptIndex m_index;
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
