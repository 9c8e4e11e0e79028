// coverage: the texts that an MDIB names and the catalogue lacks.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "Terminal.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/MdibCoverage.h>
#include <Zalt/Catalogue/ReadMdibTexts.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Zalt::Catalogue::Finding;

struct CoverageRequest {
  std::vector<std::string> files;
  // The MDIB document; "-" is standard input.
  std::string mdib;
  bool json = false;
  // Leaves out the references of the catalogue that the MDIB never names.
  bool allowUnused = false;
  // Makes each text that the MDIB gives inline a finding.
  bool requireRefs = false;
};

// Inline texts by their Lang, those without one first.
using InlineCounts = std::map<std::optional<std::string>, std::size_t>;

InlineCounts countInline(const Zalt::Catalogue::MdibTexts& mdib) {
  InlineCounts counts;
  for (const Zalt::Catalogue::MdibTextUse& use : mdib.uses) {
    if (use.isInline) {
      ++counts[use.lang];
    }
  }
  return counts;
}

// "no texts inline" or "3 texts inline (no Lang 1, en-US 2)".
std::string inlineSummary(const InlineCounts& counts) {
  std::size_t total = 0;
  std::vector<std::string> perLanguage;
  for (const auto& [lang, count] : counts) {
    total += count;
    perLanguage.push_back((lang ? *lang : std::string("no Lang")) + ' ' + std::to_string(count));
  }
  const std::string summary = countedOrNo(total, "text", "texts") + " inline";
  return total == 0 ? summary : summary + " (" + listed(perLanguage) + ')';
}

nlohmann::json inlineJson(const InlineCounts& counts) {
  nlohmann::json list = nlohmann::json::array();
  for (const auto& [lang, count] : counts) {
    list.push_back({{"lang", lang ? nlohmann::json(*lang) : nlohmann::json()}, {"texts", count}});
  }
  return list;
}

struct Outcome {
  Zalt::Catalogue::CoverageCheck coverage;
  // The findings that count: those of `coverage` but inline texts, unless
  // references are required; or the file problems alone.
  std::vector<Finding> reported;
  InlineCounts inlineTexts;
};

Outcome judge(const CoverageRequest& request) {
  Loaded<Zalt::Catalogue::MdibTexts> mdib = loadFiles(Zalt::Catalogue::readMdibTextsFiles, {request.mdib});
  LoadedCatalogue loaded = loadCatalogue(request.files);
  Outcome outcome;
  if (!mdib.problems.empty() || !loaded.problems.empty()) {
    // Without the whole of both files, every reference would look missing or unused.
    outcome.reported = std::move(mdib.problems);
    outcome.reported.insert(outcome.reported.end(), loaded.problems.begin(), loaded.problems.end());
    outcome.coverage.findings = outcome.reported;
    return outcome;
  }
  outcome.coverage = Zalt::Catalogue::checkCoverage(
      mdib.document, loaded.document, Zalt::Catalogue::checkCatalogue(loaded.document), request.allowUnused);
  outcome.inlineTexts = countInline(mdib.document);
  std::copy_if(outcome.coverage.findings.begin(), outcome.coverage.findings.end(),
               std::back_inserter(outcome.reported), [&request](const Finding& finding) {
                 return request.requireRefs || finding.kind != Finding::Kind::Inline;
               });
  return outcome;
}

void printText(const Outcome& outcome) {
  printPlaced(std::cout, outcome.reported);
  const Zalt::Catalogue::CoverageCheck& coverage = outcome.coverage;
  std::cout << "coverage: " << counted(coverage.referencesNamed, "reference", "references") << " named in "
            << counted(coverage.uses, "use", "uses") << ", " << coverage.covered
            << " covered in every language, " << countedOrNo(outcome.reported.size(), "finding", "findings")
            << ", " << escapedForTerminal(inlineSummary(outcome.inlineTexts)) << '\n';
}

// Every text that the MDIB names and the catalogue lacks in a language or in
// the version named, each at its place in the MDIB, then the catalogue's
// references that the MDIB never names, then a summary line that counts the
// texts given inline per language; or one JSON document. With file problems of
// either side, only those.
int coverage(const CoverageRequest& request) {
  std::vector<std::string> inputs = request.files;
  inputs.push_back(request.mdib);
  requireDistinctInputs(inputs);
  const Outcome outcome = judge(request);
  const bool unreadable =
      std::any_of(outcome.reported.begin(), outcome.reported.end(),
                  [](const Finding& finding) { return finding.kind == Finding::Kind::File; });
  if (request.json) {
    printJson({{"referencesNamed", outcome.coverage.referencesNamed},
               {"uses", outcome.coverage.uses},
               {"covered", outcome.coverage.covered},
               {"inline", inlineJson(outcome.inlineTexts)},
               {"findings", findingsJson(outcome.coverage.findings)}});
  } else {
    printText(outcome);
  }
  if (unreadable) {
    return failure;
  }
  return outcome.reported.empty() ? success : findings;
}

}  // namespace

void addCoverage(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand(
      "coverage", "Report the texts that an MDIB names and the catalogue lacks; exit 1 if there is any.");
  CoverageRequest& request = runWhenChosen(*command, chosen, coverage);
  addFilesOption(*command, request.files);
  command
      ->add_option("--mdib", request.mdib,
                   "The MDIB document whose Ref attributes name the texts: a GetMdibResponse, an Mdib, or "
                   "any document of MDIB content; - reads standard input")
      ->required();
  command->add_flag("--allow-unused", request.allowUnused,
                    "Leave out the references of the catalogue that the MDIB never names");
  command->add_flag("--require-refs", request.requireRefs,
                    "Report each text that the MDIB gives inline, without a Ref, as a finding");
  command->add_flag(
      "--json", request.json,
      "Print one JSON document {referencesNamed, uses, covered, inline: [{lang, texts}], findings}, "
      "inline texts and file problems too");
}

}  // namespace ZaltCatalogueTool
