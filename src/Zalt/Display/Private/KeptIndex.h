// Zalt::Display::Private::KeptIndex: the texts that a device store keeps of a
// catalogue, grouped by reference and version, so that an answer of the store
// finds its text's place in the catalogue, and each reference and version its
// texts.
//
//   const KeptIndex index(catalogue, check.keyOrder);
//   for (const KeptIndex::Group& group : index.groups()) { ... index.placeOf(group, answer) ... }
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/SourceLocation.h>
#include <Zalt/Localization/LocalizedText.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
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

  // The texts of `catalogue` at the indexes `keyOrder`, in the store's key
  // order (CatalogueCheck::keyOrder); `catalogue` outlives this.
  KeptIndex(const Catalogue::Catalogue& catalogue, const std::vector<std::size_t>& keyOrder);

  // Each reference and version once, ascending.
  const std::vector<Group>& groups() const { return m_groups; }

  // Where `answer`, a text of `group`, stands.
  Catalogue::SourceLocation placeOf(const Group& group,
                                    const Zalt::Localization::LocalizedText& answer) const;

  // The first text in the catalogue of the reference and version in
  // `language`, or in any language where it has none in that one.
  Catalogue::SourceLocation placeOf(const Group& group, const std::string& language) const;

private:
  // A text of a group, ordered within it as the store orders its texts:
  // language, then width (-1 for none); the number of lines, the rest of the
  // store's key, is counted only for the few texts whose place is asked for.
  struct Entry {
    std::string_view language;
    int width;
    std::size_t index;
  };

  void addReference(std::vector<Entry>::iterator begin);

  const Catalogue::Catalogue& m_catalogue;
  std::vector<Entry> m_entries;
  std::vector<Group> m_groups;
};

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
