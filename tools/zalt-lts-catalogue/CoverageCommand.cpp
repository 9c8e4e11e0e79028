#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Terminal.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/MdibCoverage.h>

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

struct LoadedMdib {
  Zalt::Catalogue::MdibTexts texts;
  std::vector<Finding> problems;
};

LoadedMdib loadMdib(const std::string& file) {
  try {
    return {Zalt::Catalogue::readMdibTextsFiles({file}), {}};
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    return {{}, error.problems()};
  }
}

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

std::string plural(std::size_t count, const char* singular, const char* pluralForm) {
  return std::to_string(count) + ' ' + (count == 1 ? singular : pluralForm);
}

// "no texts inline" or "3 texts inline (no Lang 1, en-US 2)".
std::string inlineSummary(const InlineCounts& counts) {
  std::size_t total = 0;
  std::string perLanguage;
  for (const auto& [lang, count] : counts) {
    total += count;
    perLanguage += (perLanguage.empty() ? "" : ", ") + (lang ? *lang : std::string("no Lang")) + ' ' +
                   std::to_string(count);
  }
  return total == 0 ? "no texts inline" : plural(total, "text", "texts") + " inline (" + perLanguage + ')';
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

Outcome judge(const std::vector<std::string>& files, const CoverageRequest& request) {
  LoadedMdib mdib = loadMdib(request.mdib);
  LoadedCatalogue loaded = loadCatalogue(files);
  Outcome outcome;
  if (!mdib.problems.empty() || !loaded.problems.empty()) {
    // Without the whole of both files, every reference would look missing or unused.
    outcome.reported = std::move(mdib.problems);
    outcome.reported.insert(outcome.reported.end(), loaded.problems.begin(), loaded.problems.end());
    outcome.coverage.findings = outcome.reported;
    return outcome;
  }
  outcome.coverage = Zalt::Catalogue::checkCoverage(
      mdib.texts, loaded.catalogue, Zalt::Catalogue::checkCatalogue(loaded.catalogue), request.allowUnused);
  outcome.inlineTexts = countInline(mdib.texts);
  std::copy_if(outcome.coverage.findings.begin(), outcome.coverage.findings.end(),
               std::back_inserter(outcome.reported), [&request](const Finding& finding) {
                 return request.requireRefs || finding.kind != Finding::Kind::Inline;
               });
  return outcome;
}

void printText(const Outcome& outcome) {
  printPlaced(std::cout, outcome.reported);
  const Zalt::Catalogue::CoverageCheck& coverage = outcome.coverage;
  std::cout << "coverage: " << plural(coverage.referencesNamed, "reference", "references") << " named, "
            << coverage.covered << " covered in every language, "
            << (outcome.reported.empty() ? std::string("no findings")
                                         : plural(outcome.reported.size(), "finding", "findings"))
            << ", " << escapedForTerminal(inlineSummary(outcome.inlineTexts)) << '\n';
}

}  // namespace

int coverage(const std::vector<std::string>& files, const CoverageRequest& request) {
  const Outcome outcome = judge(files, request);
  const bool unreadable =
      std::any_of(outcome.reported.begin(), outcome.reported.end(),
                  [](const Finding& finding) { return finding.kind == Finding::Kind::File; });
  if (request.json) {
    printJson({{"referencesNamed", outcome.coverage.referencesNamed},
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

}  // namespace ZaltCatalogueTool
