#include <Zalt/Localization/LocalizedTextReference.h>

#include <Tovra/Format/Stream.h>

#include <boost/optional/optional_io.hpp>

#include <ostream>
#include <tuple>
#include <utility>

namespace Zalt {
namespace Localization {
namespace {

auto fields(const LocalizedTextReference& reference) {
  return std::tie(reference.ref, reference.version, reference.textWidth, reference.numberOfLines);
}

template <typename T>
void writeOrDashes(Tovra::Format::Stream& out, const boost::optional<T>& value) {
  if (value) {
    out << *value;
  } else {
    out << "--";
  }
}

}  // namespace

LocalizedTextReference::LocalizedTextReference(Tovra::Mdib::LocalizedTextRef textRef,
                                               Tovra::Mdib::VersionCounter textVersion,
                                               boost::optional<Tovra::Mdib::LocalizedTextWidth> width,
                                               boost::optional<NumberOfLines> lines)
    : ref(std::move(textRef)), version(textVersion), textWidth(width), numberOfLines(lines) {}

bool operator==(const LocalizedTextReference& lhs, const LocalizedTextReference& rhs) {
  return fields(lhs) == fields(rhs);
}

bool operator!=(const LocalizedTextReference& lhs, const LocalizedTextReference& rhs) {
  return !(lhs == rhs);
}

bool operator<(const LocalizedTextReference& lhs, const LocalizedTextReference& rhs) {
  return fields(lhs) < fields(rhs);
}

// Boost's optional output gives the blank before a present value and the "--"
// for an absent one; logs written through std::ostream have always looked so.
std::ostream& operator<<(std::ostream& out, const LocalizedTextReference& reference) {
  return out << '(' << reference.ref << ',' << reference.version << ',' << reference.textWidth << ','
             << reference.numberOfLines << ')';
}

Tovra::Format::Stream& operator<<(Tovra::Format::Stream& out, const LocalizedTextReference& reference) {
  out << "(" << reference.ref << "," << reference.version << ",";
  writeOrDashes(out, reference.textWidth);
  out << ",";
  writeOrDashes(out, reference.numberOfLines);
  return out << ")";
}

}  // namespace Localization
}  // namespace Zalt
