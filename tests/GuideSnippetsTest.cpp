// The user guide's C++ snippets must be compiled code: each must stand,
// verbatim, in the example program.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string readFile(const std::string& path) {
  std::ifstream in(path);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

std::vector<std::string> cppBlocks(const std::string& markdown) {
  std::vector<std::string> blocks;
  const std::string open = "```cpp\n";
  for (auto start = markdown.find(open); start != std::string::npos; start = markdown.find(open, start)) {
    start += open.size();
    const auto end = markdown.find("```", start);
    blocks.push_back(markdown.substr(start, end - start));
    start = end;
  }
  return blocks;
}

TEST(GuideSnippets, EverySnippetStandsInTheExample) {
  const std::string guide = readFile(ZALT_LTS_SOURCE_DIR "/docs/guide.md");
  const std::string example = readFile(ZALT_LTS_SOURCE_DIR "/examples/Walkthrough.cpp");
  const auto blocks = cppBlocks(guide);
  ASSERT_GE(blocks.size(), 10U);
  for (const std::string& block : blocks) {
    EXPECT_NE(example.find(block), std::string::npos) << "not in the example:\n" << block;
  }
}

}  // namespace
