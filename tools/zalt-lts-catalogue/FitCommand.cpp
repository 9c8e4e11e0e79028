// fit: the text that a device store answers for each reference.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "Terminal.h"
#include "Wording.h"

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <boost/optional.hpp>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::Device::LocalizedTextStore;

struct FitRequest {
  std::vector<std::string> files;
  std::string language;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> width;
  boost::optional<Zalt::Localization::NumberOfLines> lines;
  boost::optional<std::string> ref;
  boost::optional<VersionCounter> version;
  // What the measured class of each answer is counted in.
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
  // One JSON document {findings, answers, unanswerable} instead of a table.
  bool json = false;
};

bool isOfAskedReference(const Tovra::Mdib::LocalizedText& text, const FitRequest& request) {
  return !request.ref || text.ref().get().value() == *request.ref;
}

// Each reference with its newest kept version, or the one asked for.
std::map<LocalizedTextRef, VersionCounter> referencesToShow(
    const std::vector<Tovra::Mdib::LocalizedText>& kept, const FitRequest& request) {
  std::map<LocalizedTextRef, VersionCounter> versions;
  for (const Tovra::Mdib::LocalizedText& text : kept) {
    if (!isOfAskedReference(text, request)) {
      continue;
    }
    const VersionCounter version = request.version ? *request.version : *text.version();
    auto found = versions.emplace(text.ref(), version).first;
    found->second = std::max(found->second, version);
  }
  return versions;
}

// Why no row could show a text, or none. A table of "nothing fits" would
// hide that the request names what the catalogue does not hold at all.
boost::optional<std::string> unanswerable(const std::vector<Tovra::Mdib::LocalizedText>& kept,
                                          const FitRequest& request) {
  const auto anyKept = [&kept](const auto& predicate) {
    return std::any_of(kept.begin(), kept.end(), predicate);
  };
  if (kept.empty()) {
    return std::string("no text is kept; see 'zalt-lts-catalogue check'");
  }
  if (!anyKept([&request](const auto& text) { return isOfAskedReference(text, request); })) {
    return "no kept text has the reference '" + *request.ref + "'";
  }
  if (request.version && !anyKept([&request](const auto& text) {
        return isOfAskedReference(text, request) && *text.version() == *request.version;
      })) {
    return "no kept text " + (request.ref ? "of the reference '" + *request.ref + "' " : std::string()) +
           "has the version " + std::to_string(request.version->get());
  }
  const LanguageTag language(request.language);
  if (!anyKept([&language](const auto& text) { return *text.lang() == language; })) {
    return "no kept text has the language '" + request.language + "'";
  }
  return boost::none;
}

// What the store answers for one reference; no text where nothing fits.
struct Answer {
  LocalizedTextRef ref;
  VersionCounter version;
  boost::optional<Zalt::Localization::LocalizedText> text;
  Tovra::Mdib::LocalizedTextWidth measured = Tovra::Mdib::LocalizedTextWidth::ExtraSmall;
};

std::vector<Answer> answers(const LocalizedTextStore& store,
                            const std::map<LocalizedTextRef, VersionCounter>& references,
                            const FitRequest& request) {
  std::vector<Answer> found;
  const LanguageTag language(request.language);
  for (const auto& reference : references) {
    Zalt::Localization::LocalizedText text =
        store.text(Zalt::Localization::LocalizedTextReference(reference.first, reference.second,
                                                              request.width, request.lines),
                   language);
    Answer answer{reference.first, reference.second, boost::none};
    if (text.version()) {
      answer.measured = Zalt::Catalogue::measureText(text.text(), request.unit).measuredClass;
      answer.text = std::move(text);
    }
    found.push_back(std::move(answer));
  }
  return found;
}

// References and texts escaped, so that each answer stays on one row of a
// terminal and nothing in a text reorders the rows.
void printTable(const std::vector<Answer>& found) {
  std::vector<std::vector<std::string>> rows{{"REFERENCE", "VERSION", "WIDTH", "MEASURED", "LINES", "TEXT"}};
  for (const Answer& answer : found) {
    std::vector<std::string> row{escapedForTerminal(answer.ref.get().value()),
                                 std::to_string(answer.version.get())};
    if (answer.text) {
      row.insert(row.end(), {answer.text->textWidth() ? Tovra::Mdib::name(*answer.text->textWidth()) : "--",
                             Tovra::Mdib::name(answer.measured), std::to_string(answer.text->numberOfLines()),
                             '"' + escapedForTerminal(answer.text->text().value()) + '"'});
    } else {
      row.insert(row.end(), {"", "", "", "nothing fits"});
    }
    rows.push_back(std::move(row));
  }
  std::vector<std::size_t> widths(rows.front().size() - 1, 0);
  for (const auto& row : rows) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
      widths[column] = std::max(widths[column], row[column].size());
    }
  }
  for (const auto& row : rows) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
      std::cout << std::left << std::setw(static_cast<int>(widths[column] + 2)) << row[column];
    }
    std::cout << row.back() << '\n';
  }
}

