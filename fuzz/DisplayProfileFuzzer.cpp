// Fuzz target for the display profile reader: the whole input is one profile
// file. Any bytes must give a profile or a CatalogueError, nothing else, and
// in time linear in the input. A profile read has fonts and areas, each area
// within its ranges; every problem stands at a line and column of the input,
// in the order of their places. Fonts are named relative to a folder of the
// fuzzer's own, so that only a file it names by an absolute path is read.
#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Display/ReadDisplayProfile.h>

#include "FuzzCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The characters of each line of `input`, as the reader counts columns.
std::vector<std::int32_t> lineLengths(std::string_view input) {
  std::vector<std::int32_t> lengths(1, 0);
  for (const char byte : input) {
    if (byte == '\n') {
      lengths.push_back(0);
    } else if ((static_cast<unsigned char>(byte) & 0xC0u) != 0x80u) {
      ++lengths.back();
    }
  }
  return lengths;
}

void checkProfile(const Zalt::Display::DisplayProfile& profile) {
  FUZZ_CHECK(!profile.fonts.faces.empty(), "a profile without fonts");
  FUZZ_CHECK(!profile.areas.empty(), "a profile without areas");
  for (const auto& language : profile.languageFonts) {
    FUZZ_CHECK(!language.second.faces.empty(), "no fonts for " << language.first);
  }
  for (const Zalt::Display::DisplayArea& area : profile.areas) {
    FUZZ_CHECK(!area.name.empty() && area.lines >= 1 && area.size >= 1 && area.size <= 100000 &&
                   area.width >= 1 && area.width <= 100000 && area.lineHeight >= 1 &&
                   area.lineHeight <= 100000,
               "the area '" << area.name << "' out of range");
  }
}

void checkProblems(const Zalt::Catalogue::CatalogueError& error, const std::string& path,
                   std::string_view input) {
  const std::vector<std::int32_t> lengths = lineLengths(input);
  std::pair<std::int32_t, std::int32_t> previous{0, 0};
  FUZZ_CHECK(!error.problems().empty(), "an error without problems");
  for (const Zalt::Catalogue::Finding& problem : error.problems()) {
    const auto& place = problem.location;
    FUZZ_CHECK(problem.kind == Zalt::Catalogue::Finding::Kind::File && place.file == path,
               "a problem of another kind or file: " << place.file << ": " << problem.message);
    FUZZ_CHECK(place.line >= 1 && static_cast<std::size_t>(place.line) <= lengths.size() &&
                   place.column >= 1 && place.column <= lengths[static_cast<std::size_t>(place.line) - 1] + 1,
               "the problem '" << problem.message << "' at " << place.line << ":" << place.column
                               << ", outside the input");
    FUZZ_CHECK(std::make_pair(place.line, place.column) >= previous,
               "the problem '" << problem.message << "' before the one above it");
    previous = {place.line, place.column};
  }
}

fs::path folderPath() {
  return fs::temp_directory_path() / ("display-profile-fuzz-" + std::to_string(getpid()));
}

void removeFolder() {
  std::error_code ignored;
  fs::remove_all(folderPath(), ignored);
}

const fs::path& folder() {
  static const fs::path made = [] {
    fs::create_directories(folderPath());
    std::atexit(removeFolder);
    return folderPath();
  }();
  return made;
}

}  // namespace

// libFuzzer calls its entry point by this name.
extern "C" int LLVMFuzzerTestOneInput(  // NOLINT(readability-identifier-naming)
    const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string path = (folder() / "profile.json").string();
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(input.data(), static_cast<std::streamsize>(size));
  try {
    checkProfile(Zalt::Display::readDisplayProfile(path));
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    checkProblems(error, path, input);
  }
  return 0;
}
