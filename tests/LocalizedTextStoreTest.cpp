#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>

#include <Zalt/Errors/InternalConsistencyFailure.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

using namespace Zalt::Localization;
using Impl::LocalizedTextStore;
using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Width = boost::optional<LocalizedTextWidth>;
using Labels = std::vector<std::string>;

namespace {

constexpr auto xs = LocalizedTextWidth::ExtraSmall;
constexpr auto sm = LocalizedTextWidth::Small;
constexpr auto md = LocalizedTextWidth::Medium;
constexpr auto lg = LocalizedTextWidth::Large;
const boost::none_t any = boost::none;

LocalizedTextRef ref(const char* name) { return LocalizedTextRef(Utf8(name)); }

// Its content is a label ("m2"; "-1" without width) followed by the line feeds that make it `lines` long.
Tovra::Mdib::LocalizedText mdib(const char* refName, const char* lang, std::uint64_t version,
                                Width width = sm, NumberOfLines lines = 1, std::string label = "") {
  if (label.empty()) {
    label = (width ? std::string(1, "xsml"[static_cast<int>(*width)]) : "-") + std::to_string(lines);
  }
  return {Utf8(label + std::string(lines - 1, '\n')), LanguageTag(lang), ref(refName),
          VersionCounter(version), width};
}

LocalizedTextStore storeWith(const std::vector<Tovra::Mdib::LocalizedText>& texts) {
  LocalizedTextStore store;
  std::for_each(texts.begin(), texts.end(), [&store](const auto& text) { store.insert(text); });
  return store;
}

// A text of the one group that most lookups search.
Tovra::Mdib::LocalizedText hr(Width width, NumberOfLines lines) {
  return mdib("hr", "de-DE", 1, width, lines);
}

// "m2", or with its origin "hr de-DE 1 m2".
std::string label(const Tovra::Mdib::LocalizedText& text, bool withOrigin = false) {
  std::string result = text.text().value();
  result.erase(std::remove(result.begin(), result.end(), '\n'), result.end());
  return withOrigin ? text.ref().get().value() + " " + text.lang()->tag() + " " +
                          std::to_string(text.version()->get()) + " " + result
                    : result;
}

template <typename Texts>
Labels labels(const Texts& texts, bool withOrigin = false) {
  Labels result;
  std::transform(texts.begin(), texts.end(), std::back_inserter(result),
                 [withOrigin](const auto& text) { return label(text, withOrigin); });
  return result;
}

std::string best(const LocalizedTextStore& store, Width width, boost::optional<NumberOfLines> lines = {},
                 std::uint64_t version = 1) {
  return label(store.text({ref("hr"), VersionCounter(version), width, lines}, LanguageTag("de-DE")));
}

LocalizedTextFilter filter(std::set<LocalizedTextRef> refs, boost::optional<std::uint64_t> version,
                           std::set<LanguageTag> languages, std::set<LocalizedTextWidth> widths = {},
                           std::set<NumberOfLines> lines = {}) {
  return {std::move(refs), version ? boost::make_optional(VersionCounter(*version)) : boost::none,
          std::move(languages), std::move(widths), std::move(lines)};
}

Labels byWidthAndLines(const LocalizedTextStore& store, std::set<LocalizedTextWidth> widths,
                       std::set<NumberOfLines> lines = {}) {
  return labels(store.texts(filter({}, any, {}, std::move(widths), std::move(lines))));
}

std::string consistencyFailure(const std::vector<Tovra::Mdib::LocalizedText>& texts) {
  try {
    storeWith(texts).checkConsistency();
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    EXPECT_NE(std::string(failure.file()).find("Localization/Private/Common/LocalizedTextStore"),
              std::string::npos);
    return failure.what();
  }
  return "passed";
}

}  // namespace

