// xliff import: the translations of XLIFF files as a catalogue file, checked.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::Finding;

struct XliffImportRequest {
  std::vector<std::string> files;
  // The catalogue file to write, never standard output, which carries the findings.
  std::string output;
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

void report(const std::vector<Finding>& reported, std::size_t texts, bool json) {
  if (json) {
    printJson({{"texts", texts}, {"findings", findingsJson(reported)}});
    return;
  }
  printPlaced(std::cout, reported);
  std::cout << "xliff import: " << counted(texts, "text", "texts") << " written, "
            << countedOrNo(reported.size(), "finding", "findings") << '\n';
}

// A catalogue file of the translated units of XLIFF files, each text in its
// file's target language, written whole; then the findings of reading them
// (untranslated units, ids and languages that cannot be taken, markup) and of
// checking the texts as check does, widths measured, and a summary line; or
// one JSON document {texts, findings}. With file problems, only those, and
// nothing is written (2); nothing is written either where no unit holds a
// translation (1).
int importXliff(const XliffImportRequest& request) {
  requireDistinctInputs(request.files);
  refuseOutputAmongInputs(request.output, request.files);
  Loaded<Zalt::Catalogue::XliffImport> imported = loadFiles(Zalt::Catalogue::readXliffFiles, request.files);
  if (!imported.problems.empty()) {
    report(imported.problems, 0, request.json);
    return failure;
  }
  Zalt::Catalogue::Catalogue& catalogue = imported.document.catalogue;
  const std::size_t texts = catalogue.texts.size();
  std::vector<Finding> reported = std::move(imported.document.findings);
  if (catalogue.texts.empty()) {
    // An empty catalogue would pass for the translation of nothing.
    reported.push_back({Finding::Kind::Empty,
                        {catalogue.files.front(), 0, 0},
                        "no unit holds a translation; nothing is written"});
  } else {
    // The translations are checked as the catalogue they become: a text too
    // wide for its display is found on the way in, not on the device.
    const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(catalogue, request.unit);
    reported.insert(reported.end(), check.findings.begin(), check.findings.end());
    writeWhole(request.output,
               Zalt::Catalogue::writeCatalogue(Zalt::Catalogue::mdibTexts(std::move(catalogue.texts))));
  }
  report(reported, texts, request.json);
  return reported.empty() ? success : findings;
}

}  // namespace

void addXliffImport(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand(
      "import", "Write a catalogue file of the translated units of XLIFF files, and check it.");
  XliffImportRequest& request = runWhenChosen(*command, chosen, importXliff);
  addFilesOption(*command, request.files,
                 "XLIFF 1.2 files, read in order; - reads standard input, which messages name <stdin>");
  command->add_option("-o,--output", request.output, "The catalogue file to write, whole or not at all")
      ->required()
      ->check(namedFile());
  addWidthUnitOption(*command, request.unit);
  command->add_flag("--json", request.json, "Print one JSON document {texts, findings}, file problems too");
}

}  // namespace ZaltCatalogueTool
