#include <Zalt/Catalogue/CheckCatalogue.h>

#include <Zalt/Catalogue/Private/EmptyCatalogue.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/Private/Common/LanguageConsistencyCheck.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKeyView.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Localization::Impl::LocalizedTextStoreKeyView;
using Tovra::Locale::LanguageTag;
using Tovra::Mdib::VersionCounter;
using MdibText = Tovra::Mdib::LocalizedText;
using Languages = std::vector<std::string_view>;

// A text that the store files: its index and number of lines, from which
// with the text itself the store's key is seen. Views of the key would take
// a third of a store's memory again at a million texts.
struct FiledText {
  std::uint32_t index;
  Localization::NumberOfLines lines;
};

LocalizedTextStoreKeyView keyOf(const MdibText& text, Localization::NumberOfLines lines) {
  return {text.ref().get().value(), text.lang()->tag(), *text.version(), text.textWidth(), lines};
}

// One reference in one version: its languages, sorted, and its first text in
// catalogue order.
struct Group {
  std::string_view ref;
  VersionCounter version;
  Languages languages;
  std::size_t firstText;
};

std::string listed(const Languages& languages) {
  std::string list;
  for (const std::string_view language : languages) {
    list += (list.empty() ? "" : ", ") + std::string(language);
  }
  return list;
}

Languages without(const Languages& from, const Languages& removed) {
  Languages rest;
  std::set_difference(from.begin(), from.end(), removed.begin(), removed.end(), std::back_inserter(rest));
  return rest;
}

std::string languagesMessage(const Group& group, const Languages& missing, const Languages& extra) {
  std::string message =
      "reference '" + std::string(group.ref) + "' version " + std::to_string(group.version.get());
  if (!missing.empty()) {
    message += " lacks " + listed(missing) + ", which the other references have";
  }
  if (!missing.empty() && !extra.empty()) {
    message += ", and has " + listed(extra) + ", which they lack";
  } else if (!extra.empty()) {
    message += " has " + listed(extra) + ", which the other references lack";
  }
  return message;
}

std::string widthMessage(Tovra::Mdib::LocalizedTextWidth declared, const TextMeasure& measure,
                         WidthUnit unit) {
  const char* const units = unit == WidthUnit::Fullwidth ? " fullwidth characters" : " characters";
  return "TextWidth '" + textWidthToken(declared) + "' holds at most " +
         std::to_string(*widthLimit(declared)) + units + " a line, but line " +
         std::to_string(measure.widestLine) + " is " + std::to_string(measure.width) + " wide and needs '" +
         textWidthToken(measure.measuredClass) + "'";
}

// "U+0009": four digits hold every control character.
std::string codePointName(char32_t codePoint) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string name = "U+0000";
  for (std::size_t at = name.size(); codePoint != 0; codePoint >>= 4) {
    name[--at] = digits[codePoint & 0xF];
  }
  return name;
}

std::string controlMessage(const ControlCharacter& control) {
  return "line " + std::to_string(control.line) + " holds " + codePointName(control.codePoint) +
         ", a control character that a display cannot place";
}

class Checker {
public:
  Checker(const Catalogue& catalogue, WidthUnit unit) : m_catalogue(catalogue), m_unit(unit) {}

  CatalogueCheck run() && {
    if (m_catalogue.texts.empty()) {
      m_check.findings = Private::emptyCatalogueFindings(m_catalogue);
      return std::move(m_check);
    }
    m_check.findings = Private::emptyFileFindings(m_catalogue);
    std::vector<FiledText> filed = judgeEach();
    // Equal keys in catalogue order, so that the text that the store keeps comes first.
    std::sort(filed.begin(), filed.end(), [this](const FiledText& lhs, const FiledText& rhs) {
      const int byKey = Localization::Impl::compare(key(lhs), key(rhs));
      return byKey != 0 ? byKey < 0 : lhs.index < rhs.index;
    });
    const std::vector<Group> groups = keepFirstOfEachKey(filed);
    checkLanguages(groups);
    std::stable_sort(m_byText.begin(), m_byText.end(),
                     [](const auto& lhs, const auto& rhs) { return lhs.first < rhs.first; });
    for (auto& finding : m_byText) {
      m_check.findings.push_back(std::move(finding.second));
    }
    checkConsistency(filed, groups);
    m_check.keyOrder = m_check.kept;
    std::sort(m_check.kept.begin(), m_check.kept.end());
    return std::move(m_check);
  }

private:
  // The store's verdict on each text in catalogue order, with the languages
  // that it has accepted so far, as one add of the whole catalogue meets them.
  std::vector<FiledText> judgeEach() {
    std::vector<FiledText> filed;
    filed.reserve(m_catalogue.texts.size());
    std::set<LanguageTag> knownLanguages;
    for (std::size_t index = 0; index < m_catalogue.texts.size(); ++index) {
      const MdibText& text = m_catalogue.texts[index].text;
      try {
        if (Localization::Device::LocalizedTextStoreImpl::validate(text, knownLanguages)) {
          knownLanguages.insert(*text.lang());
        }
        const Localization::NumberOfLines lines = Localization::Impl::numberOfLineBreaks(text.text()) + 1;
        filed.push_back({static_cast<std::uint32_t>(index), lines});
      } catch (const InternalConsistencyFailure& failure) {
        report(index, Finding::Kind::Rejected, failure.what());
      } catch (const std::out_of_range& malformedUtf8) {
        report(index, Finding::Kind::Rejected, malformedUtf8.what());
      }
    }
    return filed;
  }

