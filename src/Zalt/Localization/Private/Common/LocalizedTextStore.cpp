#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>

#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Errors/Throw.h>
#include <Zalt/Localization/Private/Common/LanguageConsistencyCheck.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStoreGroups.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <iterator>
#include <string_view>
#include <utility>

namespace Zalt {
namespace Localization {
namespace Impl {
namespace {

// An absent width on either side places no limit.
bool fits(const LocalizedTextStoreKey& key, const LocalizedTextReference& reference) {
  return key.numberOfLines <= *reference.numberOfLines &&
         (!reference.textWidth || !key.textWidth || *key.textWidth <= *reference.textWidth);
}

// Both checks throw from here, so that a mismatch is reported alike whichever
// walk found it.
void throwOnMismatch(LanguageConsistencyCheck& check) {
  if (!check.finish()) {
    ZALT_THROW(InternalConsistencyFailure, check.mismatch());
  }
}

}  // namespace

LocalizedTextStore::LocalizedTextStore() = default;

// A copy's keys are new strings, so the copy starts without a consistency record.
LocalizedTextStore::LocalizedTextStore(const LocalizedTextStore& other) : m_table(other.m_table) {}

// A moved-from std::map is only valid, not necessarily empty; exchanging
// guarantees the empty source that callers may rely on.
// NOLINTNEXTLINE(performance-noexcept-move-constructor): a fresh table may allocate its sentinel.
LocalizedTextStore::LocalizedTextStore(LocalizedTextStore&& other)
    : m_table(std::exchange(other.m_table, Table())) {
  other.m_consistency = ConsistencyRecord();
}

LocalizedTextStore& LocalizedTextStore::operator=(const LocalizedTextStore& other) {
  m_table = other.m_table;
  m_consistency = ConsistencyRecord();
  return *this;
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): a fresh table may allocate its sentinel.
LocalizedTextStore& LocalizedTextStore::operator=(LocalizedTextStore&& other) {
  m_table = std::exchange(other.m_table, Table());
  m_consistency = ConsistencyRecord();
  other.m_consistency = ConsistencyRecord();
  return *this;
}

LocalizedTextStore::~LocalizedTextStore() = default;

void LocalizedTextStore::clear() {
  m_table.clear();
  m_consistency = ConsistencyRecord();
}

void LocalizedTextStore::insert(const Tovra::Mdib::LocalizedText& text) {
  // Counted first, so malformed UTF-8 is reported whether or not the text is complete.
  const NumberOfLines numberOfLines = numberOfLineBreaks(text.text()) + 1;
  if (text.ref().get().empty() || !text.lang() || !text.version()) {
    return;
  }
  // try_emplace leaves an existing entry untouched: the first text filed under a key stays.
  // Hinted at the end, a text that orders after every filed one, as each of a
  // catalogue in key order does, is filed without a descent; any other costs
  // one comparison more than without the hint.
  m_table.try_emplace(
      m_table.end(),
      LocalizedTextStoreKey{text.ref(), *text.lang(), *text.version(), text.textWidth(), numberOfLines},
      text.text());
}

LocalizedText LocalizedTextStore::text(const LocalizedTextReference& reference,
                                       const Tovra::Locale::LanguageTag& language) const {
  const auto it = textIt(reference, language);
  return it == m_table.end() ? LocalizedText::empty() : toLocalizedText(*it);
}

LocalizedTextStore::Table::const_iterator LocalizedTextStore::textIt(
    const LocalizedTextReference& reference, const Tovra::Locale::LanguageTag& language) const {
  if (!reference.numberOfLines) {
    return textItByTextWidth(reference, language);
  }
  if (*reference.numberOfLines == 0) {
    return m_table.end();
  }
  return textItByTextWidthAndNumberOfLines(reference, language);
}

LocalizedTextStore::Table::const_iterator LocalizedTextStore::textItByTextWidth(
    const LocalizedTextReference& reference, const Tovra::Locale::LanguageTag& language) const {
  const LocalizedTextStoreKeyView wanted{reference.ref.get().value(), language.tag(), reference.version,
                                         reference.textWidth, 1};
  const auto candidate = m_table.lower_bound(wanted);
  if (candidate != m_table.end()) {
    if (compare(wanted, viewOf(candidate->first)) == 0) {
      return candidate;
    }
    // With no width asked for, the group's first text answers: one without a
    // width if there is any, else the narrowest.
    if (!reference.textWidth && isSameGroup(candidate->first, wanted)) {
      return candidate;
    }
  }
  // Otherwise the text just before the one-line key of the wanted width
  // answers: the widest narrower width, with its most lines. A text of the
  // wanted width that has more than one line is stepped over on purpose.
  if (candidate == m_table.begin()) {
    return m_table.end();
  }
  const auto previous = std::prev(candidate);
  return isSameGroup(previous->first, wanted) ? previous : m_table.end();
}

LocalizedTextStore::Table::const_iterator LocalizedTextStore::textItByTextWidthAndNumberOfLines(
    const LocalizedTextReference& reference, const Tovra::Locale::LanguageTag& language) const {
  const LocalizedTextStoreKeyView first =
      groupStart(reference.ref.get().value(), language.tag(), reference.version);
  auto best = m_table.end();
  // The group runs from narrow to wide, so letting a later fit with as many
  // lines win picks the widest of the texts with the most lines.
  for (auto it = m_table.lower_bound(first); it != m_table.end() && isSameGroup(it->first, first); ++it) {
    if (fits(it->first, reference) &&
        (best == m_table.end() || best->first.numberOfLines <= it->first.numberOfLines)) {
      best = it;
    }
  }
  return best;
}

std::vector<LocalizedText> LocalizedTextStore::texts(
    const Tovra::Mdib::LocalizedTextRef& ref,
    const boost::optional<Tovra::Mdib::VersionCounter>& version) const {
  std::vector<LocalizedText> result;
  for (auto it = m_table.lower_bound(referenceStart(ref.get().value()));
       it != m_table.end() && it->first.ref == ref; ++it) {
    if (!version || it->first.version == *version) {
      result.push_back(toLocalizedText(*it));
    }
  }
  return result;
}

void LocalizedTextStore::checkConsistency() const {
  LanguageConsistencyCheck check;
  for (auto it = m_table.begin(); it != m_table.end() && check.visit(it->first); ++it) {
  }
  throwOnMismatch(check);
}

// When every other reference is known to agree with the first one, this walk
// meets the same first mismatch as the walk over the whole table.
void LocalizedTextStore::checkConsistencyOfFirstAnd(std::string_view ref) const {
  LanguageConsistencyCheck check;
  const auto visitReference = [this, &check](Table::const_iterator it) {
    const Tovra::Mdib::LocalizedTextRef& current = it->first.ref;
    for (; it != m_table.end() && it->first.ref == current && check.visit(it->first); ++it) {
    }
  };
  visitReference(m_table.begin());
  const auto start = m_table.lower_bound(referenceStart(ref));
  if (start != m_table.begin() && start != m_table.end()) {
    visitReference(start);
  }
  throwOnMismatch(check);
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
