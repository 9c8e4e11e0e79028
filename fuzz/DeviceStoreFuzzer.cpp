// Fuzz target for the device store. The input is a sequence of operations on
// one store: batches of MDIB texts added through add (both forms) and addMany,
// and the queries text, localizedTexts and languages. A texts' bytes, refs and
// language tags come from the input or from a pool of typical values; any part
// may be missing and widths range beyond the six named ones.
//
// A model of the store (languages and the first text under each key) predicts
// every outcome. After every operation the target checks that
// - only Zalt::InternalConsistencyFailure (with its exact message) or
//   std::out_of_range (malformed UTF-8) leaves an add, and exactly when the
//   model says so; queries throw nothing;
// - languages() is the model's languages: sorted, without duplicates;
// - a second thread takes the store's lock at once;
// - every answer of text and localizedTexts is a stored text that fits the
//   request, and after a failed add every text accepted before it is served;
// - the store agrees with a core table that is given the same accepted texts
//   and checked as a whole after every call: the same consistency failure,
//   thrown from the same file and line, and the same answer to every filter.
#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include "ByteReader.h"
#include "FuzzCheck.h"
#include "PlainLineBreaks.h"

#include <boost/optional.hpp>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedTextFilter;
using Zalt::Localization::LocalizedTextReference;
using Zalt::Localization::NumberOfLines;
using Zalt::Localization::Device::LocalizedTextStoreImpl;
using MdibText = Tovra::Mdib::LocalizedText;
using Answer = Zalt::Localization::LocalizedText;

const std::vector<std::string>& textPool() {
  static const std::vector<std::string> pool{"",       "Herz",           "Alarm\r\nsilenced",
                                             "a\rb\r", "x\xE2\x80\xA8y", "1\n2\n3",
                                             "\x80",   "a\xC3",          "\xED\xA0\x80"};
  return pool;
}

const std::vector<std::string>& languagePool() {
  static const std::vector<std::string> pool{"en-US", "de-DE", "fr-CH", "en-us", "en", "", "en-US ", "e1-US"};
  return pool;
}

const std::vector<std::string>& refPool() {
  static const std::vector<std::string> pool{"hr", "spo2", "a", "", std::string("a\0b", 3)};
  return pool;
}

// ---- Reading operations from the input

VersionCounter readVersion(ZaltFuzz::ByteReader& in, bool anyValue) {
  // Mostly a few small versions, so that texts meet under one key.
  return VersionCounter(anyValue ? in.number64() : in.byte() % 3U);
}

LocalizedTextWidth readWidth(ZaltFuzz::ByteReader& in, bool anyValue) {
  const auto raw = static_cast<std::int8_t>(in.byte());
  if (!anyValue) {
    return static_cast<LocalizedTextWidth>(static_cast<std::uint8_t>(raw) % 6U);
  }
  if (raw == std::numeric_limits<std::int8_t>::min()) {
    return static_cast<LocalizedTextWidth>(std::numeric_limits<std::int32_t>::min());
  }
  if (raw == std::numeric_limits<std::int8_t>::max()) {
    return static_cast<LocalizedTextWidth>(std::numeric_limits<std::int32_t>::max());
  }
  return static_cast<LocalizedTextWidth>(raw);
}

MdibText readText(ZaltFuzz::ByteReader& in) {
  const std::uint8_t parts = in.byte();
  Utf8 value(in.string(textPool()));
  boost::optional<LanguageTag> language;
  if ((parts & 1U) != 0) {
    language = LanguageTag(in.string(languagePool()));
  }
  LocalizedTextRef ref(Utf8(in.string(refPool())));
  boost::optional<VersionCounter> version;
  if ((parts & 2U) != 0) {
    version = readVersion(in, (parts & 8U) != 0);
  }
  boost::optional<LocalizedTextWidth> width;
  if ((parts & 4U) != 0) {
    width = readWidth(in, (parts & 16U) != 0);
  }
  return MdibText(std::move(value), std::move(language), std::move(ref), version, width);
}

