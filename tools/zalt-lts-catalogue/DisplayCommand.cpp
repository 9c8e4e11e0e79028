// display: what each area of a device's display shows, measured in pixels.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "PictureFiles.h"
#include "Terminal.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Display/CheckDisplay.h>
#include <Zalt/Display/ReadDisplayProfile.h>

#include <iostream>

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::Finding;
using Zalt::Display::DisplayFinding;

struct DisplayRequest {
  std::string profile;
  std::vector<std::string> files;
  // One JSON document {texts, findings, shown} instead of lines.
  bool json = false;
  PictureRequest pictures;
};

nlohmann::json displayFindingsJson(const std::vector<DisplayFinding>& found) {
  nlohmann::json list = nlohmann::json::array();
  for (const DisplayFinding& finding : found) {
    nlohmann::json entry = {{"file", finding.location.file},     {"line", finding.location.line},
                            {"column", finding.location.column}, {"kind", Zalt::Display::name(finding.kind)},
                            {"message", finding.message},        {"area", finding.area}};
    if (finding.overflow) {
      entry["pixels"] = finding.overflow->pixels;
      entry["box"] = finding.overflow->box;
      entry["overflow"] = finding.overflow->overflow;
    }
    list.push_back(std::move(entry));
  }
  return list;
}

nlohmann::json shownJson(const Zalt::Display::DisplayProfile& profile,
                         const Zalt::Display::ShownText& shown) {
  return {{"area", profile.areas[shown.area].name},
          {"reference", shown.ref.get().value()},
          {"version", shown.version.get()},
          {"language", shown.language.tag()},
          {"linePixels", shown.linePixels}};
}

// The problems of the profile and of the catalogue files, each reported with
// the others so that one run names them all.
struct LoadedInputs {
  Zalt::Display::DisplayProfile profile;
  LoadedCatalogue catalogue;
  std::vector<Finding> problems;
};

LoadedInputs loadInputs(const DisplayRequest& request) {
  LoadedInputs loaded;
  try {
    loaded.profile = Zalt::Display::readDisplayProfile(request.profile);
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    loaded.problems = error.problems();
  }
  loaded.catalogue = loadCatalogue(request.files);
  loaded.problems.insert(loaded.problems.end(), loaded.catalogue.problems.begin(),
                         loaded.catalogue.problems.end());
  return loaded;
}

std::vector<std::string> inputsOf(const DisplayRequest& request) {
  std::vector<std::string> inputs = request.files;
  inputs.push_back(request.profile);
  return inputs;
}

// The catalogue's own findings and those of the display, one
// "FILE:LINE:COLUMN: message" per line, then a summary line; or one JSON
// document. With file problems of the profile or the catalogue, only those.
int display(const DisplayRequest& request) {
  requireDistinctInputs(request.files);
  const LoadedInputs loaded = loadInputs(request);
  const std::size_t texts = loaded.catalogue.document.texts.size();
  if (!loaded.problems.empty()) {
    if (request.json) {
      printJson({{"texts", texts},
                 {"findings", findingsJson(loaded.problems)},
                 {"shown", nlohmann::json::array()}});
    } else {
      printPlaced(std::cout, loaded.problems);
    }
    return failure;
  }
  const Zalt::Catalogue::CatalogueCheck checked = Zalt::Catalogue::checkCatalogue(loaded.catalogue.document);
  nlohmann::json shown = nlohmann::json::array();
  Zalt::Display::ShownTextVisitor collect;
  if (request.json) {
    collect = [&shown, &loaded](const Zalt::Display::ShownText& text) {
      shown.push_back(shownJson(loaded.profile, text));
    };
  }
  Zalt::Display::DisplayCheck result;
  try {
    result = checkDisplayDrawing(request.pictures, inputsOf(request), loaded.profile,
                                 loaded.catalogue.document, checked, collect);
  } catch (const std::runtime_error& error) {
    return reportUnwritablePictures(request.pictures, error, texts, request.json);
  }
  const std::size_t count = checked.findings.size() + result.findings.size();
  if (request.json) {
    nlohmann::json found = findingsJson(checked.findings);
    for (nlohmann::json& entry : displayFindingsJson(result.findings)) {
      found.push_back(std::move(entry));
    }
    printJson({{"texts", texts}, {"findings", std::move(found)}, {"shown", std::move(shown)}});
  } else {
    printPlaced(std::cout, checked.findings);
    for (const DisplayFinding& finding : result.findings) {
      std::cout << escapedForTerminal(Zalt::Display::placed(finding)) << '\n';
    }
    std::cout << "display: " << counted(texts, "text", "texts") << ", "
              << counted(result.shown, "text shown", "texts shown") << " in "
              << counted(loaded.profile.areas.size(), "area", "areas") << ", "
              << countedOrNo(count, "finding", "findings") << '\n';
  }
  return count == 0 ? success : findings;
}

}  // namespace

void addDisplay(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand("display",
                                            "Measure in pixels, with the device's fonts, the text that each "
                                            "display area shows; exit 1 on any finding.");
  DisplayRequest& request = runWhenChosen(*command, chosen, display);
  command->add_option("--profile", request.profile, "The display profile (JSON): fonts and areas")
      ->required();
  addFilesOption(*command, request.files);
  addPictureOptions(*command, request.pictures);
  command->add_flag(
      "--json", request.json,
      "Print one JSON document {texts, findings: [{file, line, column, kind, message, area, pixels, "
      "box, overflow}], shown: [{area, reference, version, language, linePixels}]}, file problems too");
}

}  // namespace ZaltCatalogueTool
