#include "TestSupport.h"

#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

using namespace TestSupport;
using Zalt::InternalConsistencyFailure;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;

namespace {

using Texts = std::vector<MdibText>;

class DeviceStore : public testing::Test {
protected:
  std::shared_ptr<LocalizedTextStore> store = LocalizedTextStore::createLocalizedTextStore();
  LocalizedTextStoreImpl& impl = dynamic_cast<LocalizedTextStoreImpl&>(*store);

  Labels all() const { return labels(impl.localizedTexts(filter()), true); }

  Labels languages() const {
    Labels tags;
    for (const LanguageTag& language : store->languages()) {
      tags.push_back(language.tag());
    }
    return tags;
  }

  InternalConsistencyFailure addFailure(Texts texts) {
    return failureOf([&] { store->add(std::move(texts)); });
  }
};

TEST_F(DeviceStore, RejectsIncompleteTextsInFixedOrderWithTheirOwnThrowSites) {
  const auto language = addFailure({{Utf8("x"), any, ref("r"), any, any}});
  const auto version = addFailure({{Utf8("x"), LanguageTag("en-US"), ref("r"), any, any}});
  const auto reference = addFailure({mdib("", "en-US", 1)});
  EXPECT_STREQ(language.what(), "Cannot add localized text without language");
  EXPECT_STREQ(version.what(), "Cannot add localized text without version");
  EXPECT_STREQ(reference.what(), "Cannot add localized text without reference");
  for (const char* tag : {"en", "en_US", "en-USA", "e1-US", "en-U5", "", "\xC3\xA4n-US"}) {
    EXPECT_EQ(
        addFailure({mdib("r", tag, 1)}).what(),
        "Invalid language tag (expected ll-CC (language + country), like 'en-US'), got: " + std::string(tag));
  }
  for (const auto& thrown : {language, version, reference, addFailure({mdib("r", "en", 1)})}) {
    EXPECT_THAT(thrown.file(), testing::EndsWith("Localization/ZaltOnly/Device/LocalizedTextStoreImpl.cpp"));
    EXPECT_THAT(thrown.file(), testing::Not(testing::StartsWith("/")));
  }
  EXPECT_NE(language.line(), version.line());
  EXPECT_TRUE(store->languages().empty());  // no rejected text leaves its language behind
  EXPECT_TRUE(all().empty());
}

TEST_F(DeviceStore, FailureKeepsTheTextsBeforeItAndTheStoreUsable) {
  const auto thrown = addFailure({mdib("hr", "de-DE", 1),
                                  {Utf8("x"), LanguageTag("fr-FR"), ref("a"), any, any},
                                  mdib("hr", "en-US", 1)});
  EXPECT_STREQ(thrown.what(), "Cannot add localized text without version");
  EXPECT_EQ(languages(), Labels{"de-DE"});
  EXPECT_EQ(all(), Labels{"hr de-DE 1 s1"});
  store->add({mdib("nose", "de-DE", 1)});
  EXPECT_EQ(all(), (Labels{"hr de-DE 1 s1", "nose de-DE 1 s1"}));
  // A text that passed the checks but cannot be counted leaves its language behind.
  EXPECT_THROW(store->add({mdib("a", "it-IT", 1, sm, 1, "\x80")}), std::out_of_range);
  EXPECT_EQ(languages(), (Labels{"de-DE", "it-IT"}));
  EXPECT_EQ(all().size(), 2U);
}

TEST_F(DeviceStore, EveryAddFormReadsTheCallersTextsAndChecksTheWholeTable) {
  const Texts english{mdib("hr", "en-US", 1), mdib("hr", "en-US", 1, lg, 2)};
  Texts forRvalue = english;
  store->add(english);
  store->add(std::move(forRvalue));
  store->addMany(english);
  EXPECT_EQ(forRvalue, english);  // NOLINT(bugprone-use-after-move): elements are read, not moved from
  EXPECT_EQ(all(), (Labels{"hr en-US 1 s1", "hr en-US 1 l2"}));
  EXPECT_EQ(languages(), Labels{"en-US"});

  // Each form checks the whole table after its batch; the batch stays stored.
  const Texts german{mdib("nose", "de-DE", 1)};
  const std::function<void(LocalizedTextStore&)> forms[] = {
      [&](LocalizedTextStore& target) { target.add(german); },
      [&](LocalizedTextStore& target) { target.add(Texts(german)); },
      [&](LocalizedTextStore& target) { target.addMany(german); },
  };
  for (const auto& add : forms) {
    const auto fresh = LocalizedTextStore::createLocalizedTextStore();
    fresh->add(english);
    const auto thrown = failureOf([&] { add(*fresh); });
    EXPECT_STREQ(
        thrown.what(),
        "(ref: nose, ver:1) has inconsistent languages <de-DE> in relation to (ref: hr, ver:1) with <en-US>");
    EXPECT_THAT(thrown.file(), testing::EndsWith("Localization/Private/Common/LocalizedTextStore.cpp"));
    EXPECT_EQ(fresh->text(reference("nose", 1), LanguageTag("de-DE")).text(), Utf8("s1"));
    EXPECT_THROW(fresh->add(Texts{}), InternalConsistencyFailure);  // an empty batch is checked too
  }
  store->add({mdib("hr", "de-DE", 1), mdib("hr", "en-US", 1, sm, 1, "dropped")});
  EXPECT_EQ(languages(), (Labels{"de-DE", "en-US"}));  // sorted, each once
  EXPECT_EQ(all(), (Labels{"hr de-DE 1 s1", "hr en-US 1 s1", "hr en-US 1 l2"}));
}

}  // namespace
