#include "Commands.h"
#include "ExitCode.h"
#include "LoadCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/WriteCatalogue.h>

#include <fstream>
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
  const LoadedCatalogue loaded = loadCatalogue(files);
  if (!loaded.problems.empty()) {
    printPlaced(std::cerr, loaded.problems);
    return failure;
  }
  const std::vector<LocalizedText> texts = pseudoTexts(loaded, request);
  if (texts.empty()) {
    std::cerr << "pseudo: no kept text has the language '" << request.from << "'\n";
    return findings;
  }
  return write(Zalt::Catalogue::writeCatalogue(texts), request.output) ? success : failure;
}

}  // namespace ZaltCatalogueTool
