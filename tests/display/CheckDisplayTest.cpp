// The display check: the store's best fit in each area, measured against
// the box, with the findings at the text's place.
#include "CatalogueTestSupport.h"
#include "DisplayTestSupport.h"

#include <Zalt/Catalogue/ReadCatalogue.h>
#include <Zalt/Display/CheckDisplay.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Tovra::Mdib::LocalizedTextWidth;
using Zalt::Display::DisplayArea;
using Zalt::Display::DisplayFinding;

// "KIND AREA LINE:COLUMN PIXELS/BOX/OVERFLOW: message" per finding.
std::vector<std::string> described(const Zalt::Display::DisplayCheck& check) {
  std::vector<std::string> lines;
  for (const DisplayFinding& finding : check.findings) {
    std::string line = std::string(name(finding.kind)) + " " + finding.area + " " +
                       std::to_string(finding.location.line) + ":" + std::to_string(finding.location.column);
    if (finding.overflow) {
      line += " " + std::to_string(finding.overflow->pixels) + "/" + std::to_string(finding.overflow->box) +
              "/" + std::to_string(finding.overflow->overflow);
    }
    lines.push_back(line + ": " + finding.message);
  }
  return lines;
}

struct Checked {
  Zalt::Display::DisplayCheck check;
  // "AREA REF VERSION LANGUAGE 'TEXT' PIXELS..." per text shown.
  std::vector<std::string> shown;
};

Checked checked(const std::vector<DisplayArea>& areas, const std::string& texts) {
  const Zalt::Catalogue::Catalogue catalogue = Zalt::Catalogue::readCatalogue(
      "<c xmlns:pm='" + CatalogueTestSupport::participant() + "'>\n" + texts + "</c>", "texts.xml");
  Zalt::Display::DisplayProfile profile{DisplayTestSupport::deviceChain(), {}, areas};
  Checked result;
  result.check = Zalt::Display::checkDisplay(profile, catalogue, Zalt::Catalogue::checkCatalogue(catalogue),
                                             [&result, &areas](const Zalt::Display::ShownText& shown) {
                                               std::string line =
                                                   areas[shown.area].name + " " + shown.ref.get().value() +
                                                   " " + std::to_string(shown.version.get()) + " " +
                                                   shown.language.tag() + " '" + shown.text + "'";
                                               for (const std::int64_t pixels : shown.linePixels) {
                                                 line += " " + std::to_string(pixels);
                                               }
                                               result.shown.push_back(line + (shown.hasFinding ? " !" : ""));
                                             });
  return result;
}

TEST(CheckDisplayTest, ShowsTheStoresBestFitAndFindsWhatOverflowsByAPixel) {
  SKIP_WITHOUT_FONTS();
  // "AVATAR" is 7698 / 2048 × 18 = 67.66, so 68 pixels at 18 px.
  const Checked result = checked(
      {{"exact", LocalizedTextWidth::Small, 1, 18, 68, 22},
       {"tight", LocalizedTextWidth::Small, 1, 18, 67, 22},
       {"wide", LocalizedTextWidth::Large, 2, 18, 67, 22},
       {"tiny", LocalizedTextWidth::ExtraSmall, 1, 18, 68, 22}},
      "<pm:LocalizedText Ref='r' Lang='en-US' Version='1' TextWidth='s'>AVATAR</pm:LocalizedText>\n"
      "<pm:LocalizedText Ref='r' Lang='en-US' Version='1' TextWidth='l'>AVATAR\nAVATAR "
      "AVATAR</pm:LocalizedText>\n"
      // Of the same width in one line: the finding stands at the text shown.
      "<pm:LocalizedText Ref='r' Lang='en-US' Version='1' TextWidth='l'>AVATARS</pm:LocalizedText>\n");
  EXPECT_EQ(result.shown,
            (std::vector<std::string>{"exact r 1 en-US 'AVATAR' 68", "tight r 1 en-US 'AVATAR' 68 !",
                                      "wide r 1 en-US 'AVATAR\nAVATAR AVATAR' 68 142 !"}));
  EXPECT_EQ(result.check.shown, 3u);
  EXPECT_EQ(described(result.check), (std::vector<std::string>{
                                         "overflow tight 2:1 68/67/1: area 'tight' (en-US): \"AVATAR\" is 68 "
                                         "pixels wide: 1 pixel too wide for "
                                         "its box of 67",
                                         "unanswered tiny 2:1: area 'tiny' (en-US): no text of the reference "
                                         "'r' version 1 fits its width xs in 1 "
                                         "line",
                                         "overflow wide 3:1 142/67/75: area 'wide' (en-US): \"AVATAR "
                                         "AVATAR\" (line 2) is 142 pixels wide: 75 "
                                         "pixels too wide for its box of 67",
                                     }));
}

TEST(CheckDisplayTest, NamesEveryCharacterThatNoFontHasOncePerTextAndArea) {
  SKIP_WITHOUT_FONTS();
  const Checked result =
      checked({{"label", LocalizedTextWidth::Medium, 2, 16, 500, 20},
               {"key", LocalizedTextWidth::Medium, 2, 16, 500, 20}},
              "<pm:LocalizedText Ref='r' Lang='ko-KR' Version='1' TextWidth='m'>\uD55C\uAE00\n"
              "\uAE00 \uAC00 \uD55C</pm:LocalizedText>\n");
  EXPECT_EQ(described(result.check),
            (std::vector<std::string>{
                "glyph label 2:1: area 'label' (ko-KR): no font has \uD55C U+D55C, \uAE00 U+AE00",
                "glyph key 2:1: area 'key' (ko-KR): no font has \uD55C U+D55C, \uAE00 U+AE00",
            }));
}

}  // namespace
