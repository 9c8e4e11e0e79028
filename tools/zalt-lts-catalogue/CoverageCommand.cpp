// coverage: the texts that an MDIB names and the catalogue lacks.
#include "CatalogueIds.h"
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"
#include "Terminal.h"
#include "Wording.h"

#include <Zalt/Catalogue/CatalogueDigest.h>
#include <Zalt/Catalogue/CatalogueIdentity.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/MdibCoverage.h>
#include <Zalt/Catalogue/ReadMdibTexts.h>

#include <boost/optional.hpp>

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
  // The record of catalogue identifiers to check the MDIB's against.
  boost::optional<std::string> catalogueIds;
  // Adds the MDIB's identifier to that record where it lacks it.
  bool record = false;

  std::optional<RecordRequest> recordRequest() const {
    return catalogueIds ? std::optional<RecordRequest>({*catalogueIds, record}) : std::nullopt;
  }
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
  Zalt::Catalogue::IdentityCheck identity;
  // The record's new text, where --record adds the MDIB's identifier to it.
  std::optional<std::string> newRecord;
};

Loaded<Zalt::Catalogue::CatalogueIdRecord> loadRecord(const std::optional<RecordRequest>& request) {
  try {
    return {request ? readRecord(*request) : Zalt::Catalogue::CatalogueIdRecord(), {}};
  } catch (const Zalt::Catalogue::CatalogueError& error) {
    return {{}, error.problems()};
  }
}

// The identity findings follow the coverage findings, those of the record last.
void judgeIdentity(const CoverageRequest& request, const Zalt::Catalogue::MdibTexts& mdib,
                   const Zalt::Catalogue::Catalogue& catalogue, const Zalt::Catalogue::CatalogueCheck& check,
                   const Zalt::Catalogue::CatalogueIdRecord& record, Outcome& outcome) {
  outcome.identity = Zalt::Catalogue::checkIdentity(mdib);
  std::vector<Finding>& findings = outcome.coverage.findings;
  findings.insert(findings.end(), outcome.identity.findings.begin(), outcome.identity.findings.end());
  if (const std::optional<RecordRequest> recordRequest = request.recordRequest()) {
    RecordCheck checked =
        checkAgainstRecord(outcome.identity, mdib.files.front(), record,
                           Zalt::Catalogue::catalogueDigest(catalogue, check), *recordRequest);
    findings.insert(findings.end(), checked.findings.begin(), checked.findings.end());
    outcome.newRecord = std::move(checked.newText);
  }
}

Outcome judge(const CoverageRequest& request) {
  Loaded<Zalt::Catalogue::MdibTexts> mdib = loadFiles(Zalt::Catalogue::readMdibTextsFiles, {request.mdib});
  LoadedCatalogue loaded = loadCatalogue(request.files);
  const Loaded<Zalt::Catalogue::CatalogueIdRecord> record = loadRecord(request.recordRequest());
  Outcome outcome;
  if (!mdib.problems.empty() || !loaded.problems.empty() || !record.problems.empty()) {
    // Without the whole of both files, every reference would look missing or unused.
    outcome.reported = std::move(mdib.problems);
    outcome.reported.insert(outcome.reported.end(), loaded.problems.begin(), loaded.problems.end());
    outcome.reported.insert(outcome.reported.end(), record.problems.begin(), record.problems.end());
    outcome.coverage.findings = outcome.reported;
    return outcome;
  }
  const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(loaded.document);
  outcome.coverage =
      Zalt::Catalogue::checkCoverage(mdib.document, loaded.document, check, request.allowUnused);
  outcome.inlineTexts = countInline(mdib.document);
  judgeIdentity(request, mdib.document, loaded.document, check, record.document, outcome);
  std::copy_if(outcome.coverage.findings.begin(), outcome.coverage.findings.end(),
               std::back_inserter(outcome.reported), [&request](const Finding& finding) {
                 return request.requireRefs || finding.kind != Finding::Kind::Inline;
               });
  return outcome;
}

// ", catalogue urn:oid:1.2.3" or ", no catalogue identifier", and whether
// this run recorded it.
std::string identitySummary(const Outcome& outcome, const CoverageRequest& request) {
  if (!outcome.identity.catalogueId) {
    return ", no catalogue identifier";
  }
  const std::string summary = ", catalogue " + *outcome.identity.catalogueId;
  return outcome.newRecord ? summary + " recorded in " + *request.catalogueIds : summary;
}

void printText(const Outcome& outcome, const CoverageRequest& request) {
  printPlaced(std::cout, outcome.reported);
  const Zalt::Catalogue::CoverageCheck& coverage = outcome.coverage;
  std::cout << "coverage: " << counted(coverage.referencesNamed, "reference", "references") << " named in "
            << counted(coverage.uses, "use", "uses") << ", " << coverage.covered
            << " covered in every language, " << countedOrNo(outcome.reported.size(), "finding", "findings")
            << ", "
            << escapedForTerminal(inlineSummary(outcome.inlineTexts) + identitySummary(outcome, request))
            << '\n';
}

// Every text that the MDIB names and the catalogue lacks in a language or in
// the version named, each at its place in the MDIB, then the catalogue's
// references that the MDIB never names, then a summary line that counts the
// texts given inline per language and names the catalogue identifier; or one
// JSON document. With file problems of any file, only those. A record is
// written, whole, only when the files have no problems.
int coverage(const CoverageRequest& request) {
  std::vector<std::string> inputs = request.files;
  inputs.push_back(request.mdib);
  requireDistinctInputs(inputs);
  if (request.catalogueIds) {
    refuseOutputAmongInputs(*request.catalogueIds, inputs);
  }
  const Outcome outcome = judge(request);
  if (outcome.newRecord) {
    writeWhole(*request.catalogueIds, *outcome.newRecord);
  }
  const bool unreadable =
      std::any_of(outcome.reported.begin(), outcome.reported.end(),
                  [](const Finding& finding) { return finding.kind == Finding::Kind::File; });
  if (request.json) {
    printJson({{"referencesNamed", outcome.coverage.referencesNamed},
               {"uses", outcome.coverage.uses},
               {"covered", outcome.coverage.covered},
               {"inline", inlineJson(outcome.inlineTexts)},
               {"catalogueId", outcome.identity.catalogueId ? nlohmann::json(*outcome.identity.catalogueId)
                                                            : nlohmann::json()},
               {"recorded", outcome.newRecord.has_value()},
               {"findings", findingsJson(outcome.coverage.findings)}});
  } else {
    printText(outcome, request);
  }
  if (unreadable) {
    return failure;
  }
  return outcome.reported.empty() ? success : findings;
}

// --catalogue-ids FILE and --record, which needs it.
void addCatalogueIdsOptions(CLI::App& command, CoverageRequest& request) {
  CLI::Option* catalogueIds =
      command
          .add_option("--catalogue-ids", request.catalogueIds,
                      "The record of text catalogue identifiers, one 'IDENTIFIER sha256:DIGEST' a line: the "
                      "MDIB's identifier must be recorded with the digest of this catalogue")
          ->type_name("FILE");
  command
      .add_flag("--record", request.record,
                "Add the MDIB's identifier, when the record lacks it, with the catalogue's digest")
      ->needs(catalogueIds);
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
  addCatalogueIdsOptions(*command, request);
  command->add_flag("--json", request.json,
                    "Print one JSON document {referencesNamed, uses, covered, inline: [{lang, texts}], "
                    "catalogueId, recorded, findings}, inline texts and file problems too");
}

}  // namespace ZaltCatalogueTool
