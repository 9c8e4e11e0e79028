#include <Zalt/Catalogue/CatalogueTexts.h>

#include <iterator>

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

void CatalogueTexts::append(CatalogueTexts&& other) {
  moveBehind(files, std::move(other.files));
  moveBehind(texts, std::move(other.texts));
  moveBehind(misplaced, std::move(other.misplaced));
}

}  // namespace Catalogue
}  // namespace Zalt
