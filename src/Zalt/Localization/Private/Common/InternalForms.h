// Compact printed forms of a text reference with its version and of a set of
// language tags, used to name the offender in the store's consistency message:
//
//   std::ostringstream out;
//   out << keyForm(ref, version);     // (ref: hr, ver:3)
//   out << languageSetForm(tags);     // <de-DE,en-US>
#pragma once

#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/VersionCounter.h>

#include <ostream>

namespace Zalt {
namespace Localization {
namespace Impl {

struct KeyForm {
  const Tovra::Mdib::LocalizedTextRef& ref;
  const Tovra::Mdib::VersionCounter& version;
};

inline KeyForm keyForm(const Tovra::Mdib::LocalizedTextRef& ref, const Tovra::Mdib::VersionCounter& version) {
  return KeyForm{ref, version};
}

inline std::ostream& operator<<(std::ostream& out, const KeyForm& key) {
  return out << "(ref: " << key.ref.get().value() << ", ver:" << key.version.get() << ")";
}

// Tags is any range whose elements convert to const LanguageTag&, such as a
// set of tags or a set of std::reference_wrapper<const LanguageTag>.
template <typename Tags>
struct LanguageSetForm {
  const Tags& tags;
};

template <typename Tags>
LanguageSetForm<Tags> languageSetForm(const Tags& tags) {
  return LanguageSetForm<Tags>{tags};
}

template <typename Tags>
std::ostream& operator<<(std::ostream& out, const LanguageSetForm<Tags>& set) {
  out << "<";
  const char* separator = "";
  for (const Tovra::Locale::LanguageTag& tag : set.tags) {
    out << separator << tag.tag();
    separator = ",";
  }
  return out << ">";
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
