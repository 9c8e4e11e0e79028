#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStore.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <map>

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

// Each reference with its newest kept version, or the one asked for.
std::map<LocalizedTextRef, VersionCounter> referencesToShow(
    const std::vector<Tovra::Mdib::LocalizedText>& kept, const FitRequest& request) {
  std::map<LocalizedTextRef, VersionCounter> versions;
  for (const Tovra::Mdib::LocalizedText& text : kept) {
    if (request.ref && text.ref().get().value() != *request.ref) {
      continue;
    }
    const VersionCounter version = request.version ? *request.version : *text.version();
    auto found = versions.emplace(text.ref(), version).first;
    found->second = std::max(found->second, version);
  }
  return versions;
}

std::vector<std::vector<std::string>> answers(const LocalizedTextStore& store,
                                              const std::map<LocalizedTextRef, VersionCounter>& references,
                                              const FitRequest& request) {
  std::vector<std::vector<std::string>> rows{{"REFERENCE", "VERSION", "WIDTH", "LINES", "TEXT"}};
  const LanguageTag language(request.language);
  for (const auto& reference : references) {
    const Zalt::Localization::LocalizedText text =
        store.text(Zalt::Localization::LocalizedTextReference(reference.first, reference.second,
                                                              request.width, request.lines),
                   language);
    std::vector<std::string> row{reference.first.get().value(), std::to_string(reference.second.get())};
    if (text.version()) {
      row.insert(row.end(), {text.textWidth() ? Tovra::Mdib::name(*text.textWidth()) : "--",
                             std::to_string(text.numberOfLines()), shown(text.text())});
    } else {
      row.insert(row.end(), {"", "", "nothing fits"});
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
  const auto texts = loadCatalogue(files);
  if (!texts) {
    return unreadable;
  }
  const Zalt::Catalogue::CatalogueCheck checked = Zalt::Catalogue::checkCatalogue(*texts);
  if (!checked.findings.empty()) {
    std::cerr << "warning: " << checked.findings.size()
              << " findings (see 'zalt-lts-catalogue check'); answers come from the texts a store keeps\n";
  }
  std::vector<Tovra::Mdib::LocalizedText> kept;
  kept.reserve(checked.kept.size());
  for (const std::size_t index : checked.kept) {
    kept.push_back(texts->texts[index].text);
  }
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  try {
    store->add(kept);
  } catch (const Zalt::InternalConsistencyFailure&) {
    // Reported above; the language check runs after every text is filed, so the store still answers.
  }
  const auto references = referencesToShow(kept, request);
  if (references.empty()) {
    std::cerr << "no text of reference '" << *request.ref << "' is kept\n";
    return findings;
  }
  printTable(answers(*store, references, request));
  return success;
}

}  // namespace ZaltCatalogueTool
