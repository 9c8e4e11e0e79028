// Calls into every exported class of the installed libraries, so that a
// symbol left hidden fails the link and a broken install fails the run.
#include <Tovra/Format/Stream.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedTextReferenceStore.h>
#include <Zalt/Localization/MakeFilters.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>
#include <Zalt/Localization/SliceReferences.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <iostream>
#include <sstream>
#include <string>

int main() {
  using Tovra::Locale::LanguageTag;
  using Tovra::Locale::Utf8;
  using Tovra::Mdib::LocalizedTextRef;
  using Tovra::Mdib::VersionCounter;
  namespace Localization = Zalt::Localization;

  const LanguageTag german("de-DE");
  const Localization::LocalizedTextReference reference(LocalizedTextRef(Utf8("hr")), VersionCounter(3),
                                                       Tovra::Mdib::LocalizedTextWidth::Medium, 1u);
  const auto store = Localization::Device::LocalizedTextStore::createLocalizedTextStore();
  store->add({Tovra::Mdib::LocalizedText(Utf8("Herz"), german, reference.ref, reference.version,
                                         reference.textWidth)});
  const auto text = store->text(reference, german);
  const auto& impl = dynamic_cast<const Localization::Device::LocalizedTextStoreImpl&>(*store);
  const auto all = impl.localizedTexts(Localization::LocalizedTextFilter({}, boost::none, {}, {}, {}));

  std::string rejection;
  try {
    store->add({Tovra::Mdib::LocalizedText(Utf8("x"))});
  } catch (const Zalt::InternalConsistencyFailure& e) {
    rejection = e.what();
  }

  Localization::LocalizedTextReferenceStore tracked;
  tracked.add(reference);
  tracked.add(Localization::LocalizedTextReference(LocalizedTextRef(Utf8("ab")), VersionCounter(1)));
  const auto requests = Localization::makeFilters(tracked.data(), german);
  const auto halves =
      Localization::sliceReferences(std::set<Localization::LocalizedTextReference>(tracked.data()));

  Tovra::Format::Stream formatted;
  formatted << text;
  std::ostringstream printed;
  printed << reference;

  const bool works = text.text() == Utf8("Herz") && all.size() == 1 && store->languages().size() == 1 &&
                     rejection == "Cannot add localized text without language" &&
                     tracked.isCovered(reference) && requests.size() == 2 && halves &&
                     Localization::Impl::numberOfLineBreaks(Utf8("a\nb")) == 1 &&
                     std::string(formatted.cStr()) ==
                         "(de-DE:'Herz', ref=hr, refVersion=3, width=Medium, numberOfLines=1)" &&
                     printed.str() == "(hr,3, Medium, 1)";
  std::cout << (works ? "consumer: installed package works\n" : "consumer: installed package is broken\n");
  return works ? 0 : 1;
}
