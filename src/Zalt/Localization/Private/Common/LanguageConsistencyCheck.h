// Zalt::Localization::Impl::LanguageConsistencyCheck: one walk of the core
// store's table that finds the first reference and version whose languages
// differ from those of the first reference's lowest version. It reads keys
// only and throws nothing; the store turns a mismatch into its exception, and
// the catalogue checker, which walks its own keys in the same order, reports
// the same words.
//
//   LanguageConsistencyCheck check;
//   for (auto it = table.begin(); it != table.end() && check.visit(it->first); ++it) {
//   }
//   if (!check.finish()) report(check.mismatch());
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreKey.h>
#include <Zalt/LtsExport.h>

#include <functional>
#include <map>
#include <set>
#include <string>

namespace Zalt {
namespace Localization {
namespace Impl {

// The sets refer to the references and tags that the caller visits, so the
// check copies none; they must outlive it.
class ZALT_LTS_EXPORT LanguageConsistencyCheck {
public:
  // Keys must come in table order, which keeps each reference's keys together.
  // False once a mismatch has been found; later keys are not looked at.
  bool visit(const LocalizedTextStoreKey& key) { return visit(key.ref, key.languageTag, key.version); }
  bool visit(const Tovra::Mdib::LocalizedTextRef& ref, const Tovra::Locale::LanguageTag& languageTag,
             const Tovra::Mdib::VersionCounter& version);

  // Checks the reference visited last. False if it or an earlier one mismatched.
  bool finish();

  // The first mismatch, worded for the store's exception; empty while there is none.
  const std::string& mismatch() const { return m_mismatch; }
  // The reference and version that the mismatch names first; meaningful only
  // once mismatch() is not empty.
  const Tovra::Mdib::LocalizedTextRef& mismatchedRef() const { return *m_ref; }
  const Tovra::Mdib::VersionCounter& mismatchedVersion() const { return m_mismatchedVersion; }

private:
  using LanguageSet = std::set<std::reference_wrapper<const Tovra::Locale::LanguageTag>, std::less<>>;

  bool checkReference();

  const Tovra::Mdib::LocalizedTextRef* m_ref = nullptr;
  std::map<Tovra::Mdib::VersionCounter, LanguageSet> m_languagesByVersion;
  const Tovra::Mdib::LocalizedTextRef* m_expectedRef = nullptr;
  Tovra::Mdib::VersionCounter m_expectedVersion;
  LanguageSet m_expectedLanguages;
  std::string m_mismatch;
  Tovra::Mdib::VersionCounter m_mismatchedVersion;
};

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
