#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>

#include <nlohmann/json.hpp>

#include <iostream>

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::CatalogueCheck;
using Zalt::Catalogue::Finding;

void printText(const CatalogueCheck& result, std::size_t texts) {
  for (const Finding& finding : result.findings) {
    std::cout << finding.location.file << ':' << finding.location.line << ": " << finding.message << '\n';
  }
  std::cout << "check: " << texts << " texts, ";
  if (result.findings.empty()) {
    std::cout << "no findings\n";
  } else {
    std::cout << result.findings.size() << (result.findings.size() == 1 ? " finding\n" : " findings\n");
  }
}

void printJson(const CatalogueCheck& result, std::size_t texts) {
  nlohmann::json findings = nlohmann::json::array();
  for (const Finding& finding : result.findings) {
    findings.push_back({{"file", finding.location.file},
                        {"line", finding.location.line},
                        {"column", finding.location.column},
                        {"kind", Zalt::Catalogue::name(finding.kind)},
                        {"message", finding.message}});
  }
  const nlohmann::json document = {{"texts", texts}, {"findings", findings}};
  // Texts, references and file names are the catalogue's bytes, which need not be UTF-8.
  std::cout << document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

}  // namespace

int check(const std::vector<std::string>& files, bool json) {
  const auto texts = loadCatalogue(files);
  if (!texts) {
    return unreadable;
  }
  const CatalogueCheck result = Zalt::Catalogue::checkCatalogue(*texts);
  if (json) {
    printJson(result, texts->texts.size());
  } else {
    printText(result, texts->texts.size());
  }
  return result.findings.empty() ? success : findings;
}

}  // namespace ZaltCatalogueTool
