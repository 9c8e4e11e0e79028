// xliff export: the texts of one language as XLIFF 1.2, for translators' tools.
#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;

struct XliffExportRequest {
  std::vector<std::string> files;
  std::string from;
  std::string to;
  // The XLIFF file to write, never standard output, which carries the findings.
  std::string output;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

std::size_t unitsOf(const Zalt::Catalogue::Catalogue& catalogue, const Zalt::Catalogue::CatalogueCheck& check,
                    const LanguageTag& language) {
  return static_cast<std::size_t>(std::count_if(check.kept.begin(), check.kept.end(), [&](std::size_t index) {
    return catalogue.texts[index].text.lang() == language;
  }));
}

// An XLIFF 1.2 file for translators, with a unit for each kept text in `from`
// and, where the catalogue holds it already, its translation into `to`. Prints
// the catalogue's findings as check does and a summary line; with file
// problems, only those, and nothing is written (2). A `to` that is `from` is
// refused (2); a `from` that no kept text has writes nothing (1).
int exportXliff(const XliffExportRequest& request) {
  requireDistinctInputs(request.files);
  refuseOutputAmongInputs(request.output, request.files);
  const LanguageTag from(request.from);
  const LanguageTag to(request.to);
  if (from == to) {
    std::cerr << "zalt-lts-catalogue: --to '" << request.to << "' is the language translated from\n";
    return failure;
  }
  const LoadedCatalogue loaded = loadCatalogue(request.files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cout, loaded.problems);
    std::cout << "xliff export: nothing written, "
              << countedOrNo(loaded.problems.size(), "finding", "findings") << '\n';
    return failure;
  }
  const Zalt::Catalogue::CatalogueCheck check =
      Zalt::Catalogue::checkCatalogue(loaded.document, request.unit);
  printPlaced(std::cout, check.findings);
  const std::size_t units = unitsOf(loaded.document, check, from);
  if (units == 0) {
    std::cerr << "zalt-lts-catalogue: no kept text has the language '" << request.from << "'\n";
    return findings;
  }
  // The XLIFF file's original names the catalogue as "a.xml b.xml".
  writeWhole(request.output, Zalt::Catalogue::writeXliff(loaded.document, check, from, to,
                                                         listed(loaded.document.files, " ")));
  std::cout << "xliff export: " << counted(units, "unit", "units") << " of " << request.from << " for "
            << request.to << ", " << countedOrNo(check.findings.size(), "finding", "findings") << '\n';
  return check.findings.empty() ? success : findings;
}

}  // namespace

void addXliffExport(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand(
      "export",
      "Write an XLIFF file of the kept texts of one language, with the translations the catalogue has.");
  XliffExportRequest& request = runWhenChosen(*command, chosen, exportXliff);
  addFilesOption(*command, request.files);
  command->add_option("--from", request.from, "The language to translate, such as en-US")
      ->required()
      ->check(storeLanguageTag());
  command->add_option("--to", request.to, "The language to translate into, such as de-DE")
      ->required()
      ->check(storeLanguageTag());
  command->add_option("-o,--output", request.output, "The XLIFF file to write, whole or not at all")
      ->required()
      ->check(namedFile());
  addWidthUnitOption(*command, request.unit);
}

}  // namespace ZaltCatalogueTool
