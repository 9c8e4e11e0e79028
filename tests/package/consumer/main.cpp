// Uses one exported entry point of each installed library, so that a symbol
// left hidden fails the link.
#include <Tovra/Format/Stream.h>
#include <Tovra/Locale/LanguageTag.h>
#include <Tovra/Mdib/LocalizedText.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextFilter.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <iostream>
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

  try {
    throw Zalt::InternalConsistencyFailure("boom", __FILE__, __LINE__);
  } catch (const Zalt::Exception& e) {
    expect(std::string(e.what()) == "boom", "exception");
  }

  if (failures == 0) {
    std::cout << "consumer: installed package works\n";
  }
  return failures == 0 ? 0 : 1;
}
