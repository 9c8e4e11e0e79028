#include <Zalt/Catalogue/CatalogueText.h>

#include <utility>

namespace Zalt {
namespace Catalogue {

std::vector<Tovra::Mdib::LocalizedText> mdibTexts(const std::vector<CatalogueText>& entries) {
  std::vector<Tovra::Mdib::LocalizedText> texts;
  texts.reserve(entries.size());
  for (const CatalogueText& entry : entries) {
    texts.push_back(entry.text);
  }
  return texts;
}

std::vector<Tovra::Mdib::LocalizedText> mdibTexts(std::vector<CatalogueText>&& entries) {
  std::vector<Tovra::Mdib::LocalizedText> texts;
  texts.reserve(entries.size());
  for (CatalogueText& entry : entries) {
    texts.push_back(std::move(entry.text));
  }
  entries.clear();
  return texts;
}

}  // namespace Catalogue
}  // namespace Zalt
