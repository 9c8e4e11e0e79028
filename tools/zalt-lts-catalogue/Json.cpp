#include "Json.h"

#include <iostream>

namespace ZaltCatalogueTool {

nlohmann::json findingsJson(const std::vector<Zalt::Catalogue::Finding>& findings) {
  nlohmann::json list = nlohmann::json::array();
  for (const Zalt::Catalogue::Finding& finding : findings) {
    list.push_back({{"file", finding.location.file},
                    {"line", finding.location.line},
                    {"column", finding.location.column},
                    {"kind", Zalt::Catalogue::name(finding.kind)},
                    {"message", finding.message}});
  }
  return list;
}

Zalt::Catalogue::Finding unwritableOutput(const std::string& output, const std::runtime_error& error) {
  return {Zalt::Catalogue::Finding::Kind::File, {output, 0, 0}, error.what()};
}

void printJson(const nlohmann::json& document) {
  std::cout << document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

}  // namespace ZaltCatalogueTool