std::vector<MdibText> readBatch(ZaltFuzz::ByteReader& in) {
  std::vector<MdibText> texts;
  for (unsigned count = in.byte() % 8U; count > 0; --count) {
    texts.push_back(readText(in));
  }
  return texts;
}

LocalizedTextReference readReference(ZaltFuzz::ByteReader& in) {
  const std::uint8_t parts = in.byte();
  LocalizedTextRef ref(Utf8(in.string(refPool())));
  const VersionCounter version = readVersion(in, (parts & 8U) != 0);
  boost::optional<LocalizedTextWidth> width;
  if ((parts & 1U) != 0) {
    width = readWidth(in, (parts & 4U) != 0);
  }
  boost::optional<NumberOfLines> lines;
  if ((parts & 2U) != 0) {
    lines = (parts & 16U) != 0 ? static_cast<NumberOfLines>(in.number64()) : in.byte() % 5U;
  }
  return LocalizedTextReference(std::move(ref), version, width, lines);
}

LocalizedTextFilter readFilter(ZaltFuzz::ByteReader& in) {
  const std::uint8_t parts = in.byte();
  std::set<LocalizedTextRef> refs;
  for (unsigned count = parts % 4U; count > 0; --count) {
    refs.insert(LocalizedTextRef(Utf8(in.string(refPool()))));
  }
  boost::optional<VersionCounter> version;
  if ((parts & 4U) != 0) {
    version = readVersion(in, false);
  }
  std::set<LanguageTag> languages;
  for (unsigned count = (parts >> 3U) % 3U; count > 0; --count) {
    languages.insert(LanguageTag(in.string(languagePool())));
  }
  std::set<LocalizedTextWidth> widths;
  std::set<NumberOfLines> lines;
  const std::uint8_t sizes = in.byte();
  for (unsigned count = sizes % 4U; count > 0; --count) {
    widths.insert(readWidth(in, (sizes & 64U) != 0));
  }
  for (unsigned count = (sizes >> 2U) % 4U; count > 0; --count) {
    lines.insert(in.byte() % 5U);
  }
  return LocalizedTextFilter(std::move(refs), version, std::move(languages), std::move(widths),
                             std::move(lines));
}

// ---- The model

// The key order within one reference, language and version is the store's:
// no width first, then widths ascending, each by ascending number of lines.
using Key = std::tuple<std::string, std::string, std::uint64_t, bool, std::int32_t, NumberOfLines>;

Key keyOf(const std::string& ref, const std::string& language, std::uint64_t version,
          const boost::optional<LocalizedTextWidth>& width, NumberOfLines lines) {
  return Key(ref, language, version, static_cast<bool>(width), width ? static_cast<std::int32_t>(*width) : 0,
             lines);
}

const std::string& refOf(const Key& key) { return std::get<0>(key); }
const std::string& languageOf(const Key& key) { return std::get<1>(key); }
std::uint64_t versionOf(const Key& key) { return std::get<2>(key); }
boost::optional<LocalizedTextWidth> widthOf(const Key& key) {
  return std::get<3>(key) ? boost::make_optional(static_cast<LocalizedTextWidth>(std::get<4>(key)))
                          : boost::none;
}
NumberOfLines linesOf(const Key& key) { return std::get<5>(key); }

bool sameGroup(const Key& a, const Key& b) {
  return refOf(a) == refOf(b) && languageOf(a) == languageOf(b) && versionOf(a) == versionOf(b);
}

bool isLanguageAndCountry(const std::string& tag) {
  const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return tag.size() == 5 && letter(tag[0]) && letter(tag[1]) && tag[2] == '-' && letter(tag[3]) &&
         letter(tag[4]);
}

std::string setForm(const std::set<std::string>& languages) {
  std::string form = "<";
  for (const std::string& language : languages) {
    form += (form.size() > 1 ? "," : "") + language;
  }
  return form + ">";
}

std::string keyForm(const std::string& ref, std::uint64_t version) {
  return "(ref: " + ref + ", ver:" + std::to_string(version) + ")";
}

enum class Outcome { Accepted, Rejected, Malformed, Inconsistent };

struct Expectation {
  Outcome outcome;
  std::string message;
};

struct ThrowSite {
  std::string file;
  std::int32_t line;
};

