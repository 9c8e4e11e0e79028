#include <Zalt/Catalogue/Private/KeptForms.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Forms = std::vector<std::string_view>;
using Zalt::Catalogue::Private::keptForms;

void expectForms(const std::vector<std::pair<std::string, Forms>>& cases) {
  for (const auto& c : cases) {
    EXPECT_EQ(keptForms(c.first), c.second) << testing::PrintToString(c.first);
  }
}

TEST(KeptForms, ListsMarkupPlaceholdersAndEscapesAsWrittenInTheirOrder) {
  expectForms({
      // Markup written as text, and what only looks like it.
      {"<b>Bold</b>", {"<b>", "</b>"}},
      {"Line<br/>two<br />", {"<br/>", "<br />"}},
      {"<a href=\"help.html\" target='_blank'>Help</a>", {"<a href=\"help.html\" target='_blank'>", "</a>"}},
      {"<input disabled><img src=a.png alt = \"x\"/>", {"<input disabled>", "<img src=a.png alt = \"x\"/>"}},
      {"<a href=\"x>Go", {}},
      {"a < b, c<d", {}},
      {"Fish &amp; chips&nbsp;&#169;&#xA9;", {"&amp;", "&nbsp;", "&#169;", "&#xA9;"}},
      {"Fish & chips &copy &#; &#xg;", {}},
      // printf, positional and named.
      {"%s %d %i %1$s %-5.2f %lu %lld %hhd %%",
       {"%s", "%d", "%i", "%1$s", "%-5.2f", "%lu", "%lld", "%hhd", "%%"}},
      {"%(count)d items, %(user.name)s", {"%(count)d", "%(user.name)s"}},
      {"%@ of %1$@", {"%@", "%1$@"}},
      {"%(count) items %()s 100% sure", {}},
      // Braces and variables.
      {"{0} {name} {user.name} { name }", {"{0}", "{name}", "{user.name}", "{ name }"}},
      {"{0,number} {0, date, short} {count:02d}", {"{0,number}", "{0, date, short}", "{count:02d}"}},
      {"${var} and $var, $_x, $5", {"${var}", "$var", "$_x"}},
      {"{Press OK} {} {a{b}", {"{b}"}},
      // Escapes of program sources.
      {R"(Line\nnext\ttab\"q\" \\new \u00e9t\q \u00g1)",
       {R"(\n)", R"(\t)", R"(\")", R"(\")", R"(\\)", R"(\u00e9)"}},
  });
}

TEST(KeptForms, KeepsTheSyntaxOfPluralAndSelectAndReadsTheTextOfEachBranch) {
  expectForms({
      {"{n, plural, one {# item} other {# items}}", {"{n, plural, one {", "#", "} other {", "#", "}}"}},
      {"{n,plural,offset:1 =0{No one}=1{{name}}other{{name} and # others}}",
       {"{n,plural,offset:1 =0{", "}=1{", "{name}", "}other{", "{name}", "#", "}}"}},
      {"{g, select, male {He} other {<b>They</b> #}}",
       {"{g, select, male {", "} other {", "<b>", "</b>", "}}"}},
      {"{n, selectordinal, one {#st} other {#th}}",
       {"{n, selectordinal, one {", "#", "} other {", "#", "}}"}},
      // '#' counts in the branches of its own argument only.
      {"{g, select, female {{n, plural, one {her %d cat} other {{k, select, other {#}}}}} other {pets}}",
       {"{g, select, female {", "{n, plural, one {", "%d", "} other {", "{k, select, other {", "}}", "}}",
        "} other {", "}}"}},
      // Not message syntax: a branch without a selector or braces, an unclosed argument.
      {"{n, plural, one # item} {n, plural, =x {a b}} {n, select,}", {}},
      {"{n, plural, {x}}", {"{x}"}},
      {"{n, plural, one {an item} other {b}", {"{b}"}},
  });
}

TEST(KeptForms, TakesArgumentsNestedBeyondAnyMessageForText) {
  const std::string level = "{a,select,b{";
  const std::size_t depth = 100000;
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) {
    text += level;
  }
  text += "c" + std::string(2 * depth, '}');
  // The 32 outermost arguments, then their ends.
  const Forms forms = keptForms(text);
  ASSERT_EQ(forms.size(), 64u);
  EXPECT_EQ(forms[31], level);
  EXPECT_EQ(forms[31].data(), text.data() + 31 * level.size());
  EXPECT_EQ(forms[32], "}}");
}

// How a translation is checked against its source: the same forms, in any order.
bool keepsTheFormsOf(const std::string& source, const std::string& translation) {
  const Forms sourceForms = keptForms(source);
  const Forms translationForms = keptForms(translation);
  return std::multiset<std::string_view>(sourceForms.begin(), sourceForms.end()) ==
         std::multiset<std::string_view>(translationForms.begin(), translationForms.end());
}

TEST(KeptForms, TellTranslationsThatLostAFormFromOnesThatMovedThem) {
  EXPECT_TRUE(keepsTheFormsOf("%1$s of %2$s", "%2$s von %1$s"));
  EXPECT_FALSE(keepsTheFormsOf("%1$s of %2$s", "%2$s von %2$s"));
  EXPECT_TRUE(keepsTheFormsOf("{count} items", "{count} Elemente"));
  EXPECT_FALSE(keepsTheFormsOf("{count} items", "{Anzahl} Elemente"));
  EXPECT_TRUE(keepsTheFormsOf("<b>Bold</b>", "<b>Fett</b>"));
  EXPECT_FALSE(keepsTheFormsOf("<b>Bold</b>", "Fett"));
  EXPECT_TRUE(keepsTheFormsOf("&lt;b&gt;Bold&lt;/b&gt;", "&lt;b&gt;Fett&lt;/b&gt;"));
  EXPECT_FALSE(keepsTheFormsOf("&lt;b&gt;Bold&lt;/b&gt; text", "&lt;b&gt;Fett Text"));
  EXPECT_TRUE(keepsTheFormsOf("{n, plural, one {# item} other {# items}}",
                              "{n, plural, one {# Element} other {# Elemente}}"));
  EXPECT_FALSE(keepsTheFormsOf("{n, plural, one {# item} other {# items}}",
                               "{n, plural, one {ein Element} other {# Elemente}}"));
}

}  // namespace
