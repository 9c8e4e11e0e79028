// Prints a few of the library's values in their logged forms.
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <iostream>

int main() {
  using Tovra::Locale::LanguageTag;
  using Tovra::Locale::Utf8;
  using Tovra::Mdib::LocalizedTextRef;
  using Tovra::Mdib::LocalizedTextWidth;
  using Tovra::Mdib::VersionCounter;
  namespace Localization = Zalt::Localization;

  const Utf8 caption("Alarm\nsilenced");
  const Localization::LocalizedText text(caption, LanguageTag("en-US"), LocalizedTextRef(Utf8("alarm.silenced")),
                                         VersionCounter(2), LocalizedTextWidth::Small,
                                         Localization::Impl::numberOfLineBreaks(caption) + 1);
  const Localization::LocalizedTextReference request(LocalizedTextRef(Utf8("alarm.silenced")), VersionCounter(2),
                                                     LocalizedTextWidth::Medium, 2u);
  std::cout << "text:      " << text << '\n'
            << "reference: " << request << '\n'
            << "empty:     " << Localization::LocalizedText::empty() << '\n';
}
