// Zalt::Localization::LocalizedTextReference: the identity of one requested
// text (a text reference and a version), optionally refined by the width and
// the number of lines a display has room for.
//
// A reference with neither refinement is "plain". References order by text
// reference (byte-wise), version, width (absent first) and number of lines
// (absent first), so all references of one text reference and version are
// adjacent with the plain one first.
//
//   LocalizedTextReference statusBar(LocalizedTextRef(Utf8("hr")), VersionCounter(3),
//                                    LocalizedTextWidth::Small, 1u);
//   std::cout << statusBar;  // (hr,3, Small, 1)
#pragma once

#include <Tovra/Mdib/LocalizedTextRef.h>
#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/LtsExport.h>

#include <boost/optional.hpp>
#include <boost/optional/optional_io.hpp>

#include <iosfwd>

namespace Tovra {
namespace Format {
class Stream;
}
}  // namespace Tovra

namespace Zalt {
namespace Localization {

struct ZALT_LTS_EXPORT LocalizedTextReference {
  LocalizedTextReference(Tovra::Mdib::LocalizedTextRef ref, Tovra::Mdib::VersionCounter version,
                         boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth = boost::none,
                         boost::optional<NumberOfLines> numberOfLines = boost::none);

  Tovra::Mdib::LocalizedTextRef ref;
  Tovra::Mdib::VersionCounter version;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth;
  boost::optional<NumberOfLines> numberOfLines;
};

ZALT_LTS_EXPORT bool operator==(const LocalizedTextReference& lhs, const LocalizedTextReference& rhs);
ZALT_LTS_EXPORT bool operator!=(const LocalizedTextReference& lhs, const LocalizedTextReference& rhs);
// Lexicographic over ref, version, width, number of lines; an absent optional first.
ZALT_LTS_EXPORT bool operator<(const LocalizedTextReference& lhs, const LocalizedTextReference& rhs);

// "(hr,3, Medium, 2)": present optionals follow a blank, absent ones print "--";
// a stream not in the good state gets nothing for the optionals.
ZALT_LTS_EXPORT std::ostream& operator<<(std::ostream& out, const LocalizedTextReference& reference);
// "(hr,3,Medium,2)", absent optionals as "--", no blanks.
ZALT_LTS_EXPORT Tovra::Format::Stream& operator<<(Tovra::Format::Stream& out,
                                                  const LocalizedTextReference& reference);

}  // namespace Localization
}  // namespace Zalt
