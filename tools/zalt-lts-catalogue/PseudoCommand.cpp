// pseudo: a pseudo-translation of one language, written as a catalogue file.
#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/PseudoTranslation.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <boost/optional.hpp>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Zalt::Catalogue::Catalogue;
using Zalt::Catalogue::CatalogueCheck;
using Zalt::Catalogue::Finding;

struct PseudoRequest {
  std::vector<std::string> files;
  std::string from;
  std::string to;
  // The file to write; standard output when absent or "-".
  boost::optional<std::string> output;
};

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

// A catalogue file with, for each kept text in the language `from`, a text in
// `to` with the same reference, version and width whose content is its
// pseudo-translation. Says on stderr, instead, that no kept text has `from`.
// Each text of `from` that the store rejects is named on stderr as
// "FILE:LINE:COLUMN: message" and makes the status 1; the others are written
// all the same. A `to` that is `from` or that the catalogue holds is refused
// (2) before anything is written.
int pseudo(const PseudoRequest& request) {
  requireDistinctInputs(request.files);
  if (request.output) {
    refuseOutputAmongInputs(*request.output, request.files);
  }
  if (LanguageTag(request.to) == LanguageTag(request.from)) {
    std::cerr << "zalt-lts-catalogue: --to '" << request.to
              << "' is the language translated from; the pseudo-language needs a tag of its own, such as "
                 "en-XA\n";
    return failure;
  }
  const LoadedCatalogue loaded = loadCatalogue(request.files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cerr, loaded.problems);
    return failure;
  }
  // Texts of the pseudo-language already there would share keys with the
  // pseudo-translations, and a store would keep only one of each pair.
  if (const auto* held = firstTextOf(loaded.document, LanguageTag(request.to))) {
    const Zalt::Catalogue::SourceLocation where = loaded.document.location(*held);
    std::cerr << "zalt-lts-catalogue: the catalogue already holds texts in '" << request.to
              << "', such as at " << where.file << ':' << where.line
              << "; --to needs a language of its own, such as en-XA\n";
    return failure;
  }
  const CatalogueCheck checked = Zalt::Catalogue::checkCatalogue(loaded.document);
  const std::vector<Finding> rejected = rejectedTexts(loaded.document, checked, LanguageTag(request.from));
  printPlaced(std::cerr, rejected);
  const std::vector<LocalizedText> texts = pseudoTexts(loaded.document, checked, request);
  if (texts.empty()) {
    std::cerr << "zalt-lts-catalogue: no kept text has the language '" << request.from << "'\n";
    return findings;
  }
  writeWhole(request.output.value_or("-"), Zalt::Catalogue::writeCatalogue(texts));
  return rejected.empty() ? success : findings;
}

}  // namespace

void addPseudo(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand(
      "pseudo", "Write a pseudo-translation of one language: accented, longer, each line in brackets.");
  PseudoRequest& request = runWhenChosen(*command, chosen, pseudo);
  addFilesOption(*command, request.files);
  command->add_option("--from", request.from, "The language to translate, such as en-US")->required();
  command->add_option("--to", request.to, "The pseudo-language's tag, such as en-XA")
      ->required()
      ->check(storeLanguageTag());
  command->add_option(
      "-o,--output", request.output,
      "The catalogue file to write, whole or not at all; standard output without it or with -");
}

}  // namespace ZaltCatalogueTool
