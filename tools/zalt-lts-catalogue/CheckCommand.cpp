#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>

#include <nlohmann/json.hpp>

#include <iostream>

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::Finding;

void printText(const std::vector<Finding>& reported, std::size_t texts) {
  printPlaced(std::cout, reported);
  std::cout << "check: " << texts << " texts, ";
  if (reported.empty()) {
    std::cout << "no findings\n";
  } else {
    std::cout << reported.size() << (reported.size() == 1 ? " finding\n" : " findings\n");
  }
}

void printJson(const std::vector<Finding>& reported, std::size_t texts) {
  nlohmann::json findings = nlohmann::json::array();
  for (const Finding& finding : reported) {
    findings.push_back({{"file", finding.location.file},
                        {"line", finding.location.line},
                        {"column", finding.location.column},
                        {"kind", Zalt::Catalogue::name(finding.kind)},
                        {"message", finding.message}});
  }
  const nlohmann::json document = {{"texts", texts}, {"findings", findings}};
  // Texts, references and file names are the catalogue's bytes, which need not
  // be UTF-8; a build script's parser must still get a document it can read.
  std::cout << document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

}  // namespace

int check(const std::vector<std::string>& files, bool json, Zalt::Catalogue::WidthUnit unit) {
  LoadedCatalogue loaded = loadCatalogue(files);
  const bool unreadable = !loaded.problems.empty();
  // With a file missing, the rest would be checked as if its texts were meant
  // to be absent, with a languages finding for every reference; only the file
  // problems are worth reading then.
  const std::vector<Finding> reported =
      unreadable ? std::move(loaded.problems)
                 : Zalt::Catalogue::checkCatalogue(loaded.catalogue, unit).findings;
  if (json) {
    printJson(reported, loaded.catalogue.texts.size());
  } else {
    printText(reported, loaded.catalogue.texts.size());
  }
  if (unreadable) {
    return failure;
  }
  return reported.empty() ? success : findings;
}

}  // namespace ZaltCatalogueTool