TEST(LocalizedTextStoreTest, TextsOfAReferenceListThemInKeyOrderAndTheFirstTextUnderAKeyStays) {
  const auto store = storeWith({mdib("hr", "en-US", 1), mdib("hr", "de-DE", 1), mdib("h", "de-DE", 1),
                                mdib("hr", "de-DE", 3, lg, 1), mdib("hr", "de-DE", 3, sm, 2, "first"),
                                mdib("hr", "de-DE", 3, {}, 1), mdib("hr", "de-DE", 3, sm, 2, "second"),
                                mdib("hr", "de-DE", 3), mdib("hr", "de-DE", 2, md, 1), mdib("hr", "de-de", 3),
                                mdib("hr", "en-US", 3), mdib("hr2", "de-DE", 1)});
  EXPECT_EQ(labels(store.texts(ref("hr"), any), true),
            (Labels{"hr de-DE 3 -1", "hr de-DE 3 s1", "hr de-DE 3 first", "hr de-DE 3 l1", "hr de-DE 2 m1",
                    "hr de-DE 1 s1", "hr de-de 3 s1", "hr en-US 3 s1", "hr en-US 1 s1"}));
  EXPECT_EQ(labels(store.texts(ref("hr"), VersionCounter(1)), true),
            (Labels{"hr de-DE 1 s1", "hr en-US 1 s1"}));
  EXPECT_EQ(store.texts(ref("hr"), VersionCounter(3)).at(2).numberOfLines(), 2u);
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
  EXPECT_TRUE(store.texts(filter({}, any, {})).empty());
}

TEST(LocalizedTextStoreTest, CopiesAreIndependentAndMovedFromStoresAreEmpty) {
  const auto store = storeWith({hr(sm, 1)});
  auto copy = store;
  LocalizedTextStore moved(std::move(copy));
  EXPECT_TRUE(copy.texts(ref("hr"), any).empty());  // NOLINT(bugprone-use-after-move)
  copy.insert(mdib("hr", "de-DE", 1, lg, 1));
  moved = std::move(copy);
  EXPECT_EQ(labels(moved.texts(ref("hr"), any)), Labels{"l1"});
  EXPECT_TRUE(copy.texts(filter({}, any, {})).empty());  // NOLINT(bugprone-use-after-move)
  moved = store;
  moved.insert(mdib("hr", "de-DE", 1, md, 1));
  EXPECT_EQ(labels(store.texts(ref("hr"), any)), Labels{"s1"});
  moved.clear();
  EXPECT_EQ(moved.text({ref("hr"), VersionCounter(1)}, LanguageTag("de-DE")), LocalizedText::empty());
}

TEST(LocalizedTextStoreTest, WidthOnlyLookupTakesTheOneLineTextOfTheWidthOrTheWidestNarrower) {
  const auto store = storeWith({hr(sm, 1), hr(sm, 3), hr(md, 1)});
  EXPECT_EQ(best(store, md), "m1");
  EXPECT_EQ(best(store, lg), "m1");
  EXPECT_EQ(best(store, any), "s1");
  EXPECT_EQ(best(storeWith({hr(sm, 1), hr({}, 2)}), any), "-2");
  EXPECT_EQ(best(storeWith({hr(sm, 1), hr(sm, 3), hr(md, 2)}), md), "s3");
  EXPECT_EQ(best(storeWith({hr(md, 2)}), md), "");
  EXPECT_EQ(best(store, md, any, 2), "");
  EXPECT_EQ(store.text({ref("hr"), VersionCounter(1), xs}, LanguageTag("de-DE")), LocalizedText::empty());
}

TEST(LocalizedTextStoreTest, LookupWithLinesTakesTheFittingTextWithMostLinesThenWidest) {
  const auto store = storeWith({hr({}, 2), hr(md, 1), hr(md, 2), hr(lg, 1)});
  EXPECT_EQ(best(store, md, 2u), "m2");
  EXPECT_EQ(best(store, md, 1u), "m1");
  EXPECT_EQ(best(store, any, 1u), "l1");
  EXPECT_EQ(best(store, md, 0u), "");
  EXPECT_EQ(best(store, md, 2u, 2), "");
  EXPECT_EQ(best(storeWith({hr(sm, 1), hr(md, 1)}), xs, 1u), "");
  EXPECT_EQ(store.text({ref("hr"), VersionCounter(1), sm, 3u}, LanguageTag("de-DE")),
            LocalizedText(Utf8("-2\n"), LanguageTag("de-DE"), ref("hr"), VersionCounter(1), any, 2));
}

