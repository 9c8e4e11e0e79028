#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <string>

namespace Zalt {
namespace Localization {
namespace Impl {
namespace {

constexpr char32_t lineFeed = 0x0A;
constexpr char32_t carriageReturn = 0x0D;

}  // namespace

unsigned int numberOfLineBreaks(const Tovra::Locale::Utf8& text) {
  using Decoder = boost::u8_to_u32_iterator<std::string::const_iterator, char32_t>;
  const std::string& bytes = text.value();
  // The three-argument form knows the range, so a sequence cut short by the
  // end of the text is an error instead of a read past it.
  const Decoder end(bytes.end(), bytes.begin(), bytes.end());

  unsigned int breaks = 0;
  bool carriageReturnPending = false;
  for (Decoder it(bytes.begin(), bytes.begin(), bytes.end()); it != end; ++it) {
    const char32_t codePoint = *it;
    if (codePoint == lineFeed) {
      carriageReturnPending = false;
      ++breaks;
    } else if (codePoint == carriageReturn) {
      // A second carriage return is absorbed into the pending one: "\r\r" is one break.
      carriageReturnPending = true;
    } else {
      if (isLineBreakOtherThanCrLf(codePoint)) {
        ++breaks;
      }
      if (carriageReturnPending) {
        carriageReturnPending = false;
        ++breaks;
      }
    }
  }
  return carriageReturnPending ? breaks + 1 : breaks;
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
