// Reading display profiles: what they hold, and every problem at its line
// and column.
#include "CatalogueTestSupport.h"
#include "DisplayTestSupport.h"

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Display/ReadDisplayProfile.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class ReadDisplayProfileTest : public ::testing::Test {
protected:
  void SetUp() override {
    SKIP_WITHOUT_FONTS();
    // Beside the test, not in the system's temporary folder: under Wine that is
    // on drive C:, where the Debian fonts' absolute paths name nothing.
    m_folder = fs::current_path() /
               ("display-profile-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(m_folder);
    // Named relative to the profile, as a maker keeps a font beside it.
    fs::copy_file(DisplayTestSupport::dejaVuSans, m_folder / "Sans.ttf",
                  fs::copy_options::overwrite_existing);
  }
  void TearDown() override { fs::remove_all(m_folder); }

  std::string profile(const std::string& content) const {
    const fs::path path = m_folder / "profile.json";
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }

  // "LINE:COLUMN: message" per problem of reading `content`.
  std::vector<std::string> problems(const std::string& content) const {
    const std::string path = profile(content);
    std::vector<std::string> found;
    try {
      Zalt::Display::readDisplayProfile(path);
      ADD_FAILURE() << "no problem in " << content;
    } catch (const Zalt::Catalogue::CatalogueError& error) {
      for (const Zalt::Catalogue::Finding& problem : error.problems()) {
        EXPECT_EQ(problem.location.file, path);
        found.push_back(std::to_string(problem.location.line) + ":" +
                        std::to_string(problem.location.column) + ": " + problem.message);
      }
    }
    return found;
  }

  fs::path m_folder;
};

TEST_F(ReadDisplayProfileTest, ReadsFontsRelativeToTheProfileLanguageChainsAndAreas) {
  const Zalt::Display::DisplayProfile read = Zalt::Display::readDisplayProfile(profile(R"({
    "fonts": [{"file": "Sans.ttf"}, {"file": ")" + std::string(DisplayTestSupport::droidFallback) +
                                                                                       R"(", "index": 0}],
    "languageFonts": {"ja-JP": [{"file": ")" + DisplayTestSupport::droidFallback + R"("}]},
    "areas": [{"name": "banner", "textWidth": "xl", "lines": 2, "size": 18, "width": 200, "lineHeight": 22}]})"));
  ASSERT_EQ(read.fonts.faces.size(), 2u);
  EXPECT_EQ(read.fonts.faces[0]->unitsPerEm(), 2048);
  EXPECT_EQ(read.fonts.faces[1]->index(), 0u);
  // One face however many chains name it.
  EXPECT_EQ(read.chainFor(Tovra::Locale::LanguageTag("ja-jp")).faces.at(0), read.fonts.faces[1]);
  EXPECT_EQ(&read.chainFor(Tovra::Locale::LanguageTag("de-DE")), &read.fonts);
  ASSERT_EQ(read.areas.size(), 1u);
  const Zalt::Display::DisplayArea& area = read.areas[0];
  EXPECT_EQ(area.name, "banner");
  EXPECT_EQ(area.textWidth, Tovra::Mdib::LocalizedTextWidth::ExtraLarge);
  EXPECT_EQ(std::make_tuple(area.lines, area.size, area.width, area.lineHeight),
            std::make_tuple(2u, 18, 200, 22));
}

TEST_F(ReadDisplayProfileTest, ReportsEveryProblemAtItsLineAndColumn) {
  const std::string areaKeys = R"("name", "textWidth", "lines", "size", "width", "lineHeight")";
  // Columns count characters: Ü is one.
  EXPECT_EQ(
      problems("{\"fonts\": [{\"file\": \"Sans.ttf\"}],\n"
               " \"areas\": [\n"
               "  {\"name\": \"Überschrift\", \"textWidth\": \"xxxl\", \"lines\": \"2\", \"size\": 18, "
               "\"width\": 200, \"lineHeight\": 22, \"colour\": 1},\n"
               "  {\"name\": \"b\", \"textWidth\": \"s\", \"size\": 0, \"width\": 1, \"lineHeight\": 1}\n"
               " ],\n"
               " \"languageFonts\": {\"ja-JP\": [{\"file\": \"missing.ttf\"}, {\"file\": \"Sans.ttf\", "
               "\"index\": 3}], \"Japan\": []},\n"
               " \"fonts\": []\n"
               "}\n"),
      (std::vector<std::string>{
          "3:40: \"textWidth\" is not one of xs, s, m, l, xl, xxl: \"xxxl\"",
          "3:57: \"lines\" is not a whole number from 1 to 4294967295: \"2\"",
          "3:106: unknown key \"colour\" in an area; its keys are " + areaKeys,
          "4:3: an area lacks \"lines\"",
          "4:43: \"size\" is not a whole number from 1 to 100000: 0",
          "6:39: the font file " + (m_folder / "missing.ttf").string() +
              " cannot be read: No such file or directory",
          "6:85: the font file " + (m_folder / "Sans.ttf").string() + " has no face 3: its faces are 0 to 0",
          "6:90: \"Japan\" is not a language tag ll-CC, such as \"ja-JP\"",
          "7:2: \"fonts\" is given twice in the profile",
      }));
  // Not JSON: the first syntax error only, where reading stopped.
  EXPECT_EQ(problems("{\"fonts\": [\n  {\"file\": 12,}\n]}"),
            (std::vector<std::string>{
                "2:15: syntax error while parsing object key - unexpected '}'; expected string literal"}));
  EXPECT_EQ(problems("[]"), (std::vector<std::string>{"1:1: the profile is not an object"}));
  EXPECT_EQ(problems("{\"fonts\": [{\"file\": \"Sans.ttf\", \"index\": 1.5}]}"),
            (std::vector<std::string>{"1:1: the profile lacks \"areas\"",
                                      "1:42: \"index\" is not a whole number from 0 to 2147483647: 1.5"}));
}

TEST_F(ReadDisplayProfileTest, TellsEmptyFilesFoldersAndDeepNestingFromProfilesAndFonts) {
  EXPECT_EQ(problems(""), (std::vector<std::string>{"1:1: syntax error while parsing value - unexpected end "
                                                    "of input; expected '[', '{', or a literal"}));
  // The profile is the first level.
  EXPECT_EQ(problems("{\"fonts\": " + std::string(62, '[') + std::string(62, ']') + "}"),
            (std::vector<std::string>{"1:1: the profile lacks \"areas\"", "1:12: a font is not an object"}));
  EXPECT_EQ(problems("{\"fonts\": " + std::string(64, '[')),
            (std::vector<std::string>{"1:74: nested deeper than 64 levels"}));
  const std::ofstream empty(m_folder / "empty.ttf");
  fs::create_directory(m_folder / "folder.ttf");
  EXPECT_EQ(
      problems(R"({"fonts": [{"file": "empty.ttf"}, {"file": "folder.ttf"}], "areas": [)"
               R"({"name": "a", "textWidth": "s", "lines": 1, "size": 9, "width": 9, "lineHeight": 9}]})"),
      (std::vector<std::string>{
          "1:21: the font file " + (m_folder / "empty.ttf").string() + " is not a font file",
          "1:44: the font file " + (m_folder / "folder.ttf").string() + " cannot be read: Is a directory"}));
  try {
    Zalt::Display::readDisplayProfile((m_folder / "folder.ttf").string());
    ADD_FAILURE() << "a folder read as a profile";
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    EXPECT_EQ(Zalt::Catalogue::placed(error.problems().at(0)),
              (m_folder / "folder.ttf").string() + ": cannot be read: Is a directory");
  }
}

}  // namespace
