// The exit statuses of zalt-lts-catalogue, for build scripts to act on. --help
// lists them from the same table, so the two cannot drift apart.
#pragma once

#include <array>

namespace ZaltCatalogueTool {

enum ExitCode : int {
  success = 0,
  findings = 1,
  failure = 2,
};

struct ExitStatus {
  ExitCode code;
  const char* meaning;
};

inline constexpr std::array<ExitStatus, 3> exitStatuses{{
    {success, "nothing to report"},
    {findings, "findings; for fit, no kept text has the language, reference or version asked for"},
    {failure,
     "a file cannot be read or has file problems, the command line is wrong, or the output cannot be "
     "written"},
}};

}  // namespace ZaltCatalogueTool
