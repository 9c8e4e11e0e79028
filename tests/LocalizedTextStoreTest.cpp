#include "TestSupport.h"

#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using namespace TestSupport;
using Zalt::Localization::Impl::LocalizedTextStore;

namespace {

LocalizedTextStore storeWith(const std::vector<MdibText>& texts) {
  LocalizedTextStore store;
  for (const MdibText& text : texts) {
    store.insert(text);
  }
  return store;
}

// A text of the group that the lookups below search: "hr" in de-DE.
MdibText hr(Width width, NumberOfLines lines, std::uint64_t version = 1) {
  return mdib("hr", "de-DE", version, width, lines);
}

// The best text for each width asked, with `lines` and `version`.
Labels best(const LocalizedTextStore& store, const std::vector<Width>& widths, Lines lines = any,
            std::uint64_t version = 1) {
  Labels result;
  for (const Width& width : widths) {
    result.push_back(label(store.text(reference("hr", version, width, lines), LanguageTag("de-DE"))));
  }
  return result;
}

Labels selected(const LocalizedTextStore& store, std::set<LocalizedTextWidth> widths,
                std::set<NumberOfLines> lines = {}) {
  return labels(store.texts(filter({}, any, {}, std::move(widths), std::move(lines))));
}

std::string consistencyFailure(const std::vector<MdibText>& texts) {
  const auto failure = failureOf([&] { storeWith(texts).checkConsistency(); });
  EXPECT_THAT(failure.file(), testing::EndsWith("Localization/Private/Common/LocalizedTextStore.cpp"));
  return failure.what();
}

TEST(LocalizedTextStoreTest, TextsOfAReferenceListThemInKeyOrderAndTheFirstTextUnderAKeyStays) {
  const auto store = storeWith({mdib("hr", "en-US", 1), mdib("hr", "de-DE", 1), mdib("h", "de-DE", 1),
                                mdib("hr", "de-DE", 3, lg, 1), mdib("hr", "de-DE", 3, sm, 2, "first"),
                                mdib("hr", "de-DE", 3, any, 1), mdib("hr", "de-DE", 3, sm, 2, "second"),
                                mdib("hr", "de-DE", 3), mdib("hr", "de-DE", 2, md, 1), mdib("hr", "de-de", 3),
                                mdib("hr", "en-US", 3), mdib("hr2", "de-DE", 1)});
  EXPECT_EQ(labels(store.texts(ref("hr"), any), true),
            (Labels{"hr de-DE 3 -1", "hr de-DE 3 s1", "hr de-DE 3 first", "hr de-DE 3 l1", "hr de-DE 2 m1",
                    "hr de-DE 1 s1", "hr de-de 3 s1", "hr en-US 3 s1", "hr en-US 1 s1"}));
  EXPECT_EQ(labels(store.texts(ref("hr"), VersionCounter(1)), true),
            (Labels{"hr de-DE 1 s1", "hr en-US 1 s1"}));
  EXPECT_EQ(store.texts(ref("hr"), VersionCounter(3)).at(2).numberOfLines(), 2U);
  EXPECT_TRUE(store.texts(ref("hr"), VersionCounter(4)).empty());
  EXPECT_TRUE(store.texts(ref("x"), any).empty());
}

TEST(LocalizedTextStoreTest, InsertIgnoresIncompleteTextsButNotMalformedOnes) {
  LocalizedTextStore store;
  store.insert({Utf8("x"), LanguageTag("de-DE"), ref(""), VersionCounter(1), sm});
  store.insert({Utf8("x"), boost::none, ref("hr"), VersionCounter(1), sm});
  store.insert({Utf8("x"), LanguageTag("de-DE"), ref("hr"), boost::none, sm});
  EXPECT_THROW(store.insert({Utf8("\x80"), boost::none, ref("hr"), VersionCounter(1), sm}),
               std::out_of_range);
  EXPECT_THROW(store.insert(mdib("hr", "de-DE", 1, sm, 1, "a\xC3")), std::out_of_range);
  EXPECT_TRUE(store.texts(filter()).empty());
}

TEST(LocalizedTextStoreTest, CopiesAreIndependentAndMovedFromStoresAreEmpty) {
  const auto store = storeWith({hr(sm, 1)});
  auto copy = store;
  copy.insert(hr(md, 1));
  LocalizedTextStore moved(std::move(copy));
  EXPECT_TRUE(copy.texts(filter()).empty());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(labels(store.texts(ref("hr"), any)), Labels{"s1"});
  EXPECT_EQ(labels(moved.texts(ref("hr"), any)), (Labels{"s1", "m1"}));
  moved.clear();
  EXPECT_EQ(moved.text(reference("hr", 1), LanguageTag("de-DE")), LocalizedText::empty());
}

TEST(LocalizedTextStoreTest, WidthOnlyLookupTakesTheOneLineTextOfTheWidthOrTheWidestNarrower) {
  const auto store = storeWith({hr(sm, 1), hr(sm, 3), hr(md, 1), mdib("ha", "de-DE", 1, lg, 1)});
  EXPECT_EQ(best(store, {md, lg, any, xs}), (Labels{"m1", "m1", "s1", ""}));
  EXPECT_EQ(best(storeWith({hr(sm, 1), hr(any, 2)}), {any}), Labels{"-2"});
  EXPECT_EQ(best(storeWith({hr(sm, 1), hr(sm, 3), hr(md, 2)}), {md}), Labels{"s3"});
  EXPECT_EQ(best(storeWith({hr(md, 2)}), {md}), Labels{""});
  // Only the asked version answers, never a neighbouring group.
  const auto versions = storeWith({hr(sm, 1, 2), hr(md, 1)});
  EXPECT_EQ(best(versions, {xs}), Labels{""});
  for (const std::uint64_t missing : {3U, 0U}) {
    EXPECT_EQ(best(versions, {any, md}, any, missing), (Labels{"", ""}));
  }
  EXPECT_EQ(versions.text(reference("hr", 2), LanguageTag("en-US")), LocalizedText::empty());
}

TEST(LocalizedTextStoreTest, LookupWithLinesTakesTheFittingTextWithMostLinesThenWidest) {
  const auto store = storeWith({hr(any, 2), hr(md, 1), hr(md, 2), hr(lg, 1)});
  EXPECT_EQ(best(store, {md}, 2U), Labels{"m2"});
  EXPECT_EQ(best(store, {md, any}, 1U), (Labels{"m1", "l1"}));
  EXPECT_EQ(best(store, {md}, 0U), Labels{""});
  EXPECT_EQ(best(store, {md}, 2U, 2), Labels{""});
  EXPECT_EQ(best(storeWith({hr(sm, 1), hr(md, 1)}), {xs}, 1U), Labels{""});
  EXPECT_EQ(store.text(reference("hr", 1, sm, 3U), LanguageTag("de-DE")),
            LocalizedText(Utf8("-2\n"), LanguageTag("de-DE"), ref("hr"), VersionCounter(1), any, 2));
}

TEST(LocalizedTextStoreTest, FilterFixesEachReferencesVersionByItsFirstAcceptedGroup) {
  const auto store =
      storeWith({mdib("z", "de-DE", 1), mdib("\xC3\xA4", "de-DE", 1), mdib("b", "en-US", 1),
                 mdib("b", "de-DE", 2), mdib("b", "de-DE", 1), mdib("b", "en-US", 3), mdib("b", "fr-FR", 2)});
  const std::set<LanguageTag> enAndFr{LanguageTag("en-US"), LanguageTag("fr-FR")};
  EXPECT_EQ(labels(store.texts(filter()), true),
            (Labels{"b de-DE 2 s1", "b fr-FR 2 s1", "z de-DE 1 s1", "\xC3\xA4 de-DE 1 s1"}));
  EXPECT_EQ(labels(store.texts(filter({}, any, enAndFr)), true), Labels{"b en-US 3 s1"});
  EXPECT_EQ(labels(store.texts(filter({}, 1U)), true),
            (Labels{"b de-DE 1 s1", "b en-US 1 s1", "z de-DE 1 s1", "\xC3\xA4 de-DE 1 s1"}));
  EXPECT_TRUE(store.texts(filter({}, any, {LanguageTag("it-IT")})).empty());

  // Naming references only restricts the whole-table answer to them.
  const std::set<LocalizedTextRef> named{ref("b"), ref("y"), ref("\xC3\xA4")};
  for (const auto& version : {boost::optional<std::uint64_t>(), boost::make_optional<std::uint64_t>(1)}) {
    for (const auto& languages :
         {std::set<LanguageTag>(), enAndFr, {LanguageTag("de-DE"), LanguageTag("en-US")}}) {
      Labels expected;
      for (const auto& text : store.texts(filter({}, version, languages))) {
        if (named.count(text.ref()) != 0) {
          expected.push_back(label(text, true));
        }
      }
      EXPECT_EQ(labels(store.texts(filter(named, version, languages)), true), expected);
    }
  }
}

TEST(LocalizedTextStoreTest, FilterByWidthOrLinesTakesTheLargestNotAboveEachWantedValue) {
  const auto store = storeWith({hr(any, 1), hr(sm, 1), hr(sm, 2), hr(md, 1), hr(lg, 1)});
  EXPECT_EQ(selected(store, {md}), Labels{"m1"});
  EXPECT_EQ(selected(store, {sm, md}), (Labels{"s1", "s2", "m1"}));
  EXPECT_EQ(selected(store, {md, xl}), (Labels{"m1", "l1"}));
  EXPECT_TRUE(selected(store, {xs}).empty());
  EXPECT_EQ(selected(store, {}), (Labels{"-1", "s1", "s2", "m1", "l1"}));

  const auto lines = storeWith({hr(sm, 1), hr(sm, 3), hr(md, 1), hr(md, 2)});
  EXPECT_EQ(selected(lines, {}, {2}), Labels{"m2"});
  EXPECT_EQ(selected(lines, {}, {1, 3}), (Labels{"s1", "m1", "s3"}));
  EXPECT_EQ(selected(storeWith({hr(any, 2), hr(sm, 1)}), {}, {2, 5}), Labels{"-2"});

  EXPECT_EQ(selected(storeWith({hr(sm, 1), hr(md, 1), hr(md, 3), hr(lg, 2)}), {md}, {1, 2}), Labels{"m1"});
  EXPECT_EQ(selected(storeWith({hr(sm, 1), hr(sm, 2), hr(md, 1), hr(lg, 1), hr(lg, 4)}), {sm, lg}, {3}),
            (Labels{"s2", "l1"}));
  EXPECT_TRUE(selected(storeWith({hr(any, 1), hr(md, 3)}), {md}, {1, 2}).empty());
  EXPECT_EQ(selected(storeWith({hr(any, 1), hr(md, 1)}), {md, lg}, {1}), Labels{"m1"});

  // A group of texts without a width has nothing to give a request by width.
  const auto widthless = storeWith({hr(any, 1), mdib("hr", "en-US", 1, any, 1), mdib("hr", "en-US", 1, md, 1),
                                    mdib("hr", "en-US", 1, lg, 1)});
  for (const auto& wantedLines : {std::set<NumberOfLines>{}, std::set<NumberOfLines>{1}}) {
    EXPECT_EQ(selected(widthless, {md}, wantedLines), Labels{"m1"});
  }
}

TEST(LocalizedTextStoreTest, ConsistencyNeedsTheLanguagesOfTheFirstReferencesLowestVersionEverywhere) {
  EXPECT_NO_THROW(storeWith({}).checkConsistency());
  EXPECT_NO_THROW(storeWith({mdib("a", "de-DE", 1), mdib("a", "en-US", 1), mdib("a", "en-US", 1, md, 2),
                             mdib("b", "de-DE", 2, any, 1), mdib("b", "en-US", 2, lg, 3)})
                      .checkConsistency());
  EXPECT_EQ(
      consistencyFailure({mdib("a", "de-DE", 1), mdib("a", "en-US", 1), mdib("b", "de-DE", 2)}),
      "(ref: b, ver:2) has inconsistent languages <de-DE> in relation to (ref: a, ver:1) with <de-DE,en-US>");
  EXPECT_EQ(
      consistencyFailure({mdib("a", "de-DE", 2), mdib("a", "en-US", 2), mdib("a", "de-DE", 1)}),
      "(ref: a, ver:2) has inconsistent languages <de-DE,en-US> in relation to (ref: a, ver:1) with <de-DE>");
  // A reference in the middle of the table is found as soon as the next one begins.
  EXPECT_EQ(consistencyFailure({mdib("a", "de-DE", 1), mdib("a", "en-US", 1), mdib("b", "en-US", 1),
                                mdib("b", "fr-FR", 1), mdib("c", "de-DE", 1), mdib("c", "en-US", 1)}),
            "(ref: b, ver:1) has inconsistent languages <en-US,fr-FR> in relation to (ref: a, ver:1) with "
            "<de-DE,en-US>");
}

}  // namespace
