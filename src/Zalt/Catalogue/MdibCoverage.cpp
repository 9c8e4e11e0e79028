#include <Zalt/Catalogue/MdibCoverage.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

// One kept text of the catalogue, as the index sorts it.
struct Entry {
  std::string_view ref;
  std::uint64_t version;
  std::string_view lang;
  std::size_t text;
};

// Compares each part once, where a tuple compares it twice: sorting a million
// texts makes some twenty million of these comparisons.
bool operator<(const Entry& lhs, const Entry& rhs) {
  if (const int order = lhs.ref.compare(rhs.ref); order != 0) {
    return order < 0;
  }
  if (lhs.version != rhs.version) {
    return lhs.version < rhs.version;
  }
  if (const int order = lhs.lang.compare(rhs.lang); order != 0) {
    return order < 0;
  }
  return lhs.text < rhs.text;
}

using Entries = std::vector<Entry>::const_iterator;
using Languages = std::vector<std::string_view>;

std::string listed(const Languages& languages) {
  std::string list;
  for (const std::string_view language : languages) {
    list += (list.empty() ? "" : ", ") + std::string(language);
  }
  return list.empty() ? "none" : list;
}

// Each kept text's reference, version and language, sorted, and the languages
// of them all. The store keeps only texts with a language and a version.
class TextIndex {
public:
  TextIndex(const Catalogue& catalogue, const CatalogueCheck& check) {
    m_entries.reserve(check.kept.size());
    for (const std::size_t index : check.kept) {
      const Tovra::Mdib::LocalizedText& text = catalogue.texts.at(index).text;
      m_entries.push_back({text.ref().get().value(), text.version()->get(), text.lang()->tag(), index});
      noteLanguage(m_entries.back().lang);
    }
    std::sort(m_entries.begin(), m_entries.end());
  }

  const std::vector<Entry>& entries() const { return m_entries; }
  const Languages& languages() const { return m_languages; }

  std::pair<Entries, Entries> ofReference(std::string_view ref) const {
    return std::equal_range(m_entries.begin(), m_entries.end(), ref, ByReference());
  }

  // The entries of `version` within those of one reference.
  static std::pair<Entries, Entries> ofVersion(Entries first, Entries last, std::uint64_t version) {
    return std::equal_range(first, last, version, ByVersion());
  }

private:
  // A catalogue holds a million texts in a few dozen languages, mostly one
  // language after another: the last one seen answers most texts at once.
  void noteLanguage(std::string_view lang) {
    if (m_lastLanguage && lang == *m_lastLanguage) {
      return;
    }
    m_lastLanguage = lang;
    const auto at = std::lower_bound(m_languages.begin(), m_languages.end(), lang);
    if (at == m_languages.end() || *at != lang) {
      m_languages.insert(at, lang);
    }
  }

  struct ByReference {
    bool operator()(const Entry& entry, std::string_view ref) const { return entry.ref < ref; }
    bool operator()(std::string_view ref, const Entry& entry) const { return ref < entry.ref; }
  };
  struct ByVersion {
    bool operator()(const Entry& entry, std::uint64_t version) const { return entry.version < version; }
    bool operator()(std::uint64_t version, const Entry& entry) const { return version < entry.version; }
  };

  std::vector<Entry> m_entries;
  Languages m_languages;
  std::optional<std::string_view> m_lastLanguage;
};

// "version 2" or "versions 1, 2".
std::string versionsOf(Entries first, Entries last) {
  std::string list;
  bool several = false;
  for (auto at = first; at != last; at = TextIndex::ofVersion(at, last, at->version).second) {
    several = !list.empty();
    list += (several ? ", " : "") + std::to_string(at->version);
  }
  return (several ? "versions " : "version ") + list;
}

class CoverageChecker {
public:
  CoverageChecker(const MdibTexts& mdib, const Catalogue& catalogue, const CatalogueCheck& check)
      : m_mdib(mdib),
        m_catalogue(catalogue),
        m_check(check),
        m_index(catalogue, check),
        m_named(m_index.entries().size()) {}

