// Zalt::Display::Private::KeptIndex: the texts that a device store keeps of a
// catalogue, by what the store files them under, so that an answer of the
// store finds its text's place in the catalogue, and each reference and
// version its texts.
//
//   const KeptIndex index(catalogue, check.kept);
//   for (const KeptIndex::Group& group : index.groups()) { ... index.placeOf(group, answer) ... }
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/SourceLocation.h>
#include <Zalt/Localization/LocalizedText.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace Zalt {
namespace Display {
namespace Private {

class KeptIndex {
public:
  // A reference and version, with where its texts stand in the index, so that
  // finding a text of it searches those alone.
  struct Group {
    std::string reference;
    std::uint64_t version;
    std::size_t begin;
    std::size_t end;
  };

  // The texts of `catalogue` at the indexes `kept`; `catalogue` outlives this.
  KeptIndex(const Catalogue::Catalogue& catalogue, const std::vector<std::size_t>& kept);

  // Each reference and version once, ascending.
  const std::vector<Group>& groups() const { return m_groups; }

  // Where `answer`, a text of `group`, stands.
  Catalogue::SourceLocation placeOf(const Group& group,
                                    const Zalt::Localization::LocalizedText& answer) const;

  // The first text in the catalogue of the reference and version in
  // `language`, or in any language where it has none in that one.
  Catalogue::SourceLocation placeOf(const Group& group, const std::string& language) const;

private:
  // What the store files a text under: reference, version, language, width
  // (-1 for none) and number of lines. It views the text's own strings, so
  // that the index of a large catalogue copies none of them.
  using StoreKey = std::tuple<std::string_view, std::uint64_t, std::string_view, int, std::size_t>;
  using GroupKey = std::pair<std::string_view, std::uint64_t>;
  struct GroupKeyHash {
    std::size_t operator()(const GroupKey& key) const {
      return std::hash<std::string_view>()(key.first) ^ (key.second * 0x9E3779B97F4A7C15u);
    }
  };

  struct Entry {
    StoreKey key;
    std::size_t index;
    // The order within one reference and version, whose strings need no
    // comparing there.
    bool operator<(const Entry& other) const {
      return std::tie(std::get<2>(key), std::get<3>(key), std::get<4>(key), index) <
             std::tie(std::get<2>(other.key), std::get<3>(other.key), std::get<4>(other.key), other.index);
    }
  };

  static StoreKey storeKey(const Tovra::Mdib::LocalizedText& text, std::size_t lines);

  const Catalogue::Catalogue& m_catalogue;
  std::vector<Entry> m_entries;
  std::vector<Group> m_groups;
};

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
