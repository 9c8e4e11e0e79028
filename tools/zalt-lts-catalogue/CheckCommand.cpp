#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>

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
    printJson({{"texts", loaded.catalogue.texts.size()}, {"findings", findingsJson(reported)}});
  } else {
    printText(reported, loaded.catalogue.texts.size());
  }
  if (unreadable) {
    return failure;
  }
  return reported.empty() ? success : findings;
}

}  // namespace ZaltCatalogueTool
