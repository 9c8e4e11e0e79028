#include "Benchmarks.h"

#include <Tovra/Locale/Utf8.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <benchmark/benchmark.h>

#include <array>
#include <string>

namespace ZaltBench {
namespace {

struct Input {
  const char* name;
  const char* pattern;
};

// Texts as a monitor stores them: plain English, the catalogue's mix of
// German and Japanese, and short status lines with a break every few bytes.
constexpr std::array<Input, 3> inputs = {{
    {"ascii", "Heart rate above upper limit. Check the patient and the ECG electrodes. "},
    {"mixed", "Herzfrequenz über oberer Grenze 心拍数が上限を超えています SpO2 低 Körpertemperatur "},
    {"breaks", "HR 72\nSpO2 98\r\nNIBP 120/80\nRR 14\r\nT 36.8\n"},
}};

constexpr std::array<std::size_t, 3> lengths = {64, 4096, 262144};

bool isContinuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The pattern repeated up to `length` bytes, cut before a character that
// would not fit whole, so that the text stays valid UTF-8.
std::string repeatedText(const char* pattern, std::size_t length) {
  std::string text;
  while (text.size() < length) {
    text += pattern;
  }
  std::size_t end = length;
  while (end > 0 && isContinuationByte(text[end])) {
    --end;
  }
  text.resize(end);
  return text;
}

unsigned int countLineFeeds(const std::string& bytes) {
  unsigned int lineFeeds = 0;
  for (const char byte : bytes) {
    lineFeeds += byte == '\n' ? 1u : 0u;
  }
  return lineFeeds;
}

void countLineBreaks(benchmark::State& state, const Tovra::Locale::Utf8& text) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(Zalt::Localization::Impl::numberOfLineBreaks(text));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.value().size()));
}

void countLineFeedsFloor(benchmark::State& state, const Tovra::Locale::Utf8& text) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(countLineFeeds(text.value()));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.value().size()));
}

}  // namespace

void registerLineBreakBenchmarks() {
  for (const Input& input : inputs) {
    for (const std::size_t length : lengths) {
      const Tovra::Locale::Utf8 text(repeatedText(input.pattern, length));
      const std::string suffix = std::string(input.name) + "/" + std::to_string(text.value().size());
      benchmark::RegisterBenchmark(("lines/count/" + suffix).c_str(), countLineBreaks, text)->MinTime(0.1);
      benchmark::RegisterBenchmark(("lines/floor/" + suffix).c_str(), countLineFeedsFloor, text)
          ->MinTime(0.1);
    }
  }
}

}  // namespace ZaltBench
