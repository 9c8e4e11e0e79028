// The commands of zalt-lts-catalogue. Each lives in a file of its own that
// adds its subcommand and options to the app, owns what they fill in, and
// makes itself the command to run when the command line names it:
//
//   Runner chosen;
//   addCommands(app, toolCommands(), chosen);
//   app.parse(argc, argv);
//   return chosen();
//
// A command reads its files as one catalogue, writes its answer to standard
// output and returns the exit status (ExitCode.h).
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <vector>

namespace ZaltCatalogueTool {

// The command that the parsed command line names, ready to run.
using Runner = std::function<int()>;

// Adds one command under `parent`; once the command line names it, `chosen`
// runs it.
using AddCommand = void (*)(CLI::App& parent, Runner& chosen);

// The commands in the order that --help lists them.
const std::vector<AddCommand>& toolCommands();

// Adds `commands` under `parent`, of which a command line names exactly one.
void addCommands(CLI::App& parent, const std::vector<AddCommand>& commands, Runner& chosen);

// A request of `command` for `run`, kept as long as the app: its options fill
// it in, and once the command line names `command`, `chosen` calls `run` with it.
template <typename Request>
Request& runWhenChosen(CLI::App& command, Runner& chosen, int (*run)(const Request&)) {
  const auto request = std::make_shared<Request>();
  command.final_callback([&chosen, request, run] { chosen = [request, run] { return run(*request); }; });
  return *request;
}

void addCheck(CLI::App& parent, Runner& chosen);
void addFit(CLI::App& parent, Runner& chosen);
void addStats(CLI::App& parent, Runner& chosen);
void addPseudo(CLI::App& parent, Runner& chosen);
void addCoverage(CLI::App& parent, Runner& chosen);
void addXliffExport(CLI::App& parent, Runner& chosen);
void addXliffImport(CLI::App& parent, Runner& chosen);
#ifdef ZALT_LTS_DISPLAY
void addDisplay(CLI::App& parent, Runner& chosen);
#endif

}  // namespace ZaltCatalogueTool
