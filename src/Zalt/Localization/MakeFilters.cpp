#include <Zalt/Localization/MakeFilters.h>

#include <map>
#include <tuple>
#include <utility>

namespace Zalt {
namespace Localization {
namespace {

using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;

// boost::optional orders an absent value first, which puts the filters without a
// width or a number of lines before the others.
using GroupKey =
    std::tuple<VersionCounter, boost::optional<LocalizedTextWidth>, boost::optional<NumberOfLines>>;

struct Group {
  std::set<LocalizedTextRef> refs;
  std::set<LocalizedTextReference> references;
};

template <typename T>
std::set<T> setOf(const boost::optional<T>& value) {
  return value ? std::set<T>{*value} : std::set<T>{};
}

FilterAndReferences makeRequest(const GroupKey& key, Group&& group,
                                const Tovra::Locale::LanguageTag& language) {
  return FilterAndReferences{
      LocalizedTextFilter(std::move(group.refs), std::get<VersionCounter>(key), {language},
                          setOf(std::get<boost::optional<LocalizedTextWidth>>(key)),
                          setOf(std::get<boost::optional<NumberOfLines>>(key))),
      std::move(group.references)};
}

}  // namespace

std::vector<FilterAndReferences> makeFilters(const std::set<LocalizedTextReference>& references,
                                             const Tovra::Locale::LanguageTag& language) {
  std::map<GroupKey, Group> groups;
  for (const auto& reference : references) {
    auto& group = groups[GroupKey(reference.version, reference.textWidth, reference.numberOfLines)];
    // The input is walked in ascending order, so both sets grow at their end.
    group.refs.insert(group.refs.end(), reference.ref);
    group.references.insert(group.references.end(), reference);
  }

  std::vector<FilterAndReferences> requests;
  requests.reserve(groups.size());
  for (auto& [key, group] : groups) {
    requests.push_back(makeRequest(key, std::move(group), language));
  }
  return requests;
}

}  // namespace Localization
}  // namespace Zalt
