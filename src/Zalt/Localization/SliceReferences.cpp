#include <Zalt/Localization/SliceReferences.h>

#include <iterator>

namespace Zalt {
namespace Localization {

boost::optional<std::pair<std::set<LocalizedTextReference>, std::set<LocalizedTextReference>>>
sliceReferences(std::set<LocalizedTextReference>&& references) {
  using References = std::set<LocalizedTextReference>;
  if (references.size() < 2) {
    return boost::none;
  }
  const auto cut =
      std::next(references.begin(), static_cast<References::difference_type>(references.size() / 2));
  // Building from ordered ranges takes linear time.
  References first(references.begin(), cut);
  References second(cut, references.end());
  return std::make_pair(std::move(first), std::move(second));
}

}  // namespace Localization
}  // namespace Zalt
