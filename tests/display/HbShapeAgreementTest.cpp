// The widths of single-font lines agree exactly with hb-shape's: the sum of
// the advances that hb-shape --font-funcs=ot gives at its default scale (units
// per em), times the size over units per em, rounded up. Over 600 lines in six
// scripts and eight sizes, drawn from words of alarm texts.
#include "DisplayTestSupport.h"

#include <Zalt/Display/LineShaper.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Script {
  std::string language;
  std::string font;
  std::vector<std::string> words;
};

const std::vector<Script>& scripts() {
  static const std::vector<Script> all{
      {"de",
       DisplayTestSupport::dejaVuSans,
       {"AVATAR", "Tower", "Wave", "Herzfrequenz", "über", "Obergrenze", "Fréquence", "élevée", "Sättigung",
        "LTA", "Yo", "fi", "120", "(%)", "SpO2", "Vérifier", "e\u0301te\u0301"}},
      {"el",
       DisplayTestSupport::dejaVuSans,
       {"Καρδιακός", "ρυθμός", "υψηλός", "Συναγερμός", "ΑΥΤΟ", "Ώρα", "98"}},
      {"ru",
       DisplayTestSupport::dejaVuSans,
       {"Частота", "сердечных", "сокращений", "высокая", "Тревога", "ЧСС", "72"}},
      {"ar", DisplayTestSupport::dejaVuSans, {"معدل", "ضربات", "القلب", "مرتفع", "إنذار", "لا", "٣٥"}},
      {"he", DisplayTestSupport::dejaVuSans, {"קצב", "לב", "גבוה", "אזעקה", "בדוק", "מטופל", "120"}},
      {"zh",
       DisplayTestSupport::droidFallback,
       {"心率", "过高", "警报", "血氧", "饱和度", "心拍数", "アラーム", "。"}},
  };
  return all;
}

constexpr int linesPerScript = 105;
constexpr std::array<std::int32_t, 8> sizes{9, 12, 14, 16, 18, 24, 31, 48};

// A line of one to six words, now and then with a trailing space.
std::string line(const Script& script, unsigned& seed) {
  const auto next = [&seed] {
    seed = seed * 1103515245u + 12345u;
    return (seed >> 16) & 0x7FFFu;
  };
  std::string made;
  for (unsigned words = next() % 6 + 1; words > 0; --words) {
    made += (made.empty() ? "" : " ") + script.words[next() % script.words.size()];
  }
  return next() % 5 == 0 ? made + " " : made;
}

// hb-shape's advances of each line of `lines` summed, in the order given.
std::vector<std::int64_t> hbShapeSums(const Script& script, const std::vector<std::string>& lines) {
  const std::filesystem::path input =
      std::filesystem::temp_directory_path() / ("hb-shape-agreement-" + script.language + ".txt");
  std::ofstream(input, std::ios::binary) << [&lines] {
    std::string text;
    for (const std::string& each : lines) {
      text += each + "\n";
    }
    return text;
  }();
  const std::string command =
      "hb-shape --font-funcs=ot --output-format=json --no-glyph-names --language=" + script.language +
      " --text-file=" + input.string() + " " + script.font;
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  std::vector<std::int64_t> sums;
  char buffer[1 << 16];
  while (output && std::fgets(buffer, sizeof buffer, output.get()) != nullptr) {
    std::int64_t sum = 0;
    for (const nlohmann::json& glyph : nlohmann::json::parse(buffer)) {
      sum += glyph.at("ax").get<std::int64_t>();
    }
    sums.push_back(sum);
  }
  std::filesystem::remove(input);
  return sums;
}

std::int64_t roundedUp(std::int64_t units, std::int32_t size, std::int32_t unitsPerEm) {
  return (units * size + unitsPerEm - 1) / unitsPerEm;
}

TEST(HbShapeAgreementTest, SingleFontLinesAreAsWideAsHbShapeMakesThem) {
  SKIP_WITHOUT_FONTS();
  if (std::system("hb-shape --version > /dev/null 2>&1") != 0) {
    GTEST_SKIP() << "hb-shape is not installed (libharfbuzz-bin)";
  }
  int compared = 0;
  int mismatches = 0;
  unsigned seed = 30;
  for (const Script& script : scripts()) {
    const auto face = std::make_shared<const Zalt::Display::FontFace>(script.font, 0);
    Zalt::Display::LineShaper shaper({{face}}, script.language);
    std::vector<std::string> lines;
    lines.reserve(linesPerScript);
    for (int made = 0; made < linesPerScript; ++made) {
      lines.push_back(line(script, seed));
    }
    const std::vector<std::int64_t> sums = hbShapeSums(script, lines);
    ASSERT_EQ(sums.size(), lines.size()) << script.language;
    for (std::size_t index = 0; index < lines.size(); ++index) {
      const std::int32_t size = sizes[index % sizes.size()];
      const Zalt::Display::MeasuredLine measured = shaper.measure(lines[index]);
      ASSERT_TRUE(measured.missing.empty()) << lines[index];
      ++compared;
      if (measured.pixels(size) != roundedUp(sums[index], size, face->unitsPerEm())) {
        ++mismatches;
        ADD_FAILURE() << script.language << " '" << lines[index] << "' at " << size
                      << " px: " << measured.pixels(size) << " pixels, hb-shape " << sums[index] << " units";
      }
    }
  }
  std::cout << compared << " lines compared with hb-shape, " << mismatches << " mismatches\n";
  EXPECT_GE(compared, 600);
  EXPECT_EQ(mismatches, 0);
}

}  // namespace
