#include <Zalt/Catalogue/Catalogue.h>

#include <iterator>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

template <typename T>
void moveBehind(std::vector<T>& to, std::vector<T>&& from) {
  if (to.empty()) {
    to = std::move(from);
  } else {
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
  }
}

}  // namespace

void Catalogue::append(Catalogue&& other) {
  const auto firstFile = static_cast<std::uint32_t>(files.size());
  for (CatalogueText& text : other.texts) {
    text.file += firstFile;
  }
  for (CatalogueFileContent& content : other.contents) {
    content.file += firstFile;
  }
  moveBehind(files, std::move(other.files));
  moveBehind(texts, std::move(other.texts));
  moveBehind(misplaced, std::move(other.misplaced));
  moveBehind(contents, std::move(other.contents));
}

SourceLocation Catalogue::location(const CatalogueText& text) const {
  return {files.at(text.file), text.line, text.column};
}

std::vector<Tovra::Mdib::LocalizedText> mdibTexts(const std::vector<CatalogueText>& texts) {
  std::vector<Tovra::Mdib::LocalizedText> result;
  result.reserve(texts.size());
  for (const CatalogueText& text : texts) {
    result.push_back(text.text);
  }
  return result;
}

std::vector<Tovra::Mdib::LocalizedText> mdibTexts(std::vector<CatalogueText>&& texts) {
  std::vector<Tovra::Mdib::LocalizedText> result;
  result.reserve(texts.size());
  for (CatalogueText& text : texts) {
    result.push_back(std::move(text.text));
  }
  texts.clear();
  return result;
}

}  // namespace Catalogue
}  // namespace Zalt
