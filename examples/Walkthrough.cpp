// A bedside monitor's texts, from the provider that loads and serves them to
// the consumer that plans its requests for them.
//
// Provider: create a device store, load a catalogue in three languages, list
// the languages, fit texts to three displays, answer a filter, and see what a
// bad batch reports and what stays stored.
// Consumer: track the references met while rendering, skip the ones already
// covered, plan requests for one language, halve a plan that is too large for
// one request, and check that every tracked reference got its text.
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedTextReferenceStore.h>
#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/SliceReferences.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include "catalogue/WalkthroughCatalogue.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::FilterAndReferences;
using Zalt::Localization::LocalizedTextFilter;
using Zalt::Localization::LocalizedTextReference;
using Zalt::Localization::LocalizedTextReferenceStore;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;
using MdibText = Tovra::Mdib::LocalizedText;
using References = std::set<LocalizedTextReference>;
// The catalogue is built in catalogue/WalkthroughCatalogue.cpp, which a test
// compares with catalogue/walkthrough.xml, the same texts as a catalogue file.
using ZaltExamples::loadCatalogue;

const LanguageTag english("en-US");
const LanguageTag german("de-DE");
const LanguageTag french("fr-FR");

MdibText mdibText(const char* value, const LanguageTag& language, const char* ref, std::uint64_t version,
                  LocalizedTextWidth width) {
  return MdibText(Utf8(value), language, LocalizedTextRef(Utf8(ref)), VersionCounter(version), width);
}

LocalizedTextReference reference(const char* ref, std::uint64_t version,
                                 boost::optional<LocalizedTextWidth> width = boost::none,
                                 boost::optional<Zalt::Localization::NumberOfLines> lines = boost::none) {
  return LocalizedTextReference(LocalizedTextRef(Utf8(ref)), VersionCounter(version), width, lines);
}

void heading(const char* title) { std::cout << "\n== " << title << '\n'; }

// Texts on one line, a line break shown as " | ".
std::string oneLine(const Utf8& text) {
  std::string shown;
  for (const char c : text.value()) {
    shown += c == '\n' ? std::string(" | ") : std::string(1, c);
  }
  return "'" + shown + "'";
}

void showLanguages(const LocalizedTextStore& store) {
  std::cout << "languages:";
  for (const LanguageTag& language : store.languages()) {
    std::cout << ' ' << language;
  }
  std::cout << '\n';
}

void showBestFit(const LocalizedTextStore& store) {
  struct Display {
    const char* name;
    LocalizedTextWidth width;
    Zalt::Localization::NumberOfLines lines;
  };
  const Display displays[] = {{"status bar  (Small, 1 line)     ", LocalizedTextWidth::Small, 1},
                              {"main panel  (Medium, 2 lines)   ", LocalizedTextWidth::Medium, 2},
                              {"detail view (ExtraLarge, 2 lines)", LocalizedTextWidth::ExtraLarge, 2}};
  for (const char* ref : {"alarm.hr.high", "button.silence"}) {
    std::cout << ref << ":\n";
    for (const Display& display : displays) {
      const auto text = store.text(reference(ref, 2, display.width, display.lines), german);
      std::cout << "  " << display.name << " -> " << oneLine(text.text()) << " (" << *text.textWidth() << ", "
                << text.numberOfLines() << (text.numberOfLines() == 1 ? " line)\n" : " lines)\n");
    }
  }
  std::cout << "as logged: "
            << store.text(reference("alarm.hr.high", 2, LocalizedTextWidth::Small, 1u), german) << '\n';
  std::cout << "nothing fits: "
            << store.text(reference("alarm.hr.high", 2, LocalizedTextWidth::ExtraSmall, 0u), german) << '\n';
}

void showFilterQuery(const LocalizedTextStoreImpl& store) {
  const LocalizedTextFilter filter(
      {LocalizedTextRef(Utf8("alarm.hr.high")), LocalizedTextRef(Utf8("label.spo2"))}, VersionCounter(2),
      {english}, {LocalizedTextWidth::Medium}, {});
  std::cout << "alarm.hr.high and label.spo2, version 2, en-US, width Medium (or the widest narrower one):\n";
  for (const MdibText& text : store.localizedTexts(filter)) {
    std::cout << "  " << text.ref() << ' ' << *text.textWidth() << ": " << oneLine(text.text()) << '\n';
  }
}

void tryToAdd(LocalizedTextStore& store, std::vector<MdibText> batch) {
  try {
    store.add(std::move(batch));
    std::cout << "added\n";
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    std::cout << "rejected: " << failure.what() << '\n';
  }
}

void showBadBatches(LocalizedTextStore& store, const LocalizedTextStoreImpl& impl) {
  const MdibText withoutVersion(Utf8("Temperature"), english, LocalizedTextRef(Utf8("label.temp")),
                                boost::none, LocalizedTextWidth::Large);
  std::cout << "a text without version: ";
  tryToAdd(store, {withoutVersion});
  std::cout << "a batch whose third text is tagged 'fr': ";
  tryToAdd(store, {mdibText("Temp", english, "label.temp", 1, LocalizedTextWidth::Small),
                   mdibText("Temp", german, "label.temp", 1, LocalizedTextWidth::Small),
                   mdibText("Temp", LanguageTag("fr"), "label.temp", 1, LocalizedTextWidth::Small),
                   mdibText("Température", french, "label.temp", 1, LocalizedTextWidth::Large)});

  const LocalizedTextFilter temperature({LocalizedTextRef(Utf8("label.temp"))}, boost::none, {}, {}, {});
  std::cout << "stored from that batch:";
  for (const MdibText& text : impl.localizedTexts(temperature)) {
    std::cout << ' ' << *text.lang() << ':' << oneLine(text.text());
  }
  std::cout << '\n';
  showLanguages(store);
  std::cout << "still serving: "
            << oneLine(store.text(reference("label.spo2", 2, LocalizedTextWidth::Small, 1u), french).text())
            << '\n';
  std::cout << "label.temp lacks fr-FR until the corrected text arrives: ";
  tryToAdd(store, {mdibText("Temp", french, "label.temp", 1, LocalizedTextWidth::Small)});
}

