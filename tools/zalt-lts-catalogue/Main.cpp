// zalt-lts-catalogue: checks localized-text catalogues on the build machine
// against the rules of the device store, and shows what a store answers.
//
//   zalt-lts-catalogue check texts/*.xml [--json] [--width-unit characters]
//   zalt-lts-catalogue fit texts/*.xml --lang de-DE --width m --lines 2
//   zalt-lts-catalogue stats texts/*.xml
//   zalt-lts-catalogue pseudo --from en-US --to en-XA texts/*.xml -o pseudo.xml
//   zalt-lts-catalogue coverage --mdib mdib.xml texts/*.xml
//   zalt-lts-catalogue xliff export --from en-US --to de-DE texts/*.xml -o de.xlf
//   zalt-lts-catalogue xliff import de.xlf -o texts/de.xml
#include "Commands.h"
#include "ExitCode.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string>

namespace {

using namespace ZaltCatalogueTool;

std::string exitStatusFooter() {
  std::string footer = "Exit statuses:";
  for (const ExitStatus& status : exitStatuses) {
    footer += "\n  " + std::to_string(status.code) + "  " + status.meaning;
  }
  return footer;
}

int run(int argc, char** argv) {
  CLI::App app("Checks localized-text catalogues against the rules of the device store.",
               "zalt-lts-catalogue");
  app.set_version_flag("--version", std::string("zalt-lts-catalogue ") + ZALT_LTS_CATALOGUE_VERSION,
                       "Print the tool's version and exit");
  app.footer(exitStatusFooter());
  // A path such as /data/texts.xml is a file, never a Windows-style /option.
  app.allow_windows_style_options(false);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("zalt-lts-catalogue: ") + error.what() + "\nRun with --help for more information.\n";
  });

  Runner chosen;
  addCommands(app, toolCommands(), chosen);
  try {
    app.parse(argc, argv);
    // A command checks first what spans its command line, such as an input
    // given twice, and reports it as CLI11 reports its own checks.
    return chosen();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? success : failure;
  }
}

// A gate whose report did not reach its file must not pass: a full disk
// fails the command, whatever it found.
int afterWritingOutput(int status) {
  std::cout.flush();
  if (std::cout) {
    return status;
  }
  std::cerr << "zalt-lts-catalogue: cannot write to standard output\n";
  return failure;
}

// nlohmann-json takes apart a nested document with a work stack that its
// destructor allocates, where a lack of memory cannot be thrown and ends in
// std::terminate. That run has run out of memory like any other: it fails
// with the same message, never with an abort.
[[noreturn]] void endOnTerminate() {
  try {
    std::rethrow_exception(std::current_exception());
  } catch (const std::bad_alloc& error) {
    std::fprintf(stderr, "zalt-lts-catalogue: %s\n", error.what());
    std::_Exit(failure);
  } catch (...) {
  }
  std::abort();
}

}  // namespace

int main(int argc, char** argv) {
  std::set_terminate(endOnTerminate);
#ifdef SIGPIPE
  // A pipe or FIFO whose reader has gone fails the write like a full disk,
  // with the path and exit status 2, rather than ending the tool unreported.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  try {
    return afterWritingOutput(run(argc, argv));
  } catch (const std::exception& error) {
    std::cerr << "zalt-lts-catalogue: " << error.what() << '\n';
    return afterWritingOutput(failure);
  }
}
