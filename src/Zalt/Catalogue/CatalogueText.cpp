#include <Zalt/Catalogue/CatalogueText.h>

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

}  // namespace Catalogue
}  // namespace Zalt
