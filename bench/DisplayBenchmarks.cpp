// Benchmarks of the display component on the benchmarks' catalogues, with a
// monitor's three areas and DejaVu Sans falling back to Droid Sans Fallback
// for the Japanese texts:
//
//   display/picture/N   drawing the shaped lines of N texts, each in one of
//                       the areas in turn, and encoding each picture as PNG;
//                       ms_per_picture is the figure to hold under 1 ms
//
// They register themselves, and only when the display component is built:
//   zalt_lts_bench --benchmark_filter='^display/'
#include "AllocationCounter.h"
#include "Catalogue.h"

#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/TextPicture.h>

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
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
  for (const char* file : fontFiles) {
    if (!std::filesystem::exists(file)) {
      return false;
    }
  }
  return true;
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
    const auto start = std::chrono::steady_clock::now();
    for (const ShapedText& text : shaped) {
      bytes += static_cast<double>(drawer.draw(shaper.chain(), text.lines, text.box).png.size());
    }
    seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    allocations += allocationCount() - allocationsBefore;
  }
  const double drawn = static_cast<double>(state.iterations()) * static_cast<double>(shaped.size());
  state.counters["ms_per_picture"] = seconds * 1e3 / drawn;
  state.counters["png_bytes"] = bytes / drawn;
  state.counters["allocations_per_picture"] = static_cast<double>(allocations) / drawn;
  state.SetItemsProcessed(static_cast<std::int64_t>(drawn));
}

bool registerDisplayBenchmarks() {
  const std::size_t texts = 10000;
  const std::string size = "/" + std::to_string(referencesFor(texts) * textsPerReference);
  benchmark::RegisterBenchmark(("display/picture" + size).c_str(), pictures, texts)
      ->Iterations(1)
      ->Repetitions(3)
      ->ReportAggregatesOnly(true)
      ->Unit(benchmark::kMillisecond);
  return true;
}

// Main.cpp registers the library's families; these register themselves so that
// the program builds the same with or without the display component.
const bool registered = registerDisplayBenchmarks();  // NOLINT(cert-err58-cpp)

}  // namespace
}  // namespace ZaltBench
