// pseudo: a pseudo-translation of one language, written as a catalogue file.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/LanguageCase.h>
#include <Zalt/Catalogue/PseudoTranslation.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <boost/optional.hpp>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <set>
#include <stdexcept>
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
  // One JSON document {texts, findings} on standard output, which the
  // catalogue then cannot take.
  bool json = false;
};

// The pseudo-translations of the kept texts in the source language, in
// catalogue order: the same reference, version and width, so that the two
// languages form pairs that a store takes together. The store keeps only
// valid UTF-8, which pseudoTranslation always takes.
std::vector<LocalizedText> pseudoTexts(const Catalogue& catalogue, const CatalogueCheck& checked,
                                       const LanguageTag& from, const LanguageTag& to) {
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

// Says on standard error what refuses or spoils the run, and reports it as
// `finding` in the JSON document; returns `status`.
int refuse(const PseudoRequest& request, const Finding& finding, const std::string& said, int status) {
  std::cerr << "zalt-lts-catalogue: " << said << '\n';
  if (request.json) {
    printJson({{"texts", 0}, {"findings", findingsJson({finding})}});
  }
  return status;
}

// The catalogue file's findings: on standard error, or in the JSON document.
void reportFindings(const PseudoRequest& request, const std::vector<Finding>& reported, std::size_t texts) {
  if (request.json) {
    printJson({{"texts", texts}, {"findings", findingsJson(reported)}});
  } else {
    printPlaced(std::cerr, reported);
  }
}

void requireOutputBesideDocument(const PseudoRequest& request) {
  if (request.json && request.output.value_or("-") == "-") {
    throw CLI::ValidationError("--json",
                               "the document goes to standard output; name a file to write with -o");
  }
}

// A catalogue file with, for each kept text in the language `from`, a text in
// `to` with the same reference, version and width whose content is its
// pseudo-translation; `to` takes the catalogue's spelling of its case, else
// the canonical one. Says on stderr, instead, that no kept text has `from`.
// Each text of `from` that the store rejects is named on stderr as
// "FILE:LINE:COLUMN: message" and makes the status 1; the others are written
// all the same. With --json, what stderr names is one document {texts,
// findings} on standard output. A `to` that is `from` in any case or that the
// catalogue holds is refused (2) before anything is written.
int pseudo(const PseudoRequest& request) {
  requireDistinctInputs(request.files);
  requireOutputBesideDocument(request);
  if (request.output) {
    refuseOutputAmongInputs(*request.output, request.files);
  }
  const LanguageTag from(request.from);
  if (Zalt::Catalogue::sameLanguage(LanguageTag(request.to), from)) {
    std::cerr << "zalt-lts-catalogue: --to '" << request.to
              << "' is the language translated from; the pseudo-language needs a tag of its own, such as "
                 "en-XA\n";
    return failure;
  }
  const LoadedCatalogue loaded = loadCatalogue(request.files);
  if (!loaded.problems.empty()) {
    reportFindings(request, loaded.problems, 0);
    return failure;
  }
  const LanguageTag to = languageAsHeld(LanguageTag(request.to), loaded.document);
  // Texts of the pseudo-language already there would share keys with the
  // pseudo-translations, and a store would keep only one of each pair.
  if (const auto* held = firstTextOf(loaded.document, to)) {
    const Zalt::Catalogue::SourceLocation where = loaded.document.location(*held);
    const std::string said = "the catalogue already holds texts in '" + to.tag() + "', such as at " +
                             where.file + ':' + std::to_string(where.line) +
                             "; --to needs a language of its own, such as en-XA";
    return refuse(request, {Finding::Kind::Language, where, said}, said, failure);
  }
  const CatalogueCheck checked = Zalt::Catalogue::checkCatalogue(loaded.document);
  std::vector<Finding> rejected = rejectedTexts(loaded.document, checked, from);
  const std::vector<LocalizedText> texts = pseudoTexts(loaded.document, checked, from, to);
  if (texts.empty()) {
    const std::string said = "no kept text has the language '" + request.from + "'";
    std::cerr << "zalt-lts-catalogue: " << said << '\n';
    // The document says why it names no texts; standard error has said it.
    if (request.json) {
      rejected.push_back({Finding::Kind::Empty, {loaded.document.files.front(), 0, 0}, said});
    }
    reportFindings(request, rejected, 0);
    return findings;
  }
  try {
    writeWhole(request.output.value_or("-"), Zalt::Catalogue::writeCatalogue(texts));
  } catch (const std::runtime_error& error) {
    if (!request.json) {
      throw;
    }
    return refuse(request, unwritableOutput(*request.output, error), error.what(), failure);
  }
  reportFindings(request, rejected, texts.size());
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
  command->add_flag("--json", request.json,
                    "Print one JSON document {texts, findings} instead of naming rejected texts on standard "
                    "error; needs -o FILE");
}

}  // namespace ZaltCatalogueTool