  // Walks the filed texts in key order: the first of equal keys is kept, the
  // others dropped. Collects the languages of each reference and version.
  std::vector<Group> keepFirstOfEachKey(const std::vector<FiledText>& filed) {
    std::vector<Group> groups;
    std::map<VersionCounter, Group> ofReference;
    std::size_t keptIndex = 0;
    for (std::size_t at = 0; at < filed.size(); ++at) {
      const FiledText& text = filed[at];
      const LocalizedTextStoreKeyView textKey = key(text);
      if (at > 0 && Localization::Impl::compare(key(filed[at - 1]), textKey) == 0) {
        reportDropped(text.index, keptIndex);
        continue;
      }
      keptIndex = text.index;
      if (!ofReference.empty() && ofReference.begin()->second.ref != textKey.ref) {
        moveGroups(ofReference, groups);
      }
      m_check.kept.push_back(text.index);
      checkWidth(text.index);
      Group& group = ofReference.emplace(textKey.version, Group{textKey.ref, textKey.version, {}, text.index})
                         .first->second;
      if (group.languages.empty() || group.languages.back() != textKey.languageTag) {
        group.languages.push_back(textKey.languageTag);
      }
      group.firstText = std::min<std::size_t>(group.firstText, text.index);
    }
    moveGroups(ofReference, groups);
    return groups;
  }

  static void moveGroups(std::map<VersionCounter, Group>& ofReference, std::vector<Group>& groups) {
    for (auto& version : ofReference) {
      groups.push_back(std::move(version.second));
    }
    ofReference.clear();
  }

  // The languages that at least half of the references and versions have are
  // the ones expected of each: one forgotten translation is reported where it
  // is missing, not as an extra language of every other reference.
  void checkLanguages(const std::vector<Group>& groups) {
    std::map<std::string_view, std::size_t> groupsWith;
    for (const Group& group : groups) {
      for (const std::string_view language : group.languages) {
        ++groupsWith[language];
      }
    }
    Languages expected;
    for (const auto& count : groupsWith) {
      if (2 * count.second >= groups.size()) {
        expected.push_back(count.first);
      }
    }
    for (const Group& group : groups) {
      const Languages missing = without(expected, group.languages);
      const Languages extra = without(group.languages, expected);
      if (!missing.empty() || !extra.empty()) {
        report(group.firstText, Finding::Kind::Languages, languagesMessage(group, missing, extra));
      }
    }
  }

  // The store's own check over the kept texts in its key order gives its
  // message; the finding stands at the first text of the reference and
  // version that the message names first.
  void checkConsistency(const std::vector<FiledText>& filed, const std::vector<Group>& groups) {
    Localization::Impl::LanguageConsistencyCheck check;
    for (const FiledText& each : filed) {
      const MdibText& text = m_catalogue.texts[each.index].text;
      if (!check.visit(text.ref(), *text.lang(), *text.version())) {
        break;
      }
    }
    if (check.finish()) {
      return;
    }
    const std::string_view ref = check.mismatchedRef().get().value();
    const auto offender = std::find_if(groups.begin(), groups.end(), [&](const Group& group) {
      return group.ref == ref && group.version == check.mismatchedVersion();
    });
    m_check.findings.push_back({Finding::Kind::Inconsistent,
                                m_catalogue.location(m_catalogue.texts[offender->firstText]),
                                check.mismatch()});
  }

  LocalizedTextStoreKeyView key(const FiledText& text) const {
    return keyOf(m_catalogue.texts[text.index].text, text.lines);
  }

  // A display of the declared width cuts a text whose widest line needs a
  // wider one. A control character has no place on any display, so it is
  // reported whatever width the text declares.
  void checkWidth(std::size_t index) {
    const MdibText& text = m_catalogue.texts[index].text;
    measureText(text.text(), m_unit, m_measure);
    if (m_measure.control) {
      report(index, Finding::Kind::Width, controlMessage(*m_measure.control));
    }
    if (!text.textWidth()) {
      return;
    }
    if (*text.textWidth() < m_measure.measuredClass) {
      report(index, Finding::Kind::Width, widthMessage(*text.textWidth(), m_measure, m_unit));
    }
  }

  void reportDropped(std::size_t index, std::size_t keptIndex) {
    const CatalogueText& kept = m_catalogue.texts[keptIndex];
    report(index, Finding::Kind::Dropped,
           "dropped: the text at " + m_catalogue.files[kept.file] + ':' + std::to_string(kept.line) +
               " has the same reference, language, version, width and number of lines");
  }

  void report(std::size_t index, Finding::Kind kind, std::string message) {
    m_byText.emplace_back(index,
                          Finding{kind, m_catalogue.location(m_catalogue.texts[index]), std::move(message)});
  }

  const Catalogue& m_catalogue;
  const WidthUnit m_unit;
  // Reused for every text, so that measuring allocates only for texts of more lines than any before.
  TextMeasure m_measure;
  // Findings with the index of the text they stand at, for catalogue order.
  std::vector<std::pair<std::size_t, Finding>> m_byText;
  CatalogueCheck m_check;
};

}  // namespace

CatalogueCheck checkCatalogue(const Catalogue& catalogue, WidthUnit unit) {
  return Checker(catalogue, unit).run();
}

std::vector<Tovra::Mdib::LocalizedText> keptTexts(const Catalogue& catalogue, const CatalogueCheck& check) {
  std::vector<Tovra::Mdib::LocalizedText> texts;
  texts.reserve(check.keyOrder.size());
  for (const std::size_t index : check.keyOrder) {
    texts.push_back(catalogue.texts[index].text);
  }
  return texts;
}

}  // namespace Catalogue
}  // namespace Zalt
