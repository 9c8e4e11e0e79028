// zalt-lts-catalogue: checks localized-text catalogues on the build machine
// against the rules of the device store, and shows what a store answers.
//
//   zalt-lts-catalogue check texts/*.xml [--json]
//   zalt-lts-catalogue fit texts/*.xml --lang de-DE --width m --lines 2
//   zalt-lts-catalogue stats texts/*.xml
#include "Commands.h"
#include "ExitCode.h"

#include <Zalt/Catalogue/TextWidthTokens.h>

#include <CLI/CLI.hpp>

#include <cstdint>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace ZaltCatalogueTool;

int run(int argc, char** argv) {
  CLI::App app("Checks localized-text catalogues against the rules of the device store.");
  app.require_subcommand(1);

  std::vector<std::string> files;
  bool json = false;
  CLI::App* checkCommand = app.add_subcommand(
      "check", "Report every problem that a device store would meet; exit 1 if there is any.");
  checkCommand->add_option("files", files, "Catalogue files, read in order as one catalogue")->required();
  checkCommand->add_flag("--json", json, "Print the findings as JSON");

  FitRequest request;
  std::string width;
  std::string ref;
  std::uint64_t version = 0;
  CLI::App* fitCommand =
      app.add_subcommand("fit", "Show the text that a device store answers for each reference.");
  fitCommand->add_option("files", files, "Catalogue files, read in order as one catalogue")->required();
  fitCommand->add_option("--lang", request.language, "Language tag, such as de-DE")->required();
  CLI::Option* widthOption = fitCommand->add_option("--width", width, "Display width: xs, s, m, l, xl or xxl")
                                 ->check(CLI::IsMember({"xs", "s", "m", "l", "xl", "xxl"}));
  Zalt::Localization::NumberOfLines lines = 0;
  CLI::Option* linesOption =
      fitCommand->add_option("--lines", lines, "Number of lines the display has room for");
  CLI::Option* refOption = fitCommand->add_option("--ref", ref, "Only this reference");
  CLI::Option* versionOption =
      fitCommand->add_option("--version", version, "This version instead of the newest");

  CLI::App* statsCommand = app.add_subcommand("stats", "Count texts, references, versions and languages.");
  statsCommand->add_option("files", files, "Catalogue files, read in order as one catalogue")->required();

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = app.exit(error);
    return status == 0 ? success : unreadable;
  }

  if (checkCommand->parsed()) {
    return check(files, json);
  }
  if (fitCommand->parsed()) {
    if (*widthOption) {
      request.width = Zalt::Catalogue::textWidthFromToken(width);
    }
    if (*linesOption) {
      request.lines = lines;
    }
    if (*refOption) {
      request.ref = ref;
    }
    if (*versionOption) {
      request.version = Tovra::Mdib::VersionCounter(version);
    }
    return fit(files, request);
  }
  return stats(files);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "zalt-lts-catalogue: " << error.what() << '\n';
    return unreadable;
  }
}
