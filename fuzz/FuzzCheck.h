// FUZZ_CHECK(condition, parts): the fuzz targets' assertion. When `condition`
// is false it prints the condition and a message composed from the `<<` chain
// `parts`, then aborts, so that libFuzzer records the input as a crash.
// Unlike assert() it stays active in every build type.
//
//   FUZZ_CHECK(count == expected, "counted " << count << ", expected " << expected);
#pragma once

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace ZaltFuzz {

[[noreturn]] inline void checkFailed(const char* condition, const std::string& message, const char* file,
                                     int line) {
  std::fprintf(stderr, "%s:%d: check failed: %s\n  %s\n", file, line, condition, message.c_str());
  std::abort();
}

}  // namespace ZaltFuzz

#define FUZZ_CHECK(condition, parts)                                                   \
  do {                                                                                 \
    if (!(condition)) {                                                                \
      std::ostringstream fuzzCheckMessage;                                             \
      fuzzCheckMessage << parts; /* NOLINT(bugprone-macro-parentheses) */              \
      ::ZaltFuzz::checkFailed(#condition, fuzzCheckMessage.str(), __FILE__, __LINE__); \
    }                                                                                  \
  } while (false)
