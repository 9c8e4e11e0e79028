#include <Zalt/Display/DisplayLines.h>
#include <Zalt/Display/Private/CodePoints.h>
#include <Zalt/Localization/Private/Common/LineBreakRule.h>

#include <algorithm>

namespace Zalt {
namespace Display {
namespace {

// The bytes of the sequence that `lead` begins; a stray byte stands alone.
std::size_t sequenceLength(unsigned char lead) {
  if (lead >= 0xF0) {
    return 4;
  }
  if (lead >= 0xE0) {
    return 3;
  }
  return lead >= 0xC0 ? 2 : 1;
}

}  // namespace

std::vector<std::string_view> displayLines(std::string_view text) {
  std::vector<std::string_view> lines;
  Zalt::Localization::Impl::LineBreakRule rule;
  std::size_t lineStart = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t length =
        std::min(sequenceLength(static_cast<unsigned char>(text[at])), text.size() - at);
    const auto lead = static_cast<unsigned char>(text[at]);
    const char32_t character = lead < 0x80 ? lead : Private::codePoints(text.substr(at, length)).front();
    switch (rule.feed(character)) {
      case Zalt::Localization::Impl::LineBreakRule::Role::Text:
        break;
      case Zalt::Localization::Impl::LineBreakRule::Role::LineEnd:
        lines.push_back(text.substr(lineStart, at - lineStart));
        lineStart = at + length;
        break;
      case Zalt::Localization::Impl::LineBreakRule::Role::RestOfBreak:
        lineStart = at + length;
        break;
    }
    at += length;
  }
  lines.push_back(text.substr(lineStart));
  return lines;
}

}  // namespace Display
}  // namespace Zalt
