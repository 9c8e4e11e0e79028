// The pictures' names and the page that lists them: names that stay in their
// directory and never meet, the worst overflow first, text escaped.
#include <Zalt/Display/PictureIndex.h>

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace {

using Zalt::Display::PictureIndex;

TEST(PictureIndexTest, NamesStayInTheirDirectoryAndNeverMeet) {
  PictureIndex index;
  const std::string escaping = index.add({"../..", "/etc/passwd", 1, "de-DE", 10, 20, 20, 24});
  const std::string slash = index.add({"alarm", "a/b", 1, "de-DE", 10, 20, 20, 24});
  const std::string underscore = index.add({"alarm", "a_b", 1, "de-DE", 10, 20, 20, 24});
  const std::string again = index.add({"alarm", "a_b", 1, "de-DE", 10, 20, 20, 24});
  const std::string otherVersion = index.add({"alarm", "a_b", 2, "de-DE", 10, 20, 20, 24});
  const std::regex safe("[A-Za-z0-9_-]+\\.png");
  for (const std::string& name : {escaping, slash, underscore, again, otherVersion}) {
    EXPECT_TRUE(std::regex_match(name, safe)) << name;
  }
  EXPECT_EQ(slash.substr(0, 12), "alarm_a_b_v1");
  EXPECT_NE(slash, underscore);
  EXPECT_NE(underscore, again);
  EXPECT_NE(underscore, otherVersion);
  // The same texts name the same files in every run and on every system.
  EXPECT_EQ(PictureIndex().add({"alarm", "a_b", 1, "de-DE", 10, 20, 20, 24}), underscore);
}

TEST(PictureIndexTest, ThePageListsTheWorstOverflowFirstWithItsPictureAndEscapedText) {
  PictureIndex index;
  const std::string fits = index.add({"label", "fits", 1, "en-US", 90, 100, 100, 24});
  const std::string slightly = index.add({"label", "<b>slightly</b>", 1, "en-US", 103, 100, 103, 24});
  const std::string most = index.add({"banner", "most", 2, "de-DE", 160, 100, 160, 48});
  const std::string page = index.page();
  const auto at = [&page](const std::string& file) { return page.find("src=\"" + file + "\""); };
  ASSERT_NE(at(fits), std::string::npos);
  EXPECT_LT(at(most), at(slightly));
  EXPECT_LT(at(slightly), at(fits));
  EXPECT_NE(page.find("<td>&lt;b&gt;slightly&lt;/b&gt;</td>"), std::string::npos);
  EXPECT_EQ(page.find("<b>slightly"), std::string::npos);
  EXPECT_NE(page.find("160 px in a 100 px box, 60 px over</td><td><img src=\"" + most +
                      "\" width=\"160\" height=\"48\""),
            std::string::npos);
  EXPECT_NE(page.find("90 px in a 100 px box</td>"), std::string::npos);
  EXPECT_NE(page.find("document.title = loaded + ' of ' + pictures.length + ' pictures loaded'"),
            std::string::npos);
}

}  // namespace
