// Uses one exported entry point of each installed library, so that a symbol
// left hidden fails the link.
#include <Tovra/Format/Stream.h>
#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/LocalizedTextReferenceStore.h>
#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>
#include <Zalt/Localization/SliceReferences.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <iostream>
#include <set>
#include <sstream>
#include <string>

namespace {

int failures = 0;

void expect(bool condition, const std::string& what) {
  if (!condition) {
    std::cerr << "consumer: " << what << " failed\n";
    ++failures;
  }
}

}  // namespace

int main() {
  using Tovra::Locale::LanguageTag;
  using Tovra::Locale::Utf8;
  using Tovra::Mdib::LocalizedTextRef;
  using Tovra::Mdib::LocalizedTextWidth;
  using Tovra::Mdib::VersionCounter;
  namespace Localization = Zalt::Localization;

  const Localization::LocalizedTextReference reference(LocalizedTextRef(Utf8("hr")), VersionCounter(3),
                                                       LocalizedTextWidth::Medium, 2u);
  std::ostringstream printed;
  printed << reference;
  expect(printed.str() == "(hr,3, Medium, 2)", "reference on std::ostream");

  const Localization::LocalizedText text(Utf8("Herz"), LanguageTag("de-DE"), LocalizedTextRef(Utf8("hr")),
                                         VersionCounter(3), LocalizedTextWidth::Medium, 1);
  Tovra::Format::Stream formatted;
  formatted << text;
  expect(std::string(formatted.cStr()) ==
             "(de-DE:'Herz', ref=hr, refVersion=3, width=Medium, numberOfLines=1)",
         "text on Format::Stream");

  expect(Localization::Impl::numberOfLineBreaks(Utf8("a\r\nb")) == 1, "line breaks");
  expect(LanguageTag("en-US").is2LetterLangAnd2LetterCountry(), "language tag form");

  const Localization::LocalizedTextFilter filter({}, VersionCounter(1), {}, {}, {});
  expect(filter.version() == VersionCounter(1), "filter");

  const auto store = Localization::Device::LocalizedTextStore::createLocalizedTextStore();
  store->add({Tovra::Mdib::LocalizedText(Utf8("Herz"), LanguageTag("de-DE"), LocalizedTextRef(Utf8("hr")),
                                         VersionCounter(3), LocalizedTextWidth::Medium)});
  expect(store->text(reference, LanguageTag("de-DE")).text() == Utf8("Herz"), "device store text");
  expect(store->languages().size() == 1, "device store languages");
  const auto& impl = dynamic_cast<const Localization::Device::LocalizedTextStoreImpl&>(*store);
  expect(impl.localizedTexts(filter).empty(), "device store filter query");
  try {
    store->add({Tovra::Mdib::LocalizedText(Utf8("x"))});
    expect(false, "device store rejects a text without language");
  } catch (const Zalt::InternalConsistencyFailure& e) {
    expect(std::string(e.what()) == "Cannot add localized text without language", "exception");
  }

  Localization::Impl::LocalizedTextStore core;
  core.insert(Tovra::Mdib::LocalizedText(Utf8("Heart"), LanguageTag("en-US"), LocalizedTextRef(Utf8("hr")),
                                         VersionCounter(3), boost::none));
  expect(core.texts(LocalizedTextRef(Utf8("hr")), boost::none).size() == 1, "core store");

  Localization::LocalizedTextReferenceStore tracked;
  tracked.add(reference);
  tracked.add(Localization::LocalizedTextReference(LocalizedTextRef(Utf8("ab")), VersionCounter(1)));
  expect(tracked.isCovered(reference), "reference store");
  expect(Localization::makeFilters(tracked.data(), LanguageTag("de-DE")).size() == 2, "makeFilters");
  expect(Localization::sliceReferences(std::set<Localization::LocalizedTextReference>(tracked.data())).has_value(),
         "sliceReferences");

  if (failures == 0) {
    std::cout << "consumer: installed package works\n";
  }
  return failures == 0 ? 0 : 1;
}
