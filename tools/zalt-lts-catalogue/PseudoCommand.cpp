#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <set>
#include <string_view>
#include <tuple>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Zalt::Catalogue::Catalogue;
using Zalt::Catalogue::CatalogueCheck;
using Zalt::Catalogue::Finding;

// The pseudo-translations of the kept texts in the source language, in
// catalogue order: the same reference, version and width, so that the two
// languages form pairs that a store takes together. The store keeps only
// valid UTF-8, which pseudoTranslation always takes.
std::vector<LocalizedText> pseudoTexts(const Catalogue& catalogue, const CatalogueCheck& checked,
                                       const PseudoRequest& request) {
  const LanguageTag from(request.from);
  const LanguageTag to(request.to);
  std::vector<LocalizedText> texts;
  for (const std::size_t index : checked.kept) {
    const LocalizedText& text = catalogue.texts[index].text;
    if (*text.lang() == from) {
      texts.emplace_back(Zalt::Catalogue::pseudoTranslation(text.text()), to, text.ref(), text.version(),
                         text.textWidth());
    }
  }
  return texts;
}

// Why the texts of `language` that the store rejects have no pseudo-translation,
// in catalogue order. Findings name a text by its place alone.
std::vector<Finding> rejectedTexts(const Catalogue& catalogue, const CatalogueCheck& checked,
                                   const LanguageTag& language) {
  std::set<std::tuple<std::string_view, std::int32_t, std::int32_t>> places;
  for (const Zalt::Catalogue::CatalogueText& text : catalogue.texts) {
    if (text.text.lang() == language) {
      places.emplace(catalogue.files[text.file], text.line, text.column);
    }
  }
  std::vector<Finding> rejected;
  for (const Finding& finding : checked.findings) {
    const auto& where = finding.location;
    if (finding.kind == Finding::Kind::Rejected &&
        places.count({where.file, where.line, where.column}) != 0) {
      rejected.push_back(finding);
    }
  }
  return rejected;
}

// The first text of `language`, or none.
const Zalt::Catalogue::CatalogueText* firstTextOf(const Catalogue& catalogue, const LanguageTag& language) {
  const auto found = std::find_if(catalogue.texts.begin(), catalogue.texts.end(),
                                  [&language](const auto& text) { return text.text.lang() == language; });
  return found == catalogue.texts.end() ? nullptr : &*found;
}

bool write(const std::string& catalogue, const boost::optional<std::string>& output) {
  if (!output) {
    std::cout << catalogue;
    return true;
  }
  std::ofstream file(*output, std::ios::binary);
  file << catalogue;
  file.close();
  if (!file) {
    std::cerr << "pseudo: cannot write " << *output << '\n';
    return false;
  }
  return true;
}

}  // namespace

int pseudo(const std::vector<std::string>& files, const PseudoRequest& request) {
  if (LanguageTag(request.to) == LanguageTag(request.from)) {
    std::cerr << "pseudo: --to '" << request.to
              << "' is the language translated from; the pseudo-language needs a tag of its own, such as "
                 "en-XA\n";
    return failure;
  }
  const LoadedCatalogue loaded = loadCatalogue(files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cerr, loaded.problems);
    return failure;
  }
  // Texts of the pseudo-language already there would share keys with the
  // pseudo-translations, and a store would keep only one of each pair.
  if (const auto* held = firstTextOf(loaded.catalogue, LanguageTag(request.to))) {
    const Zalt::Catalogue::SourceLocation where = loaded.catalogue.location(*held);
    std::cerr << "pseudo: the catalogue already holds texts in '" << request.to << "', such as at "
              << where.file << ':' << where.line << "; --to needs a language of its own, such as en-XA\n";
    return failure;
  }
  const CatalogueCheck checked = Zalt::Catalogue::checkCatalogue(loaded.catalogue);
  const std::vector<Finding> rejected = rejectedTexts(loaded.catalogue, checked, LanguageTag(request.from));
  printPlaced(std::cerr, rejected);
  const std::vector<LocalizedText> texts = pseudoTexts(loaded.catalogue, checked, request);
  if (texts.empty()) {
    std::cerr << "pseudo: no kept text has the language '" << request.from << "'\n";
    return findings;
  }
  if (!write(Zalt::Catalogue::writeCatalogue(texts), request.output)) {
    return failure;
  }
  return rejected.empty() ? success : findings;
}

}  // namespace ZaltCatalogueTool
