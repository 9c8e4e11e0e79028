// The exit statuses of zalt-lts-catalogue, for build scripts to act on.
#pragma once

namespace ZaltCatalogueTool {

enum ExitCode : int {
  // check: a device store takes the whole catalogue in one add, nothing dropped.
  success = 0,
  // check: at least one finding.
  findings = 1,
  // A file cannot be read or parsed, or the command line is wrong.
  unreadable = 2,
};

}  // namespace ZaltCatalogueTool
