// Zalt::Catalogue::Private XLIFF unit ids: the key of a text under which a
// store files it, but for its language, written as the id of the unit that
// carries the text to translators and brought back from it. WriteXliff.h documents
// the form:
//
//   std::string id;
//   Private::appendUnitId(id, "alarm hr", 2, LocalizedTextWidth::Medium, 1);  // "2.m.1.alarm%20hr"
//   Private::decodeUnitId(id);  // the same key; none for "02.m.1.alarm%20hr"
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {

struct UnitKey {
  std::string ref;
  std::uint64_t version;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> width;
  std::uint32_t lines;
};

// Appends the id of a text's key, whose width is none or one of the six
// classes. The id holds no character that XML would need escaped.
void appendUnitId(std::string& out, std::string_view ref, std::uint64_t version,
                  const boost::optional<Tovra::Mdib::LocalizedTextWidth>& width, std::uint32_t lines);

// The key whose id `id` is, exactly as appendUnitId writes it; none for any
// other text, also one that would decode to an empty reference or no line.
std::optional<UnitKey> decodeUnitId(std::string_view id);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