  CoverageCheck run(bool allowUnused) && {
    if (m_mdib.uses.empty()) {
      // Most likely not the MDIB meant: nothing is covered,
      // however well the catalogue matches.
      const std::string file = m_mdib.files.empty() ? std::string() : m_mdib.files.front();
      m_result.findings.push_back({Finding::Kind::Empty, {file, 0, 0}, "the MDIB names no text"});
    }
    if (m_catalogue.texts.empty()) {
      // An MDIB given as the catalogue, say: the check tells why once, where
      // each reference would be missing.
      m_result.findings.insert(m_result.findings.end(), m_check.findings.begin(), m_check.findings.end());
    }
    for (const MdibTextUse& use : m_mdib.uses) {
      if (use.isInline) {
        add(Finding::Kind::Inline, use,
            "the text of '" + use.element + "'" + (use.lang ? " (Lang '" + *use.lang + "')" : std::string()) +
                " is given inline, where no catalogue can localize it");
      } else {
        checkReference(use);
      }
    }
    if (!allowUnused) {
      addUnused();
    }
    m_result.referencesNamed = m_coveredInEveryUse.size();
    m_result.covered =
        static_cast<std::size_t>(std::count_if(m_coveredInEveryUse.begin(), m_coveredInEveryUse.end(),
                                               [](const auto& reference) { return reference.second; }));
    return std::move(m_result);
  }

private:
  void checkReference(const MdibTextUse& use) {
    ++m_result.uses;
    bool& covered = m_coveredInEveryUse.emplace(use.ref, true).first->second;
    if (m_catalogue.texts.empty()) {
      covered = false;
      return;
    }
    const auto [first, last] = m_index.ofReference(use.ref);
    if (use.lang && !std::binary_search(m_index.languages().begin(), m_index.languages().end(), *use.lang)) {
      add(Finding::Kind::Language, use,
          "Lang '" + *use.lang + "' of reference '" + use.ref +
              "' is not a language of the catalogue (it has " + listed(m_index.languages()) + ")");
    }
    if (first == last) {
      covered = false;
      if (firstOf(use.ref, std::nullopt)) {
        add(Finding::Kind::Missing, use, "the catalogue has no text for reference '" + use.ref + "'");
      }
      return;
    }
    m_named[static_cast<std::size_t>(first - m_index.entries().begin())] = true;
    const std::uint64_t version = use.version ? *use.version : std::prev(last)->version;
    const auto [from, to] = TextIndex::ofVersion(first, last, version);
    if (from == to) {
      covered = false;
      if (firstOf(use.ref, version)) {
        add(Finding::Kind::Version, use,
            "the catalogue has reference '" + use.ref + "' in " + versionsOf(first, last) +
                ", not in version " + std::to_string(version));
      }
      return;
    }
    Languages held;
    std::transform(from, to, std::back_inserter(held), [](const Entry& entry) { return entry.lang; });
    held.erase(std::unique(held.begin(), held.end()), held.end());
    Languages lacking;
    std::set_difference(m_index.languages().begin(), m_index.languages().end(), held.begin(), held.end(),
                        std::back_inserter(lacking));
    covered = covered && lacking.empty();
    if (!lacking.empty() && firstOf(use.ref, version)) {
      add(Finding::Kind::Missing, use,
          "reference '" + use.ref + "' version " + std::to_string(version) + " lacks " + listed(lacking));
    }
  }

  // Whether this is the first finding of `ref` in `version`: a reference's
  // findings are told once, however often the MDIB names it.
  bool firstOf(std::string_view ref, std::optional<std::uint64_t> version) {
    return m_reported.emplace(ref, version).second;
  }

  // The references that no use names, each at its first kept text.
  void addUnused() {
    std::vector<std::pair<std::size_t, std::string_view>> unused;
    const std::vector<Entry>& entries = m_index.entries();
    for (auto at = entries.begin(); at != entries.end();) {
      const Entries end = m_index.ofReference(at->ref).second;
      if (!m_named[static_cast<std::size_t>(at - entries.begin())]) {
        const auto firstText =
            std::min_element(at, end, [](const Entry& lhs, const Entry& rhs) { return lhs.text < rhs.text; });
        unused.emplace_back(firstText->text, at->ref);
      }
      at = end;
    }
    std::sort(unused.begin(), unused.end());
    for (const auto& [text, ref] : unused) {
      m_result.findings.push_back({Finding::Kind::Unused, m_catalogue.location(m_catalogue.texts[text]),
                                   "reference '" + std::string(ref) + "' is not named by the MDIB"});
    }
  }

  void add(Finding::Kind kind, const MdibTextUse& use, std::string message) {
    m_result.findings.push_back({kind, m_mdib.location(use), std::move(message)});
  }

  const MdibTexts& m_mdib;
  const Catalogue& m_catalogue;
  const CatalogueCheck& m_check;
  const TextIndex m_index;
  // By the index of a reference's first entry: whether a use names it.
  std::vector<bool> m_named;
  std::set<std::pair<std::string_view, std::optional<std::uint64_t>>> m_reported;
  // By reference named: whether the catalogue covers every use of it.
  std::map<std::string_view, bool> m_coveredInEveryUse;
  CoverageCheck m_result;
};

}  // namespace

CoverageCheck checkCoverage(const MdibTexts& mdib, const Catalogue& catalogue, const CatalogueCheck& check,
                            bool allowUnused) {
  return CoverageChecker(mdib, catalogue, check).run(allowUnused);
}

}  // namespace Catalogue
}  // namespace Zalt
