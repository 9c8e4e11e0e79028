#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <Zalt/Localization/Private/Common/LineBreakRule.h>

#include <boost/regex/pending/unicode_iterator.hpp>

#include <string>

namespace Zalt {
namespace Localization {
namespace Impl {

unsigned int numberOfLineBreaks(const Tovra::Locale::Utf8& text) {
  using Decoder = boost::u8_to_u32_iterator<std::string::const_iterator, char32_t>;
  const std::string& bytes = text.value();
  // The three-argument form knows the range, so a sequence cut short by the
  // end of the text is an error instead of a read past it.
  const Decoder end(bytes.end(), bytes.begin(), bytes.end());

  unsigned int breaks = 0;
  LineBreakRule rule;
  for (Decoder it(bytes.begin(), bytes.begin(), bytes.end()); it != end; ++it) {
    if (rule.feed(*it) == LineBreakRule::Role::LineEnd) {
      ++breaks;
    }
  }
  return breaks;
}

}  // namespace Impl
}  // namespace Localization
}  // namespace Zalt
