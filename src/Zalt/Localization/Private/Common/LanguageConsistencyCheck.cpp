#include <Zalt/Localization/Private/Common/LanguageConsistencyCheck.h>

#include <Zalt/Localization/Private/Common/InternalForms.h>

#include <algorithm>
#include <new>
#include <sstream>

namespace Zalt {
namespace Localization {
namespace Impl {
namespace {

using LanguageSet = std::set<std::reference_wrapper<const Tovra::Locale::LanguageTag>, std::less<>>;

bool haveSameTags(const LanguageSet& lhs, const LanguageSet& rhs) {
  return std::equal(lhs.begin(), lhs.end(), rhs.begin(), rhs.end(),
                    [](const Tovra::Locale::LanguageTag& left, const Tovra::Locale::LanguageTag& right) {
                      return left == right;
                    });
}

}  // namespace

bool LanguageConsistencyCheck::visit(const Tovra::Mdib::LocalizedTextRef& ref,
                                     const Tovra::Locale::LanguageTag& languageTag,
                                     const Tovra::Mdib::VersionCounter& version) {
  if (!m_mismatch.empty()) {
    return false;
  }
  if (m_ref != nullptr && ref != *m_ref && !checkReference()) {
    return false;
  }
  m_ref = &ref;
  m_languagesByVersion[version].insert(std::cref(languageTag));
  return true;
}

bool LanguageConsistencyCheck::finish() { return m_mismatch.empty() && checkReference(); }

// Every reference is measured against the languages of the first one's lowest
// version, which the first reference sets when its keys end.
bool LanguageConsistencyCheck::checkReference() {
  if (m_languagesByVersion.empty()) {
    return true;
  }
  if (m_expectedLanguages.empty()) {
    const auto& lowest = *m_languagesByVersion.begin();
    m_expectedRef = m_ref;
    m_expectedVersion = lowest.first;
    m_expectedLanguages = lowest.second;
  }
  for (const auto& [version, languages] : m_languagesByVersion) {
    if (!haveSameTags(languages, m_expectedLanguages)) {
      std::ostringstream out;
      out << keyForm(*m_ref, version) << " has inconsistent languages " << languageSetForm(languages)
          << " in relation to " << keyForm(*m_expectedRef, m_expectedVersion) << " with "
          << languageSetForm(m_expectedLanguages);
      // A string stream that cannot grow cuts the message short.
      if (!out) {
        throw std::bad_alloc();
      }
      m_mismatch = out.str();
      m_mismatchedVersion = version;
      return false;
    }
  }
  m_languagesByVersion.clear();
  return true;
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
