#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedTextFilter;
using Zalt::Localization::LocalizedTextReference;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;
using MdibText = Tovra::Mdib::LocalizedText;

MdibText mdib(const std::string& value, const std::string& language, const std::string& ref,
              std::uint64_t version, boost::optional<LocalizedTextWidth> width = boost::none) {
  return MdibText(Utf8(value), LanguageTag(language), LocalizedTextRef(Utf8(ref)), VersionCounter(version),
                  width);
}

LocalizedTextReference reference(const std::string& ref, std::uint64_t version) {
  return {LocalizedTextRef(Utf8(ref)), VersionCounter(version)};
}

LocalizedTextFilter everything() { return LocalizedTextFilter({}, boost::none, {}, {}, {}); }

std::vector<std::string> tags(const std::vector<LanguageTag>& languages) {
  std::vector<std::string> result;
  for (const auto& language : languages) {
    result.push_back(language.tag());
  }
  return result;
}

class DeviceStore : public testing::Test {
protected:
  std::shared_ptr<LocalizedTextStore> store = LocalizedTextStore::createLocalizedTextStore();
  LocalizedTextStoreImpl& impl = dynamic_cast<LocalizedTextStoreImpl&>(*store);

  // The exception that add throws; a test failure if it throws none.
  template <typename Texts>
  Zalt::InternalConsistencyFailure addFailure(Texts&& texts) {
    try {
      store->add(std::forward<Texts>(texts));
    } catch (const Zalt::InternalConsistencyFailure& e) {
      return e;
    }
    ADD_FAILURE() << "add did not throw";
    return Zalt::InternalConsistencyFailure("", "", 0);
  }
};

TEST_F(DeviceStore, FreshStoresAreEmptyAndIndependent) {
  const auto other = LocalizedTextStore::createLocalizedTextStore();
  other->add({mdib("Herz", "de-DE", "hr", 1)});

  EXPECT_TRUE(store->languages().empty());
  EXPECT_TRUE(impl.localizedTexts(everything()).empty());
  EXPECT_EQ(store->text(reference("hr", 1), LanguageTag("de-DE")),
            Zalt::Localization::LocalizedText::empty());
  EXPECT_EQ(tags(other->languages()), std::vector<std::string>{"de-DE"});
}

TEST_F(DeviceStore, RejectsIncompleteTextsInFixedOrderWithTheirOwnThrowSites) {
  const MdibText noLanguageNoVersion(Utf8("x"), boost::none, LocalizedTextRef(Utf8("r")), boost::none,
                                     boost::none);
  const MdibText noVersion(Utf8("x"), LanguageTag("en-US"), LocalizedTextRef(Utf8("r")), boost::none,
                           boost::none);
  const MdibText noReference = mdib("x", "en-US", "", 1);

  const auto language = addFailure(std::vector<MdibText>{noLanguageNoVersion});
  const auto version = addFailure(std::vector<MdibText>{noVersion});
  const auto ref = addFailure(std::vector<MdibText>{noReference});
  const auto tag = addFailure(std::vector<MdibText>{mdib("x", "en", "r", 1)});

  EXPECT_STREQ(language.what(), "Cannot add localized text without language");
  EXPECT_STREQ(version.what(), "Cannot add localized text without version");
  EXPECT_STREQ(ref.what(), "Cannot add localized text without reference");
  EXPECT_STREQ(tag.what(),
               "Invalid language tag (expected ll-CC (language + country), like 'en-US'), got: en");
  for (const auto& failure : {language, version, ref, tag}) {
    EXPECT_THAT(failure.file(), testing::EndsWith("Localization/ZaltOnly/Device/LocalizedTextStoreImpl.cpp"));
    EXPECT_THAT(failure.file(), testing::Not(testing::StartsWith("/")));
  }
  EXPECT_NE(language.line(), version.line());
  EXPECT_NE(ref.line(), tag.line());
  EXPECT_TRUE(store->languages().empty());  // no rejected text leaves its language behind
}

TEST_F(DeviceStore, FailureKeepsTheTextsBeforeItAndTheStoreUsable) {
  const MdibText noVersion(Utf8("x"), LanguageTag("fr-FR"), LocalizedTextRef(Utf8("a")), boost::none,
                           boost::none);
  const auto failure = addFailure(
      std::vector<MdibText>{mdib("Herz", "de-DE", "hr", 1), noVersion, mdib("Heart", "en-US", "hr", 1)});

  EXPECT_STREQ(failure.what(), "Cannot add localized text without version");
  EXPECT_EQ(tags(store->languages()), std::vector<std::string>{"de-DE"});
  EXPECT_EQ(impl.localizedTexts(everything()), std::vector<MdibText>{mdib("Herz", "de-DE", "hr", 1)});
  EXPECT_EQ(store->text(reference("hr", 1), LanguageTag("de-DE")).text(), Utf8("Herz"));

  store->add({mdib("Nase", "de-DE", "nose", 1)});
  EXPECT_EQ(impl.localizedTexts(everything()).size(), 2U);
}

TEST_F(DeviceStore, MalformedUtf8KeepsTheLanguageButNotTheText) {
  EXPECT_THROW(store->add({mdib("\x80", "it-IT", "a", 1)}), std::out_of_range);
  EXPECT_EQ(tags(store->languages()), std::vector<std::string>{"it-IT"});
  EXPECT_TRUE(impl.localizedTexts(everything()).empty());
}

TEST_F(DeviceStore, AddFormsReadTheCallersTextsAndListEachLanguageOnce) {
  const std::vector<MdibText> original{mdib("Heart", "en-US", "hr", 1), mdib("Herz", "de-DE", "hr", 1),
                                       mdib("Heart!", "en-US", "hr", 1, LocalizedTextWidth::Large)};
  std::vector<MdibText> constCopy = original;
  std::vector<MdibText> rvalueCopy = original;

  store->add(constCopy);
  store->add(std::move(rvalueCopy));
  store->addMany({mdib("Nase", "de-DE", "nose", 1), mdib("Nose", "en-US", "nose", 1)});

  EXPECT_EQ(constCopy, original);
  EXPECT_EQ(rvalueCopy, original);  // NOLINT(bugprone-use-after-move): elements are read, not moved from
  EXPECT_EQ(impl.localizedTexts(everything()).size(), 5U);
  EXPECT_EQ(tags(store->languages()), (std::vector<std::string>{"de-DE", "en-US"}));  // sorted, each once
}

TEST_F(DeviceStore, EveryAddChecksLanguageConsistencyOfTheWholeTable) {
  store->add({mdib("A", "de-DE", "a", 1), mdib("A", "en-US", "a", 1)});
  const auto failure = addFailure(std::vector<MdibText>{mdib("B", "de-DE", "b", 2)});

  EXPECT_STREQ(
      failure.what(),
      "(ref: b, ver:2) has inconsistent languages <de-DE> in relation to (ref: a, ver:1) with <de-DE,en-US>");
  EXPECT_THAT(failure.file(), testing::EndsWith("Localization/Private/Common/LocalizedTextStore.cpp"));
  EXPECT_EQ(store->text(reference("b", 2), LanguageTag("de-DE")).text(), Utf8("B"));  // the text stays
  // The check runs for an empty batch too, so the table is still reported.
  EXPECT_THROW(store->add(std::vector<MdibText>{}), Zalt::InternalConsistencyFailure);
}

}  // namespace