class Model {
public:
  // Applies one add call as the store must, and says how it must end.
  Expectation add(const std::vector<MdibText>& texts) {
    for (const MdibText& text : texts) {
      if (!text.lang()) {
        return {Outcome::Rejected, "Cannot add localized text without language"};
      }
      if (!text.version()) {
        return {Outcome::Rejected, "Cannot add localized text without version"};
      }
      if (text.ref().get().empty()) {
        return {Outcome::Rejected, "Cannot add localized text without reference"};
      }
      const std::string& tag = text.lang()->tag();
      if (m_languages.count(tag) == 0) {
        if (!isLanguageAndCountry(tag)) {
          return {Outcome::Rejected,
                  "Invalid language tag (expected ll-CC (language + country), like 'en-US'), got: " + tag};
        }
        m_languages.insert(tag);
      }
      const boost::optional<unsigned int> breaks = ZaltFuzz::plainLineBreaks(text.text().value());
      if (!breaks) {
        return {Outcome::Malformed, ""};
      }
      m_texts.emplace(
          keyOf(text.ref().get().value(), tag, text.version()->get(), text.textWidth(), *breaks + 1),
          text.text().value());
      m_table.insert(text);
    }
    Expectation expected = consistencyFailure();
    m_wholeCheckSite = wholeCheckSite(expected);
    return expected;
  }

  // Where the whole table's check threw after the last add that reached it.
  const ThrowSite& wholeCheckSite() const { return m_wholeCheckSite; }

  // The same texts in a core table, which the device store must answer like.
  const Zalt::Localization::Impl::LocalizedTextStore& table() const { return m_table; }

  const std::set<std::string>& languages() const { return m_languages; }
  const std::map<Key, std::string>& texts() const { return m_texts; }

  const std::string* find(const Key& key) const {
    const auto it = m_texts.find(key);
    return it == m_texts.end() ? nullptr : &it->second;
  }

  // The entries of one reference, language and version, in key order.
  std::vector<std::pair<Key, std::string>> group(const std::string& ref, const std::string& language,
                                                 std::uint64_t version) const {
    const Key first(ref, language, version, false, 0, 0);
    std::vector<std::pair<Key, std::string>> entries;
    for (auto it = m_texts.lower_bound(first); it != m_texts.end() && sameGroup(it->first, first); ++it) {
      entries.emplace_back(*it);
    }
    return entries;
  }

  // The answer to a request with a number of lines: of the texts that fit, the
  // one with the most lines, and of those the last in key order (the widest).
  boost::optional<Key> bestFitByLines(const LocalizedTextReference& reference,
                                      const std::string& language) const {
    boost::optional<Key> best;
    for (const auto& entry : group(reference.ref.get().value(), language, reference.version.get())) {
      const boost::optional<LocalizedTextWidth> width = widthOf(entry.first);
      const bool fits = linesOf(entry.first) <= *reference.numberOfLines &&
                        (!reference.textWidth || !width || *width <= *reference.textWidth);
      if (fits && (!best || linesOf(entry.first) >= linesOf(*best))) {
        best = entry.first;
      }
    }
    return best;
  }

private:
  // The whole table's check must find what the model finds; where it throws
  // from is what the device store's exception must name.
  ThrowSite wholeCheckSite(const Expectation& expected) const {
    try {
      m_table.checkConsistency();
      FUZZ_CHECK(expected.outcome == Outcome::Accepted,
                 "the whole check passed, the model expected: " << expected.message);
    } catch (const Zalt::InternalConsistencyFailure& failure) {
      // what() is a C string: a reference with a NUL byte cuts the message short there.
      FUZZ_CHECK(expected.message.substr(0, expected.message.find('\0')) == failure.what(),
                 "the whole check found " << failure.what() << ", the model expected " << expected.message);
      return ThrowSite{failure.file(), failure.line()};
    }
    return ThrowSite{"", 0};
  }

