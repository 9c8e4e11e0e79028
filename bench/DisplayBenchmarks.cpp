// Benchmarks of the display component on the benchmarks' catalogues, with a
// monitor's three areas and DejaVu Sans falling back to Droid Sans Fallback
// for the Japanese texts:
//
//   display/check/N     the display check of N texts in the three areas,
//                       pictures off, beside check of the same texts in the
//                       same run: per_check is the figure to hold under 3
//   display/picture/N   drawing the shaped lines of N texts, each in one of
//                       the areas in turn, and encoding each picture as PNG;
//                       ms_per_picture is the figure to hold under 1 ms
//
// They register themselves, and only when the display component is built:
//   zalt_lts_bench --benchmark_filter='^display/'
#include "AllocationCounter.h"
#include "Catalogue.h"
#include "Timing.h"

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/DisplayProfile.h>
#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/TextPicture.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZaltBench {
namespace {

const char* const fontFiles[] = {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                                 "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf"};

// An alarm banner of two lines, a parameter label and a status bar.
constexpr std::array<Zalt::Display::PictureBox, 3> boxes = {
    {{240, 18, 24, 2}, {64, 14, 18, 1}, {120, 12, 16, 1}}};

bool fontsInstalled() {
  return std::all_of(std::begin(fontFiles), std::end(fontFiles),
                     [](const char* file) { return std::filesystem::exists(file); });
}

Zalt::Display::FontChain monitorFonts() {
  Zalt::Display::FontChain chain;
  for (const char* file : fontFiles) {
    chain.faces.push_back(std::make_shared<const Zalt::Display::FontFace>(file, 0));
  }
  return chain;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  lines.push_back(text.substr(start));
  return lines;
}

Zalt::Display::DisplayProfile monitorProfile() {
  using Tovra::Mdib::LocalizedTextWidth;
  Zalt::Display::DisplayProfile profile;
  profile.fonts = monitorFonts();
  const char* const names[] = {"alarm banner", "parameter label", "status bar"};
  const LocalizedTextWidth widths[] = {LocalizedTextWidth::ExtraLarge, LocalizedTextWidth::Small,
                                       LocalizedTextWidth::Medium};
  for (std::size_t area = 0; area < boxes.size(); ++area) {
    const Zalt::Display::PictureBox& box = boxes[area];
    profile.areas.push_back({names[area], widths[area], static_cast<std::uint32_t>(box.lines), box.size,
                             box.width, box.lineHeight});
  }
  return profile;
}

// The catalogue as read from one file, each text at a line of its own.
Zalt::Catalogue::Catalogue catalogueOf(std::size_t references) {
  Zalt::Catalogue::Catalogue catalogue;
  catalogue.files.emplace_back("bench.xml");
  std::int32_t line = 1;
  for (auto& text : makeCatalogue(references)) {
    catalogue.texts.push_back({std::move(text), 0, ++line, 3});
  }
  return catalogue;
}

void check(benchmark::State& state, std::size_t texts) {
  if (!fontsInstalled()) {
    state.SkipWithError("needs fonts-dejavu-core and fonts-droid-fallback");
    return;
  }
  const Zalt::Display::DisplayProfile profile = monitorProfile();
  const Zalt::Catalogue::Catalogue catalogue = catalogueOf(referencesFor(texts));
  double checkSeconds = 0;
  double displaySeconds = 0;
  std::size_t shown = 0;
  std::size_t found = 0;
  for (auto _ : state) {
    Zalt::Catalogue::CatalogueCheck checked;
    checkSeconds += secondsFor([&] { checked = Zalt::Catalogue::checkCatalogue(catalogue); });
    Zalt::Display::DisplayCheck result;
    displaySeconds += secondsFor([&] { result = Zalt::Display::checkDisplay(profile, catalogue, checked); });
    shown = result.shown;
    found = result.findings.size();
  }
  const auto iterations = static_cast<double>(state.iterations());
  state.counters["check_ms"] = checkSeconds * 1e3 / iterations;
  state.counters["display_ms"] = displaySeconds * 1e3 / iterations;
  state.counters["per_check"] = displaySeconds / checkSeconds;
  state.counters["shown"] = static_cast<double>(shown);
  state.counters["display_findings"] = static_cast<double>(found);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(catalogue.texts.size()));
}

struct ShapedText {
  std::vector<Zalt::Display::ShapedLine> lines;
  Zalt::Display::PictureBox box;
};

void pictures(benchmark::State& state, std::size_t texts) {
  if (!fontsInstalled()) {
    state.SkipWithError("needs fonts-dejavu-core and fonts-droid-fallback");
    return;
  }
  Zalt::Display::LineShaper shaper(monitorFonts());
  std::vector<ShapedText> shaped;
  for (const auto& text : makeCatalogue(referencesFor(texts))) {
    const Zalt::Display::PictureBox& box = boxes[shaped.size() % boxes.size()];
    std::vector<Zalt::Display::ShapedLine> lines;
    for (const std::string& line : linesOf(text.text().value())) {
      lines.push_back(shaper.shape(line, box.size));
    }
    shaped.push_back({std::move(lines), box});
  }
  Zalt::Display::PictureDrawer drawer;
  double seconds = 0;
  double bytes = 0;
  std::size_t allocations = 0;
  for (auto _ : state) {
    const std::size_t allocationsBefore = allocationCount();
    seconds += secondsFor([&] {
      for (const ShapedText& text : shaped) {
        bytes += static_cast<double>(drawer.draw(shaper.chain(), text.lines, text.box).png.size());
      }
    });
    allocations += allocationCount() - allocationsBefore;
  }
  const double drawn = static_cast<double>(state.iterations()) * static_cast<double>(shaped.size());
  state.counters["ms_per_picture"] = seconds * 1e3 / drawn;
  state.counters["png_bytes"] = bytes / drawn;
  state.counters["allocations_per_picture"] = static_cast<double>(allocations) / drawn;
  state.SetItemsProcessed(static_cast<std::int64_t>(drawn));
}

bool registerDisplayBenchmarks() {
  const auto timed = [](const std::string& name, std::size_t texts, auto function) {
    const std::string fullName =
        "display/" + name + "/" + std::to_string(referencesFor(texts) * textsPerReference);
    benchmark::RegisterBenchmark(fullName.c_str(), function, texts)
        ->Iterations(1)
        ->Repetitions(3)
        ->ReportAggregatesOnly(true)
        ->Unit(benchmark::kMillisecond);
  };
  timed("check", 1000000, check);
  timed("picture", 10000, pictures);
  return true;
}

// Main.cpp registers the library's families; these register themselves so that
// the program builds the same with or without the display component.
const bool registered = registerDisplayBenchmarks();  // NOLINT(cert-err58-cpp)

}  // namespace
}  // namespace ZaltBench
