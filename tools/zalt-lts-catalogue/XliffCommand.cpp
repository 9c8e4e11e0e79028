#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "OutputFile.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Catalogue/WriteXliff.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Zalt::Catalogue::Finding;

std::string counted(std::size_t count, const char* singular, const char* plural) {
  return std::to_string(count) + ' ' + (count == 1 ? singular : plural);
}

std::string findingsCount(std::size_t count) {
  return count == 0 ? "no findings" : counted(count, "finding", "findings");
}

// "a.xml b.xml": the catalogue as the XLIFF file's original names it.
std::string joined(const std::vector<std::string>& files) {
  std::string names;
  for (const std::string& file : files) {
    names += (names.empty() ? "" : " ") + file;
  }
  return names;
}

std::size_t unitsOf(const Zalt::Catalogue::Catalogue& catalogue, const Zalt::Catalogue::CatalogueCheck& check,
                    const LanguageTag& language) {
  return static_cast<std::size_t>(std::count_if(check.kept.begin(), check.kept.end(), [&](std::size_t index) {
    return catalogue.texts[index].text.lang() == language;
  }));
}

struct Imported {
  Zalt::Catalogue::XliffImport xliff;
  std::vector<Finding> problems;
};

Imported readTranslations(const std::vector<std::string>& files) {
  try {
    return {Zalt::Catalogue::readXliffFiles(files), {}};
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    return {{}, error.problems()};
  }
}

void report(const std::vector<Finding>& reported, std::size_t texts, bool json) {
  if (json) {
    printJson({{"texts", texts}, {"findings", findingsJson(reported)}});
    return;
  }
  printPlaced(std::cout, reported);
  std::cout << "xliff import: " << counted(texts, "text", "texts") << " written, "
            << findingsCount(reported.size()) << '\n';
}

}  // namespace

int exportXliff(const std::vector<std::string>& files, const XliffExportRequest& request) {
  const LanguageTag from(request.from);
  const LanguageTag to(request.to);
  if (from == to) {
    std::cerr << "zalt-lts-catalogue: --to '" << request.to << "' is the language translated from\n";
    return failure;
  }
  const LoadedCatalogue loaded = loadCatalogue(files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cout, loaded.problems);
    std::cout << "xliff export: nothing written, " << findingsCount(loaded.problems.size()) << '\n';
    return failure;
  }
  const Zalt::Catalogue::CatalogueCheck check =
      Zalt::Catalogue::checkCatalogue(loaded.catalogue, request.unit);
  printPlaced(std::cout, check.findings);
  const std::size_t units = unitsOf(loaded.catalogue, check, from);
  if (units == 0) {
    std::cerr << "zalt-lts-catalogue: no kept text has the language '" << request.from << "'\n";
    return findings;
  }
  writeWhole(request.output,
             Zalt::Catalogue::writeXliff(loaded.catalogue, check, from, to, joined(loaded.catalogue.files)));
  std::cout << "xliff export: " << counted(units, "unit", "units") << " of " << request.from << " for "
            << request.to << ", " << findingsCount(check.findings.size()) << '\n';
  return check.findings.empty() ? success : findings;
}

int importXliff(const std::vector<std::string>& files, const XliffImportRequest& request) {
  Imported imported = readTranslations(files);
  if (!imported.problems.empty()) {
    report(imported.problems, 0, request.json);
    return failure;
  }
  Zalt::Catalogue::Catalogue& catalogue = imported.xliff.catalogue;
  const std::size_t texts = catalogue.texts.size();
  std::vector<Finding> reported = std::move(imported.xliff.findings);
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

}  // namespace ZaltCatalogueTool