  // Every reference must offer, in every version, the languages of the first
  // reference's lowest version; the first one that does not is reported.
  Expectation consistencyFailure() const {
    std::map<std::pair<std::string, std::uint64_t>, std::set<std::string>> languagesOf;
    for (const auto& entry : m_texts) {
      languagesOf[{refOf(entry.first), versionOf(entry.first)}].insert(languageOf(entry.first));
    }
    if (languagesOf.empty()) {
      return {Outcome::Accepted, ""};
    }
    const auto& reference = *languagesOf.begin();
    for (const auto& version : languagesOf) {
      if (version.second != reference.second) {
        return {Outcome::Inconsistent, keyForm(version.first.first, version.first.second) +
                                           " has inconsistent languages " + setForm(version.second) +
                                           " in relation to " +
                                           keyForm(reference.first.first, reference.first.second) + " with " +
                                           setForm(reference.second)};
      }
    }
    return {Outcome::Accepted, ""};
  }

  std::set<std::string> m_languages;
  std::map<Key, std::string> m_texts;
  Zalt::Localization::Impl::LocalizedTextStore m_table;
  ThrowSite m_wholeCheckSite{"", 0};
};

// ---- The second thread

// Runs a call on a thread of its own and tells whether it finished within a
// bounded wait. One thread serves all probes: starting a thread per call
// would cost more than the call under test.
class LockProbe {
public:
  LockProbe() : m_thread([this] { serve(); }) { m_thread.detach(); }

  bool completesInTime(const LocalizedTextStoreImpl& store) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_store = &store;
    m_done = false;
    m_wake.notify_one();
    // Generous, so that a loaded machine does not report a lock that was free.
    return m_finished.wait_for(lock, std::chrono::seconds(5), [this] { return m_done; });
  }

private:
  void serve() {
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
      m_wake.wait(lock, [this] { return m_store != nullptr; });
      const LocalizedTextStoreImpl* store = m_store;
      lock.unlock();
      store->languages();
      lock.lock();
      m_store = nullptr;
      m_done = true;
      m_finished.notify_one();
    }
  }

  std::mutex m_mutex;
  std::condition_variable m_wake;
  std::condition_variable m_finished;
  const LocalizedTextStoreImpl* m_store = nullptr;
  bool m_done = false;
  std::thread m_thread;
};

void checkLockIsFree(const LocalizedTextStoreImpl& store) {
  // Never destroyed: its detached thread outlives every input.
  static auto* const probe = new LockProbe;
  FUZZ_CHECK(probe->completesInTime(store), "languages() on a second thread did not get the lock");
}

// ---- The checks

void checkLanguages(const LocalizedTextStoreImpl& store, const Model& model) {
  const std::vector<LanguageTag> languages = store.languages();
  for (std::size_t i = 1; i < languages.size(); ++i) {
    FUZZ_CHECK(languages[i - 1] < languages[i], "languages() not sorted or duplicated at " << i);
  }
  std::vector<std::string> tags;
  tags.reserve(languages.size());
  for (const LanguageTag& language : languages) {
    tags.push_back(language.tag());
  }
  FUZZ_CHECK(tags == std::vector<std::string>(model.languages().begin(), model.languages().end()),
             "languages() lists " << tags.size() << " tags, expected " << model.languages().size());
}

// An answer that is not the empty text must be a stored text of the requested
// reference, language and version that fits the requested width and lines.
void checkAnswer(const Answer& answer, const LocalizedTextReference& reference, const LanguageTag& language,
                 const Model& model) {
  if (answer == Answer::empty()) {
    return;
  }
  FUZZ_CHECK(answer.lang() && *answer.lang() == language, "answer in another language");
  FUZZ_CHECK(answer.ref() == reference.ref, "answer for another reference");
  FUZZ_CHECK(answer.version() && *answer.version() == reference.version, "answer of another version");
  FUZZ_CHECK(!reference.numberOfLines || answer.numberOfLines() <= *reference.numberOfLines,
             "answer has " << answer.numberOfLines() << " lines, more than requested");
  FUZZ_CHECK(!reference.textWidth || !answer.textWidth() || *answer.textWidth() <= *reference.textWidth,
             "answer wider than requested");
  const std::string* stored =
      model.find(keyOf(reference.ref.get().value(), language.tag(), reference.version.get(),
                       answer.textWidth(), answer.numberOfLines()));
  FUZZ_CHECK(stored && *stored == answer.text().value(), "answer is not the text stored under its key");
}

