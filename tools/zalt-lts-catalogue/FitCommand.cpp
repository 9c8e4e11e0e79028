#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::Device::LocalizedTextStore;

// Line breaks and tabs as escapes, so that each answer stays on one row.
std::string shown(const Utf8& text) {
  std::string escaped = "\"";
  for (const char c : text.value()) {
    switch (c) {
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '\t':
        escaped += "\\t";
        break;
      default:
        escaped += c;
    }
  }
  return escaped + '"';
}

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

std::vector<std::vector<std::string>> answers(const LocalizedTextStore& store,
                                              const std::map<LocalizedTextRef, VersionCounter>& references,
                                              const FitRequest& request) {
  std::vector<std::vector<std::string>> rows{{"REFERENCE", "VERSION", "WIDTH", "MEASURED", "LINES", "TEXT"}};
  const LanguageTag language(request.language);
  for (const auto& reference : references) {
    const Zalt::Localization::LocalizedText text =
        store.text(Zalt::Localization::LocalizedTextReference(reference.first, reference.second,
                                                              request.width, request.lines),
                   language);
    std::vector<std::string> row{reference.first.get().value(), std::to_string(reference.second.get())};
    if (text.version()) {
      row.insert(row.end(),
                 {text.textWidth() ? Tovra::Mdib::name(*text.textWidth()) : "--",
                  Tovra::Mdib::name(Zalt::Catalogue::measureText(text.text(), request.unit).measuredClass),
                  std::to_string(text.numberOfLines()), shown(text.text())});
    } else {
      row.insert(row.end(), {"", "", "", "nothing fits"});
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

void printTable(const std::vector<std::vector<std::string>>& rows) {
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

}  // namespace

int fit(const std::vector<std::string>& files, const FitRequest& request) {
  const LoadedCatalogue loaded = loadCatalogue(files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cerr, loaded.problems);
    return failure;
  }
  const Zalt::Catalogue::CatalogueCheck checked =
      Zalt::Catalogue::checkCatalogue(loaded.catalogue, request.unit);
  if (!checked.findings.empty()) {
    std::cerr << "warning: " << checked.findings.size()
              << (checked.findings.size() == 1 ? " finding" : " findings")
              << " (see 'zalt-lts-catalogue check'); answers come from the texts a store keeps\n";
  }
  const std::vector<Tovra::Mdib::LocalizedText> kept = Zalt::Catalogue::keptTexts(loaded.catalogue, checked);
  if (const auto reason = unanswerable(kept, request)) {
    std::cerr << "fit: " << *reason << '\n';
    return findings;
  }
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  try {
    store->add(kept);
  } catch (const Zalt::InternalConsistencyFailure&) {
    // Reported above; the language check runs after every text is filed, so the store still answers.
  }
  printTable(answers(*store, referencesToShow(kept, request), request));
  return success;
}

}  // namespace ZaltCatalogueTool