TEST(LocalizedTextStoreTest, FilterFixesEachReferencesVersionByItsFirstAcceptedGroup) {
  const auto store =
      storeWith({mdib("z", "de-DE", 1), mdib("\xC3\xA4", "de-DE", 1), mdib("b", "en-US", 1),
                 mdib("b", "de-DE", 2), mdib("b", "de-DE", 1), mdib("b", "en-US", 3), mdib("b", "fr-FR", 2)});
  const std::set<LanguageTag> enAndFr{LanguageTag("en-US"), LanguageTag("fr-FR")};
  EXPECT_EQ(labels(store.texts(filter({}, any, {})), true),
            (Labels{"b de-DE 2 s1", "b fr-FR 2 s1", "z de-DE 1 s1", "\xC3\xA4 de-DE 1 s1"}));
  EXPECT_EQ(labels(store.texts(filter({}, any, enAndFr)), true), Labels{"b en-US 3 s1"});
  EXPECT_EQ(labels(store.texts(filter({}, 1u, {})), true),
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
  const auto store = storeWith({hr({}, 1), hr(sm, 1), hr(sm, 2), hr(md, 1), hr(lg, 1)});
  EXPECT_EQ(byWidthAndLines(store, {md}), Labels{"m1"});
  EXPECT_EQ(byWidthAndLines(store, {sm, md}), (Labels{"s1", "s2", "m1"}));
  EXPECT_EQ(byWidthAndLines(store, {md, LocalizedTextWidth::ExtraLarge}), (Labels{"m1", "l1"}));
  EXPECT_TRUE(byWidthAndLines(store, {xs}).empty());
  EXPECT_EQ(byWidthAndLines(store, {}), (Labels{"-1", "s1", "s2", "m1", "l1"}));

  const auto lines = storeWith({hr(sm, 1), hr(sm, 3), hr(md, 1), hr(md, 2)});
  EXPECT_EQ(byWidthAndLines(lines, {}, {2}), Labels{"m2"});
  EXPECT_EQ(byWidthAndLines(lines, {}, {1, 3}), (Labels{"s1", "m1", "s3"}));
  EXPECT_EQ(byWidthAndLines(storeWith({hr({}, 2), hr(sm, 1)}), {}, {2, 5}), Labels{"-2"});
}

TEST(LocalizedTextStoreTest, FilterByWidthAndLinesPicksLinesWithinTheChosenWidth) {
  EXPECT_EQ(byWidthAndLines(storeWith({hr(sm, 1), hr(md, 1), hr(md, 3), hr(lg, 2)}), {md}, {1, 2}),
            Labels{"m1"});
  EXPECT_EQ(
      byWidthAndLines(storeWith({hr(sm, 1), hr(sm, 2), hr(md, 1), hr(lg, 1), hr(lg, 4)}), {sm, lg}, {3}),
      (Labels{"s2", "l1"}));
  EXPECT_TRUE(byWidthAndLines(storeWith({hr({}, 1), hr(md, 3)}), {md}, {1, 2}).empty());
  EXPECT_EQ(byWidthAndLines(storeWith({hr({}, 1), hr(md, 1)}), {md, lg}, {1}), Labels{"m1"});
}

TEST(LocalizedTextStoreTest, ConsistencyNeedsTheLanguagesOfTheFirstReferencesLowestVersionEverywhere) {
  EXPECT_EQ(consistencyFailure({}), "passed");
  EXPECT_EQ(consistencyFailure({mdib("a", "de-DE", 1), mdib("a", "en-US", 1), mdib("a", "en-US", 1, md, 2),
                                mdib("b", "de-DE", 2, {}, 1), mdib("b", "en-US", 2, lg, 3)}),
            "passed");
  EXPECT_EQ(
      consistencyFailure({mdib("a", "de-DE", 1), mdib("a", "en-US", 1), mdib("b", "de-DE", 2)}),
      "(ref: b, ver:2) has inconsistent languages <de-DE> in relation to (ref: a, ver:1) with <de-DE,en-US>");
  EXPECT_EQ(
      consistencyFailure({mdib("a", "de-DE", 2), mdib("a", "en-US", 2), mdib("a", "de-DE", 1)}),
      "(ref: a, ver:2) has inconsistent languages <de-DE,en-US> in relation to (ref: a, ver:1) with <de-DE>");
}
