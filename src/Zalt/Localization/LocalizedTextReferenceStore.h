// Zalt::Localization::LocalizedTextReferenceStore: a consumer's record of the
// text references it has already asked for, kept free of redundancy. A
// reference X covers a reference Y of the same text reference and version when
// each of X's width and number of lines is either absent or equal to Y's; an
// absent field is a wildcard. `add` drops a reference that is already covered
// and removes the entries that a new, broader reference covers.
//
//   LocalizedTextReferenceStore store;
//   store.add(LocalizedTextReference(ref, VersionCounter(3)));
//   store.isCovered(LocalizedTextReference(ref, VersionCounter(3), LocalizedTextWidth::Small));  // true
//   store.isCovered(LocalizedTextReference(ref, VersionCounter(4)));  // false: versions must match
//
// Not locked: a store belongs to one thread at a time.
#pragma once

#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/LtsExport.h>

#include <cstdint>
#include <set>

namespace Zalt {
namespace Localization {

class ZALT_LTS_EXPORT LocalizedTextReferenceStore {
public:
  // Inserts `reference` unless an entry covers it, after removing the entries it covers.
  void add(const LocalizedTextReference& reference);

  // `add` of every entry of `other`, in ascending order.
  void merge(const LocalizedTextReferenceStore& other);

  // Takes over `references` as they are, without removing covered ones, and leaves
  // `references` empty. Passing the store's own set (from `data`) changes nothing.
  void replaceWith(std::set<LocalizedTextReference>&& references);

  // True when some entry covers `reference`.
  bool isCovered(const LocalizedTextReference& reference) const;

  // The entries themselves. Changes made here are not checked for covered entries.
  std::set<LocalizedTextReference>& data() { return m_references; }

  // The number of entries.
  std::uint64_t size() const { return m_references.size(); }

private:
  std::set<LocalizedTextReference> m_references;
};

}  // namespace Localization
}  // namespace Zalt
