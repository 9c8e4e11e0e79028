#include <Zalt/Localization/LocalizedTextReferenceStore.h>

#include <iterator>

namespace Zalt {
namespace Localization {
namespace {

// The entries of one text reference and version are adjacent, and this key,
// having no width and no number of lines, orders before all of them.
LocalizedTextReference runKey(const LocalizedTextReference& reference) {
  return {reference.ref, reference.version};
}

bool isInRunOf(const LocalizedTextReference& entry, const LocalizedTextReference& reference) {
  return entry.ref == reference.ref && entry.version == reference.version;
}

// An absent width or number of lines of `broader` matches anything; a present one
// matches only an equal one.
bool covers(const LocalizedTextReference& broader, const LocalizedTextReference& narrower) {
  return isInRunOf(broader, narrower) && (!broader.textWidth || broader.textWidth == narrower.textWidth) &&
         (!broader.numberOfLines || broader.numberOfLines == narrower.numberOfLines);
}

bool isFullyQualified(const LocalizedTextReference& reference) {
  return reference.textWidth && reference.numberOfLines;
}

}  // namespace

void LocalizedTextReferenceStore::add(const LocalizedTextReference& reference) {
  // An entry that covers `reference` has no field that `reference` lacks and
  // agrees on the others, so it orders no later than `reference`: the walk can
  // end where `reference` belongs, and that place is the insertion hint.
  auto it = m_references.lower_bound(runKey(reference));
  for (; it != m_references.end() && *it < reference; ++it) {
    if (covers(*it, reference)) {
      return;
    }
  }
  if (it != m_references.end() && *it == reference) {
    return;
  }

  // Inserting before erasing leaves the store untouched if the insertion throws.
  // `reference` may alias an entry only if that entry equals it, which returned above.
  const auto inserted = m_references.insert(it, reference);
  if (isFullyQualified(reference)) {
    return;
  }
  // What `reference` covers orders after it, within its run.
  for (auto next = std::next(inserted); next != m_references.end() && isInRunOf(*next, reference);) {
    next = covers(reference, *next) ? m_references.erase(next) : std::next(next);
  }
}

void LocalizedTextReferenceStore::merge(const LocalizedTextReferenceStore& other) {
  for (const auto& reference : other.m_references) {
    add(reference);
  }
}

void LocalizedTextReferenceStore::replaceWith(std::set<LocalizedTextReference>&& references) {
  if (&references == &m_references) {
    return;
  }
  m_references.clear();
  m_references.swap(references);
}

bool LocalizedTextReferenceStore::isCovered(const LocalizedTextReference& reference) const {
  for (auto it = m_references.lower_bound(runKey(reference));
       it != m_references.end() && isInRunOf(*it, reference); ++it) {
    if (covers(*it, reference)) {
      return true;
    }
  }
  return false;
}

}  // namespace Localization
}  // namespace Zalt