LocalizedTextReferenceStore referencesMetWhileRendering() {
  LocalizedTextReferenceStore met;
  // The status bar: one small line each.
  for (const char* ref : {"alarm.hr.high", "button.silence", "label.spo2"}) {
    met.add(reference(ref, 2, LocalizedTextWidth::Small, 1u));
  }
  met.add(reference("label.temp", 1, LocalizedTextWidth::Small, 1u));
  // The main panel: medium width, two lines.
  met.add(reference("alarm.hr.high", 2, LocalizedTextWidth::Medium, 2u));
  met.add(reference("button.silence", 2, LocalizedTextWidth::Medium, 2u));
  // The trend view needs every variant of label.spo2, the settings page every
  // medium variant of button.silence: both swallow narrower references.
  met.add(reference("label.spo2", 2));
  met.add(reference("button.silence", 2, LocalizedTextWidth::Medium));
  return met;
}

void showTracking(LocalizedTextReferenceStore& met) {
  std::cout << "8 references met, " << met.size() << " kept:\n";
  for (const LocalizedTextReference& tracked : met.data()) {
    std::cout << "  " << tracked << '\n';
  }
  for (const LocalizedTextReference& candidate :
       {reference("label.spo2", 2, LocalizedTextWidth::Large, 1u),
        reference("button.silence", 2, LocalizedTextWidth::Medium, 1u),
        reference("alarm.hr.high", 2, LocalizedTextWidth::Large, 1u)}) {
    std::cout << "isCovered" << candidate << ": "
              << (met.isCovered(candidate) ? "yes, no request needed" : "no, request it") << '\n';
  }
}

// Halves a plan until every part fits into one request.
std::vector<References> withinLimit(References plan, std::size_t limit) {
  if (plan.size() <= limit) {
    return {std::move(plan)};
  }
  auto halves = Zalt::Localization::sliceReferences(std::move(plan));
  std::cout << "  " << halves->first.size() + halves->second.size() << " references exceed the limit of "
            << limit << ": halves of " << halves->first.size() << " and " << halves->second.size() << '\n';
  std::vector<References> parts = withinLimit(std::move(halves->first), limit);
  for (References& part : withinLimit(std::move(halves->second), limit)) {
    parts.push_back(std::move(part));
  }
  return parts;
}

void showFilter(const LocalizedTextFilter& filter) {
  std::cout << "  filter: version " << *filter.version() << ", refs";
  for (const LocalizedTextRef& ref : filter.refs()) {
    std::cout << ' ' << ref;
  }
  for (const LocalizedTextWidth width : filter.textWidths()) {
    std::cout << ", width " << width;
  }
  for (const Zalt::Localization::NumberOfLines lines : filter.numberOfLines()) {
    std::cout << ", lines " << lines;
  }
  std::cout << '\n';
}

bool answers(const MdibText& text, const LocalizedTextReference& wanted) {
  return text.ref() == wanted.ref && text.version() == wanted.version &&
         (!wanted.textWidth || (text.textWidth() && *text.textWidth() <= *wanted.textWidth));
}

void requestEverything(LocalizedTextReferenceStore& met, const LocalizedTextStoreImpl& provider) {
  constexpr std::size_t requestLimit = 4;
  std::size_t answered = 0;
  std::size_t requests = 0;
  for (References& part : withinLimit(met.data(), requestLimit)) {
    for (const FilterAndReferences& request : Zalt::Localization::makeFilters(part, german)) {
      ++requests;
      showFilter(request.filter);
      const std::vector<MdibText> answer = provider.localizedTexts(request.filter);
      for (const MdibText& text : answer) {
        std::cout << "    " << text.ref() << ' ' << *text.textWidth() << ": " << oneLine(text.text()) << '\n';
      }
      for (const LocalizedTextReference& wanted : request.references) {
        answered += std::any_of(answer.begin(), answer.end(),
                                [&](const MdibText& text) { return answers(text, wanted); })
                        ? 1
                        : 0;
      }
    }
  }
  std::cout << answered << " of " << met.size() << " tracked references got their text in " << requests
            << " requests\n";
}

}  // namespace

int main() {
  const std::shared_ptr<LocalizedTextStore> store = LocalizedTextStore::createLocalizedTextStore();
  const auto& provider = dynamic_cast<const LocalizedTextStoreImpl&>(*store);

  heading("Provider: load the catalogue");
  const std::vector<MdibText> texts = loadCatalogue();
  store->add(texts);
  std::cout << "loaded " << texts.size() << " texts\n";
  showLanguages(*store);

  heading("Provider: best fit in German for three displays (version 2)");
  showBestFit(*store);

  heading("Provider: a filter query");
  showFilterQuery(provider);

  heading("Provider: bad batches");
  showBadBatches(*store, provider);

  heading("Consumer: track the references met while rendering");
  LocalizedTextReferenceStore met = referencesMetWhileRendering();
  showTracking(met);

  heading("Consumer: plan German requests of at most four references and answer them");
  requestEverything(met, provider);
}