nlohmann::json answersJson(const std::vector<Answer>& found) {
  nlohmann::json list = nlohmann::json::array();
  for (const Answer& answer : found) {
    nlohmann::json entry = {{"reference", answer.ref.get().value()}, {"version", answer.version.get()}};
    if (answer.text) {
      entry["width"] = answer.text->textWidth()
                           ? nlohmann::json(Zalt::Catalogue::textWidthToken(*answer.text->textWidth()))
                           : nlohmann::json();
      entry["measured"] = Zalt::Catalogue::textWidthToken(answer.measured);
      entry["lines"] = answer.text->numberOfLines();
      entry["text"] = answer.text->text().value();
    } else {
      entry["text"] = nullptr;
    }
    list.push_back(std::move(entry));
  }
  return list;
}

// A table of what the store's text() answers for each reference (or the one
// asked for), in its newest version unless a version is asked for. Says on
// stderr, instead, which language, reference or version no kept text has.
// File problems end it on stderr.
int fit(const FitRequest& request) {
  requireDistinctInputs(request.files);
  const LoadedCatalogue loaded = loadCatalogue(request.files);
  if (!loaded.problems.empty()) {
    if (request.json) {
      printJson({{"findings", findingsJson(loaded.problems)}, {"answers", nlohmann::json::array()}});
    } else {
      printPlaced(std::cerr, loaded.problems);
    }
    return failure;
  }
  const Zalt::Catalogue::CatalogueCheck checked =
      Zalt::Catalogue::checkCatalogue(loaded.document, request.unit);
  if (!checked.findings.empty() && !request.json) {
    std::cerr << "zalt-lts-catalogue: warning: " << counted(checked.findings.size(), "finding", "findings")
              << " (see 'zalt-lts-catalogue check'); answers come from the texts a store keeps\n";
  }
  const std::vector<Tovra::Mdib::LocalizedText> kept = Zalt::Catalogue::keptTexts(loaded.document, checked);
  nlohmann::json document = {{"findings", findingsJson(checked.findings)},
                             {"answers", nlohmann::json::array()}};
  if (const auto reason = unanswerable(kept, request)) {
    if (request.json) {
      document["unanswerable"] = *reason;
      printJson(document);
    } else {
      std::cerr << "zalt-lts-catalogue: " << escapedForTerminal(*reason) << '\n';
    }
    return findings;
  }
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  try {
    store->add(kept);
  } catch (const Zalt::InternalConsistencyFailure&) {
    // Reported above; the language check runs after every text is filed, so the store still answers.
  }
  const std::vector<Answer> found = answers(*store, referencesToShow(kept, request), request);
  if (request.json) {
    document["answers"] = answersJson(found);
    printJson(document);
  } else {
    printTable(found);
  }
  return success;
}

}  // namespace

void addFit(CLI::App& parent, Runner& chosen) {
  CLI::App* command =
      parent.add_subcommand("fit", "Show the text that a device store answers for each reference.");
  FitRequest& request = runWhenChosen(*command, chosen, fit);
  addFilesOption(*command, request.files);
  command->add_option("--lang", request.language, "Language tag, such as de-DE")->required();
  command->add_option("--width", request.width, "Display width")
      ->transform(oneOf(Zalt::Catalogue::textWidthTokens()));
  command->add_option_function<std::string>(
      "--lines",
      [&request](const std::string& lines) {
        request.lines = decimal<Zalt::Localization::NumberOfLines>("--lines", lines);
      },
      "Number of lines the display has room for");
  command->add_option("--ref", request.ref, "Only this reference");
  command->add_option_function<std::string>(
      "--ref-version",
      [&request](const std::string& version) {
        request.version = VersionCounter(decimal<std::uint64_t>("--ref-version", version));
      },
      "This version instead of the newest");
  addWidthUnitOption(*command, request.unit);
  command->add_flag(
      "--json", request.json,
      "Print one JSON document {findings, answers: [{reference, version, width, measured, lines, "
      "text}], unanswerable}, file problems too");
}

}  // namespace ZaltCatalogueTool