void checkText(const LocalizedTextStoreImpl& store, const Model& model,
               const LocalizedTextReference& reference, const LanguageTag& language) {
  const Answer answer = store.text(reference, language);
  checkAnswer(answer, reference, language, model);
  const std::string& ref = reference.ref.get().value();
  if (reference.numberOfLines) {
    if (*reference.numberOfLines == 0) {
      FUZZ_CHECK(answer == Answer::empty(), "a text for a request of zero lines");
      return;
    }
    const boost::optional<Key> best = model.bestFitByLines(reference, language.tag());
    FUZZ_CHECK(best ? answer.textWidth() == widthOf(*best) && answer.numberOfLines() == linesOf(*best)
                    : answer == Answer::empty(),
               "not the best-fitting text of " << reference);
    return;
  }
  const Key oneLine = keyOf(ref, language.tag(), reference.version.get(), reference.textWidth, 1);
  if (model.find(oneLine)) {
    FUZZ_CHECK(answer.textWidth() == reference.textWidth && answer.numberOfLines() == 1,
               "a one-line text of the requested width exists but " << answer << " was chosen");
  }
  const auto group = model.group(ref, language.tag(), reference.version.get());
  if (!reference.textWidth && !group.empty()) {
    FUZZ_CHECK(answer.textWidth() == widthOf(group.front().first) &&
                   answer.numberOfLines() == linesOf(group.front().first),
               "without a width the group's first text must be chosen, not " << answer);
  }
}

void checkLocalizedTexts(const LocalizedTextStoreImpl& store, const Model& model,
                         const LocalizedTextFilter& filter) {
  const std::vector<MdibText> texts = store.localizedTexts(filter);
  FUZZ_CHECK(texts == model.table().texts(filter), "localizedTexts differs from the core table's answer");
  std::set<Key> seen;
  for (const MdibText& text : texts) {
    FUZZ_CHECK(text.lang() && text.version(), "a listed text without language or version");
    const boost::optional<unsigned int> breaks = ZaltFuzz::plainLineBreaks(text.text().value());
    FUZZ_CHECK(breaks, "a listed text with malformed UTF-8");
    const Key key = keyOf(text.ref().get().value(), text.lang()->tag(), text.version()->get(),
                          text.textWidth(), *breaks + 1);
    const std::string* stored = model.find(key);
    FUZZ_CHECK(stored && *stored == text.text().value(), "a listed text that is not stored under its key");
    FUZZ_CHECK(seen.insert(key).second, "a text listed twice");
    FUZZ_CHECK(filter.refs().empty() || filter.refs().count(text.ref()) != 0, "a text of another reference");
    FUZZ_CHECK(!filter.version() || *filter.version() == *text.version(), "a text of another version");
    FUZZ_CHECK(filter.languageTags().empty() || filter.languageTags().count(*text.lang()) != 0,
               "a text in another language");
    FUZZ_CHECK(filter.textWidths().empty() ||
                   (text.textWidth() && *text.textWidth() <= *filter.textWidths().rbegin()),
               "a text wider than every requested width, or without a width");
    FUZZ_CHECK(filter.numberOfLines().empty() || *breaks + 1 <= *filter.numberOfLines().rbegin(),
               "a text with more lines than every requested number");
  }
}

