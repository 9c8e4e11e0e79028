#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"
#include "OutputFile.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <iostream>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Mdib::LocalizedText;

// The pseudo-translations of the kept texts in the source language, in
// catalogue order: the same reference, version and width, so that the two
// languages form pairs that a store takes together.
std::vector<LocalizedText> pseudoTexts(const LoadedCatalogue& loaded, const PseudoRequest& request) {
  const Tovra::Locale::LanguageTag from(request.from);
  const Tovra::Locale::LanguageTag to(request.to);
  std::vector<LocalizedText> texts;
  for (const std::size_t index : Zalt::Catalogue::checkCatalogue(loaded.catalogue).kept) {
    const LocalizedText& text = loaded.catalogue.texts[index].text;
    if (*text.lang() == from) {
      texts.emplace_back(Zalt::Catalogue::pseudoTranslation(text.text()), to, text.ref(), text.version(),
                         text.textWidth());
    }
  }
  return texts;
}

}  // namespace

int pseudo(const std::vector<std::string>& files, const PseudoRequest& request) {
  const LoadedCatalogue loaded = loadCatalogue(files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cerr, loaded.problems);
    return failure;
  }
  const std::vector<LocalizedText> texts = pseudoTexts(loaded, request);
  if (texts.empty()) {
    std::cerr << "zalt-lts-catalogue: no kept text has the language '" << request.from << "'\n";
    return findings;
  }
  writeWhole(request.output.value_or("-"), Zalt::Catalogue::writeCatalogue(texts));
  return success;
}

}  // namespace ZaltCatalogueTool
