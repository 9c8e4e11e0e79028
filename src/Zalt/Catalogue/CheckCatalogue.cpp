#include <Zalt/Catalogue/CheckCatalogue.h>

#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::VersionCounter;
using Languages = std::set<LanguageTag>;
using MdibText = Tovra::Mdib::LocalizedText;

// A fresh store per text gives the store's own verdict and message for that
// text, as if every problem before it were fixed; its language check over a
// single text always passes.
boost::optional<std::string> rejection(const MdibText& text) {
  const auto store = Localization::Device::LocalizedTextStore::createLocalizedTextStore();
  try {
    store->add(std::vector<MdibText>{text});
  } catch (const InternalConsistencyFailure& failure) {
    return std::string(failure.what());
  } catch (const std::out_of_range& malformedUtf8) {
    return std::string(malformedUtf8.what());
  }
  return boost::none;
}

Localization::Impl::LocalizedTextStoreKey keyOf(const MdibText& text) {
  return {text.ref(), *text.lang(), *text.version(), text.textWidth(),
          Localization::Impl::numberOfLineBreaks(text.text()) + 1};
}

std::string listed(const Languages& languages) {
  std::string list;
  for (const LanguageTag& language : languages) {
    list += (list.empty() ? "" : ", ") + language.tag();
  }
  return list;
}

Languages without(const Languages& from, const Languages& removed) {
  Languages rest;
  std::set_difference(from.begin(), from.end(), removed.begin(), removed.end(),
                      std::inserter(rest, rest.end()));
  return rest;
}

class Checker {
public:
  explicit Checker(const CatalogueTexts& catalogue) : m_catalogue(catalogue), m_texts(catalogue.texts) {}

  CatalogueCheck run() && {
    for (std::size_t index = 0; index < m_texts.size(); ++index) {
      checkText(index);
    }
    checkLanguages();
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const auto& lhs, const auto& rhs) { return lhs.first < rhs.first; });
    CatalogueCheck check;
    if (m_texts.empty()) {
      check.findings.push_back(emptyFinding());
    }
    for (auto& finding : m_findings) {
      check.findings.push_back(std::move(finding.second));
    }
    checkConsistency(check.findings);
    check.kept = std::move(m_kept);
    return check;
  }

private:
  // The languages of one reference in one version, and its first text.
  struct Group {
    Languages languages;
    std::size_t firstText;
  };
  using Groups = std::map<std::pair<LocalizedTextRef, VersionCounter>, Group>;

  void checkText(std::size_t index) {
    const CatalogueText& entry = m_texts[index];
    if (const boost::optional<std::string> message = rejection(entry.text)) {
      report(index, Finding::Kind::Rejected, *message);
      return;
    }
    const auto first = m_firstOfKey.emplace(keyOf(entry.text), index);
    if (!first.second) {
      report(index, Finding::Kind::Dropped,
             "dropped: the text at " + place(first.first->second) +
                 " has the same reference, language, version, width and number of lines");
      return;
    }
    m_table.insert(entry.text);
    m_kept.push_back(index);
    m_groups.emplace(std::make_pair(entry.text.ref(), *entry.text.version()), Group{{}, index})
        .first->second.languages.insert(*entry.text.lang());
  }

  // The languages that at least half of the references and versions have are
  // the ones expected of each: one forgotten translation is reported where it
  // is missing, not as an extra language of every other reference.
  void checkLanguages() {
    std::map<LanguageTag, std::size_t> groupsWith;
    for (const auto& group : m_groups) {
      for (const LanguageTag& language : group.second.languages) {
        ++groupsWith[language];
      }
    }
    Languages expected;
    for (const auto& count : groupsWith) {
      if (2 * count.second >= m_groups.size()) {
        expected.insert(count.first);
      }
    }
    for (const auto& group : m_groups) {
      const Languages missing = without(expected, group.second.languages);
      const Languages extra = without(group.second.languages, expected);
      if (!missing.empty() || !extra.empty()) {
        report(group.second.firstText, Finding::Kind::Languages,
               languagesMessage(group.first.first, group.first.second, missing, extra));
      }
    }
  }

  static std::string languagesMessage(const LocalizedTextRef& ref, const VersionCounter& version,
                                      const Languages& missing, const Languages& extra) {
    std::ostringstream message;
    message << "reference '" << ref.get().value() << "' version " << version.get();
    if (!missing.empty()) {
      message << " lacks " << listed(missing) << ", which the other references have";
    }
    if (!missing.empty() && !extra.empty()) {
      message << ", and has " << listed(extra) << ", which they lack";
    } else if (!extra.empty()) {
      message << " has " << listed(extra) << ", which the other references lack";
    }
    return message.str();
  }

  // The message is the store's own; its place is that of the reference and
  // version that the store's check names first: the first, by reference and
  // ascending version, whose languages differ from the first one's.
  void checkConsistency(std::vector<Finding>& findings) const {
    try {
      m_table.checkConsistency();
    } catch (const InternalConsistencyFailure& failure) {
      const Languages& reference = m_groups.begin()->second.languages;
      const auto offender = std::find_if(m_groups.begin(), m_groups.end(), [&](const auto& group) {
        return group.second.languages != reference;
      });
      const std::size_t at = offender != m_groups.end() ? offender->second.firstText : 0;
      findings.push_back({Finding::Kind::Inconsistent, m_texts[at].location, failure.what()});
    }
  }

  void report(std::size_t index, Finding::Kind kind, const std::string& message) {
    m_findings.emplace_back(index, Finding{kind, m_texts[index].location, message});
  }

  std::string place(std::size_t index) const {
    const SourceLocation& location = m_texts[index].location;
    return location.file + ':' + std::to_string(location.line);
  }

  Finding emptyFinding() const {
    const SourceLocation location{m_catalogue.files.empty() ? std::string() : m_catalogue.files.front(), 0,
                                  0};
    return {Finding::Kind::Empty, location, "no localized text found"};
  }

  const CatalogueTexts& m_catalogue;
  const std::vector<CatalogueText>& m_texts;
  std::vector<std::pair<std::size_t, Finding>> m_findings;
  std::map<Localization::Impl::LocalizedTextStoreKey, std::size_t> m_firstOfKey;
  Localization::Impl::LocalizedTextStore m_table;
  Groups m_groups;
  std::vector<std::size_t> m_kept;
};

}  // namespace

CatalogueCheck checkCatalogue(const CatalogueTexts& catalogue) { return Checker(catalogue).run(); }

}  // namespace Catalogue
}  // namespace Zalt
