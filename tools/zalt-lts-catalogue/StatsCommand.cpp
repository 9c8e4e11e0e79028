// stats: how many texts, references, versions and languages a catalogue holds,
// and the digest of what a device store keeps of it.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "Terminal.h"
#include "Wording.h"

#include <Zalt/Catalogue/CatalogueDigest.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <iostream>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::VersionCounter;
using Zalt::Catalogue::CatalogueText;

struct StatsRequest {
  std::vector<std::string> files;
  // One JSON document of the counts instead of lines.
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

struct Counts {
  std::set<LocalizedTextRef> references;
  std::set<std::pair<LocalizedTextRef, VersionCounter>> versions;
  std::set<Tovra::Locale::LanguageTag> languages;
  // Keyed by the width's value, -1 for texts without a width, so that widths print narrowest first.
  std::map<int, std::size_t> perWidth;
  std::map<Zalt::Localization::NumberOfLines, std::size_t> perLines;
  // Every language, with its texts whose declared width is narrower than they measure.
  std::map<Tovra::Locale::LanguageTag, std::size_t> tooNarrow;
};

bool isDeclaredTooNarrow(const Tovra::Mdib::LocalizedText& text, Zalt::Catalogue::WidthUnit unit) {
  return text.textWidth() &&
         *text.textWidth() < Zalt::Catalogue::measureText(text.text(), unit).measuredClass;
}

Counts count(const std::vector<CatalogueText>& texts, const std::vector<std::size_t>& kept,
             Zalt::Catalogue::WidthUnit unit) {
  Counts counts;
  for (const std::size_t index : kept) {
    const Tovra::Mdib::LocalizedText& text = texts[index].text;
    counts.references.insert(text.ref());
    counts.versions.emplace(text.ref(), *text.version());
    counts.languages.insert(*text.lang());
    ++counts.perWidth[text.textWidth() ? static_cast<int>(*text.textWidth()) : -1];
    ++counts.perLines[Zalt::Localization::Impl::numberOfLineBreaks(text.text()) + 1];
    counts.tooNarrow[*text.lang()] += isDeclaredTooNarrow(text, unit) ? 1 : 0;
  }
  return counts;
}

void print(const Counts& counts, const std::string& digest, std::size_t kept, std::size_t read) {
  std::cout << "texts: " << kept;
  if (kept != read) {
    std::cout << " (of " << read << " read; see 'zalt-lts-catalogue check' for the others)";
  }
  // The number of languages, then their tags.
  std::vector<std::string> languages{std::to_string(counts.languages.size())};
  for (const Tovra::Locale::LanguageTag& language : counts.languages) {
    languages.push_back(escapedForTerminal(language.tag()));
  }
  std::cout << "\nreferences: " << counts.references.size() << "\nversions: " << counts.versions.size()
            << "\nlanguages: " << listed(languages, " ") << "\ndigest: sha256:" << digest
            << "\ntexts per width:\n";
  for (const auto& width : counts.perWidth) {
    std::cout << "  "
              << (width.first < 0
                      ? "none"
                      : Tovra::Mdib::name(static_cast<Tovra::Mdib::LocalizedTextWidth>(width.first)))
              << ": " << width.second << '\n';
  }
  std::cout << "texts per number of lines:\n";
  for (const auto& lines : counts.perLines) {
    std::cout << "  " << lines.first << ": " << lines.second << '\n';
  }
  std::cout << "texts declared narrower than they measure, per language:\n";
  for (const auto& language : counts.tooNarrow) {
    std::cout << "  " << escapedForTerminal(language.first.tag()) << ": " << language.second << '\n';
  }
}

std::string widthKey(int width) {
  return width < 0 ? "none"
                   : Zalt::Catalogue::textWidthToken(static_cast<Tovra::Mdib::LocalizedTextWidth>(width));
}

nlohmann::json countsJson(const Counts& counts, const std::string& digest, std::size_t kept,
                          std::size_t read) {
  nlohmann::json document = {{"texts", kept},
                             {"read", read},
                             {"references", counts.references.size()},
                             {"versions", counts.versions.size()},
                             {"languages", nlohmann::json::array()},
                             {"digest", digest},
                             {"perWidth", nlohmann::json::object()},
                             {"perLines", nlohmann::json::object()},
                             {"declaredTooNarrow", nlohmann::json::object()},
                             {"findings", nlohmann::json::array()}};
  for (const Tovra::Locale::LanguageTag& language : counts.languages) {
    document["languages"].push_back(language.tag());
  }
  for (const auto& width : counts.perWidth) {
    document["perWidth"][widthKey(width.first)] = width.second;
  }
  for (const auto& lines : counts.perLines) {
    document["perLines"][std::to_string(lines.first)] = lines.second;
  }
  for (const auto& language : counts.tooNarrow) {
    document["declaredTooNarrow"][language.first.tag()] = language.second;
  }
  return document;
}

// Numbers of texts, references, versions and languages, texts per width and
// number of lines, and per language the texts declared narrower than they
// measure in the unit asked for, and the catalogue's digest. File problems
// end it on stderr.
int stats(const StatsRequest& request) {
  requireDistinctInputs(request.files);
  const LoadedCatalogue loaded = loadCatalogue(request.files);
  if (!loaded.problems.empty()) {
    if (request.json) {
      printJson({{"findings", findingsJson(loaded.problems)}});
    } else {
      printPlaced(std::cerr, loaded.problems);
    }
    return failure;
  }
  const Zalt::Catalogue::CatalogueCheck check =
      Zalt::Catalogue::checkCatalogue(loaded.document, request.unit);
  const Counts counts = count(loaded.document.texts, check.kept, request.unit);
  const std::string digest = Zalt::Catalogue::catalogueDigest(loaded.document, check);
  if (request.json) {
    printJson(countsJson(counts, digest, check.kept.size(), loaded.document.texts.size()));
  } else {
    print(counts, digest, check.kept.size(), loaded.document.texts.size());
  }
  return success;
}

}  // namespace

void addStats(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand("stats", "Count texts, references, versions and languages.");
  StatsRequest& request = runWhenChosen(*command, chosen, stats);
  addFilesOption(*command, request.files);
  addWidthUnitOption(*command, request.unit);
  command->add_flag(
      "--json", request.json,
      "Print one JSON document {texts, read, references, versions, languages, digest, perWidth, perLines, "
      "declaredTooNarrow, findings}, file problems too");
}

}  // namespace ZaltCatalogueTool
