#include <Tovra/Format/Stream.h>
#include <Zalt/Localization/LocalizedText.h>
#include <Zalt/Localization/LocalizedTextReference.h>
#include <Zalt/Localization/Private/Common/InternalForms.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <set>
#include <sstream>
#include <string>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedText;
using Zalt::Localization::LocalizedTextReference;

template <typename T>
std::string onOstream(const T& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

template <typename T>
std::string onFormatStream(const T& value) {
  Tovra::Format::Stream out;
  out << value;
  return out.cStr();
}

LocalizedTextRef textRef(const std::string& name) { return LocalizedTextRef(Utf8(name)); }

TEST(PrintedForms, LocalizedTextIsTheSameOnBothStreams) {
  const LocalizedText herz(Utf8("Herz"), LanguageTag("de-DE"), textRef("hr"), VersionCounter(3),
                           LocalizedTextWidth::Medium, 1);
  const LocalizedText quoted(Utf8("it's"), boost::none, textRef(""), VersionCounter(UINT64_MAX), boost::none,
                             2);
  const LocalizedText unknownWidth(Utf8(""), LanguageTag("en-US"), textRef("x"), boost::none,
                                   static_cast<LocalizedTextWidth>(6), 1);

  const std::pair<LocalizedText, std::string> cases[] = {
      {herz, "(de-DE:'Herz', ref=hr, refVersion=3, width=Medium, numberOfLines=1)"},
      {LocalizedText::empty(), "('', numberOfLines=1)"},
      {quoted, "('it's', refVersion=18446744073709551615, numberOfLines=2)"},
      {unknownWidth, "(en-US:'', ref=x, width=[Unknown LocalizedTextWidth], numberOfLines=1)"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(onFormatStream(text), expected);
    EXPECT_EQ(onOstream(text), expected);
  }
}

TEST(PrintedForms, LocalizedTextOnOstreamEndsAtANulByte) {
  const LocalizedText text(Utf8(std::string("ab\0cd", 5)), boost::none, textRef("r"), boost::none,
                           boost::none, 1);
  EXPECT_EQ(onOstream(text), "('ab");
}

TEST(PrintedForms, ReferenceDiffersBetweenStreamsInTheBlanksBeforeOptionals) {
  const LocalizedTextReference full(textRef("hr"), VersionCounter(3), LocalizedTextWidth::Medium, 2u);
  const LocalizedTextReference plain(textRef("hr"), VersionCounter(3));
  const LocalizedTextReference negativeWidth(textRef("hr"), VersionCounter(0),
                                             static_cast<LocalizedTextWidth>(-1));

  EXPECT_EQ(onFormatStream(full), "(hr,3,Medium,2)");
  EXPECT_EQ(onOstream(full), "(hr,3, Medium, 2)");
  EXPECT_EQ(onFormatStream(plain), "(hr,3,--,--)");
  EXPECT_EQ(onOstream(plain), "(hr,3,--,--)");
  EXPECT_EQ(onFormatStream(negativeWidth), "(hr,0,[Unknown LocalizedTextWidth],--)");
  EXPECT_EQ(onOstream(negativeWidth), "(hr,0, [Unknown LocalizedTextWidth],--)");
}

TEST(PrintedForms, ReferenceWithOnlyALineCount) {
  EXPECT_EQ(onOstream(LocalizedTextReference(textRef("hr"), VersionCounter(3), boost::none, 2u)),
            "(hr,3,--, 2)");
  EXPECT_EQ(onFormatStream(LocalizedTextReference(textRef("hr"), VersionCounter(3), boost::none, 2u)),
            "(hr,3,--,2)");
}

TEST(PrintedForms, InternalKeyAndLanguageSetForms) {
  const LanguageTag de("de-DE");
  const LanguageTag en("en-US");
  const std::set<std::reference_wrapper<const LanguageTag>, std::less<LanguageTag>> tags{en, de};
  std::ostringstream out;
  out << Zalt::Localization::Impl::keyForm(textRef("hr"), VersionCounter(3)) << ' '
      << Zalt::Localization::Impl::languageSetForm(tags) << ' '
      << Zalt::Localization::Impl::languageSetForm(std::set<LanguageTag>{});
  EXPECT_EQ(out.str(), "(ref: hr, ver:3) <de-DE,en-US> <>");
}

}  // namespace
