// check: every problem that a device store would meet.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>

#include <iostream>

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::Finding;

struct CheckRequest {
  std::vector<std::string> files;
  // One JSON document {texts, findings} instead of lines.
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

void printText(const std::vector<Finding>& reported, std::size_t texts) {
  printPlaced(std::cout, reported);
  std::cout << "check: " << counted(texts, "text", "texts") << ", "
            << countedOrNo(reported.size(), "finding", "findings") << '\n';
}

// Every problem that a device store would meet, one "FILE:LINE:COLUMN: message"
// per line, then a summary line; or one JSON document. With file problems, only
// those. Widths are measured in the unit asked for.
int check(const CheckRequest& request) {
  requireDistinctInputs(request.files);
  LoadedCatalogue loaded = loadCatalogue(request.files);
  const bool unreadable = !loaded.problems.empty();
  // With a file missing, the rest would be checked as if its texts were meant
  // to be absent, with a languages finding for every reference; only the file
  // problems are worth reading then.
  const std::vector<Finding> reported =
      unreadable ? std::move(loaded.problems)
                 : Zalt::Catalogue::checkCatalogue(loaded.document, request.unit).findings;
  if (request.json) {
    printJson({{"texts", loaded.document.texts.size()}, {"findings", findingsJson(reported)}});
  } else {
    printText(reported, loaded.document.texts.size());
  }
  if (unreadable) {
    return failure;
  }
  return reported.empty() ? success : findings;
}

}  // namespace

void addCheck(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand(
      "check", "Report every problem that a device store would meet; exit 1 if there is any.");
  CheckRequest& request = runWhenChosen(*command, chosen, check);
  addFilesOption(*command, request.files);
  command->add_flag("--json", request.json,
                    "Print one JSON document {texts, findings: [{file, line, column, kind, message}]}, "
                    "file problems too; a wrong command line prints none");
  addWidthUnitOption(*command, request.unit);
}

}  // namespace ZaltCatalogueTool