// Every stored text is still served: its whole group by localizedTexts, and
// the text itself by text() when it has a width.
void checkEverythingServed(const LocalizedTextStoreImpl& store, const Model& model) {
  for (auto it = model.texts().begin(); it != model.texts().end();) {
    const Key& first = it->first;
    std::vector<MdibText> expected;
    for (; it != model.texts().end() && sameGroup(it->first, first); ++it) {
      expected.emplace_back(Utf8(it->second), LanguageTag(languageOf(it->first)),
                            LocalizedTextRef(Utf8(refOf(it->first))), VersionCounter(versionOf(it->first)),
                            widthOf(it->first));
      if (widthOf(it->first)) {
        const LocalizedTextReference exact(LocalizedTextRef(Utf8(refOf(it->first))),
                                           VersionCounter(versionOf(it->first)), widthOf(it->first),
                                           linesOf(it->first));
        const Answer answer = store.text(exact, LanguageTag(languageOf(it->first)));
        FUZZ_CHECK(answer.text().value() == it->second && answer.textWidth() == widthOf(it->first) &&
                       answer.numberOfLines() == linesOf(it->first),
                   "stored text not served for " << exact << ", got " << answer);
      }
    }
    const LocalizedTextFilter filter({LocalizedTextRef(Utf8(refOf(first)))}, VersionCounter(versionOf(first)),
                                     {LanguageTag(languageOf(first))}, {}, {});
    FUZZ_CHECK(store.localizedTexts(filter) == expected, "localizedTexts does not list the group of "
                                                             << keyForm(refOf(first), versionOf(first))
                                                             << " in " << languageOf(first));
  }
}

// ---- One add call

void runAdd(LocalizedTextStoreImpl& store, Model& model, ZaltFuzz::ByteReader& in, std::uint8_t form) {
  std::vector<MdibText> texts = readBatch(in);
  const std::vector<MdibText> given = texts;
  const Expectation expected = model.add(texts);
  Outcome outcome = Outcome::Accepted;
  std::string message;
  std::string file;
  std::int32_t line = 0;
  try {
    switch (form % 3U) {
      case 0:
        store.add(std::move(texts));
        break;
      case 1:
        store.add(static_cast<const std::vector<MdibText>&>(texts));
        break;
      default:
        store.addMany(texts);
        break;
    }
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    message = failure.what();
    outcome = expected.outcome == Outcome::Inconsistent ? Outcome::Inconsistent : Outcome::Rejected;
    file = failure.file();
    line = failure.line();
  } catch (const std::out_of_range&) {
    outcome = Outcome::Malformed;
  }
  // Before anything else takes the lock on this thread, which would hang on a lock left held.
  checkLockIsFree(store);
  // what() is a C string: a language tag with a NUL byte cuts the message short there.
  const std::string expectedMessage = expected.message.substr(0, expected.message.find('\0'));
  FUZZ_CHECK(outcome == expected.outcome && message == expectedMessage,
             "add ended as " << static_cast<int>(outcome) << " (" << message << "), expected "
                             << static_cast<int>(expected.outcome) << " (" << expectedMessage << ")");
  const ThrowSite& site = model.wholeCheckSite();
  FUZZ_CHECK(outcome != Outcome::Inconsistent || (file == site.file && line == site.line),
             "inconsistency thrown from " << file << ":" << line << ", the whole check throws from "
                                          << site.file << ":" << site.line);
  // NOLINTNEXTLINE(bugprone-use-after-move): add reads the texts and leaves them as they were.
  FUZZ_CHECK(texts == given, "add changed the caller's texts");
  if (outcome != Outcome::Accepted) {
    checkEverythingServed(store, model);
  }
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  ZaltFuzz::ByteReader in(data, size);
  const std::shared_ptr<Zalt::Localization::Device::LocalizedTextStore> created =
      Zalt::Localization::Device::LocalizedTextStore::createLocalizedTextStore();
  auto& store = dynamic_cast<LocalizedTextStoreImpl&>(*created);
  Model model;
  try {
    while (!in.empty()) {
      const std::uint8_t operation = in.byte();
      switch (operation % 6U) {
        case 0:
        case 1:
        case 2:
          runAdd(store, model, in, operation);
          break;
        case 3:
          checkLanguages(store, model);
          break;
        case 4: {
          const LocalizedTextReference reference = readReference(in);
          checkText(store, model, reference, LanguageTag(in.string(languagePool())));
          break;
        }
        default:
          checkLocalizedTexts(store, model, readFilter(in));
          break;
      }
      checkLockIsFree(store);
    }
  } catch (const std::exception& error) {
    FUZZ_CHECK(false, "undocumented exception " << typeid(error).name() << ": " << error.what());
  }
  checkLanguages(store, model);
  checkEverythingServed(store, model);
  return 0;
}
