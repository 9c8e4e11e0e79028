// xliff export: the texts of one language as XLIFF 1.2, for translators' tools.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/LanguageCase.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Zalt::Catalogue::Finding;

struct XliffExportRequest {
  std::vector<std::string> files;
  std::string from;
  std::string to;
  // The XLIFF file to write, never standard output, which carries the findings.
  std::string output;
  // One JSON document {texts, findings} instead of lines.
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

std::size_t unitsOf(const Zalt::Catalogue::Catalogue& catalogue, const Zalt::Catalogue::CatalogueCheck& check,
                    const LanguageTag& language) {
  return static_cast<std::size_t>(std::count_if(check.kept.begin(), check.kept.end(), [&](std::size_t index) {
    return catalogue.texts[index].text.lang() == language;
  }));
}

void printDocument(std::size_t units, const std::vector<Finding>& reported) {
  printJson({{"texts", units}, {"findings", findingsJson(reported)}});
}

// Reports file problems, which write nothing (2).
int reportProblems(const std::vector<Finding>& problems, bool json) {
  if (json) {
    printDocument(0, problems);
    return failure;
  }
  printPlaced(std::cout, problems);
  std::cout << "xliff export: nothing written, " << countedOrNo(problems.size(), "finding", "findings")
            << '\n';
  return failure;
}

// An XLIFF 1.2 file for translators, with a unit for each kept text in `from`
// and, where the catalogue holds it already, its translation into `to`, which
// takes the catalogue's spelling of its case. Prints the catalogue's findings
// as check does and a summary line, or one JSON document {texts, findings};
// with file problems or an output that cannot be written, only those, and
// nothing is written (2). A `to` that is `from` in any case is refused (2); a
// `from` that no kept text has writes nothing (1).
int exportXliff(const XliffExportRequest& request) {
  requireDistinctInputs(request.files);
  refuseOutputAmongInputs(request.output, request.files);
  const LanguageTag from(request.from);
  if (Zalt::Catalogue::sameLanguage(from, LanguageTag(request.to))) {
    std::cerr << "zalt-lts-catalogue: --to '" << request.to << "' is the language translated from\n";
    return failure;
  }
  const LoadedCatalogue loaded = loadCatalogue(request.files);
  if (!loaded.problems.empty()) {
    return reportProblems(loaded.problems, request.json);
  }
  const LanguageTag to = languageAsHeld(LanguageTag(request.to), loaded.document);
  const Zalt::Catalogue::CatalogueCheck check =
      Zalt::Catalogue::checkCatalogue(loaded.document, request.unit);
  std::vector<Finding> reported = check.findings;
  const std::size_t units = unitsOf(loaded.document, check, from);
  if (units == 0) {
    const std::string absent = "no kept text has the language '" + request.from + "'";
    std::cerr << "zalt-lts-catalogue: " << absent << '\n';
    reported.push_back({Finding::Kind::Empty, {loaded.document.files.front(), 0, 0}, absent});
  } else {
    try {
      // The XLIFF file's original names the catalogue as "a.xml b.xml".
      writeWhole(request.output,
                 Zalt::Catalogue::writeXliff(loaded.document, check, from, to,
                                             listed(loaded.document.files, " "), request.unit));
    } catch (const std::runtime_error& error) {
      if (!request.json) {
        throw;
      }
      return reportProblems({unwritableOutput(request.output, error)}, true);
    }
  }
  if (request.json) {
    printDocument(units, reported);
  } else if (units == 0) {
    printPlaced(std::cout, check.findings);
  } else {
    printPlaced(std::cout, reported);
    std::cout << "xliff export: " << counted(units, "unit", "units") << " of " << request.from << " for "
              << to.tag() << ", " << countedOrNo(reported.size(), "finding", "findings") << '\n';
  }
  return reported.empty() ? success : findings;
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
  command->add_flag("--json", request.json,
                    "Print one JSON document {texts, findings}, file problems too; texts counts the units");
}

}  // namespace ZaltCatalogueTool
