#include <Zalt/Catalogue/TextMeasure.h>

#include <Zalt/Localization/Private/Common/LineBreakRule.h>

#include <utf8proc.h>
#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Localization::Impl::LineBreakRule;
using Tovra::Mdib::LocalizedTextWidth;

// The most fullwidth characters a line of each class holds, narrowest first;
// ExtraExtraLarge holds any line.
constexpr std::pair<LocalizedTextWidth, std::uint32_t> classLimits[] = {
    {LocalizedTextWidth::ExtraSmall, 4},  {LocalizedTextWidth::Small, 8},
    {LocalizedTextWidth::Medium, 12},     {LocalizedTextWidth::Large, 16},
    {LocalizedTextWidth::ExtraLarge, 20},
};
// Not a code point: stands for "nothing yet on this line", before which a cluster always begins.
constexpr char32_t lineStart = 0xFFFFFFFF;

// The code points that an emoji modifier joins as a skin tone (Emoji_Modifier_Base
// of Unicode 15.0, the version of utf8proc's data), as sorted, disjoint ranges.
constexpr std::pair<char32_t, char32_t> emojiModifierBases[] = {
    {0x261D, 0x261D},   {0x26F9, 0x26F9},   {0x270A, 0x270D},   {0x1F385, 0x1F385}, {0x1F3C2, 0x1F3C4},
    {0x1F3C7, 0x1F3C7}, {0x1F3CA, 0x1F3CC}, {0x1F442, 0x1F443}, {0x1F446, 0x1F450}, {0x1F466, 0x1F478},
    {0x1F47C, 0x1F47C}, {0x1F481, 0x1F483}, {0x1F485, 0x1F487}, {0x1F48F, 0x1F48F}, {0x1F491, 0x1F491},
    {0x1F4AA, 0x1F4AA}, {0x1F574, 0x1F575}, {0x1F57A, 0x1F57A}, {0x1F590, 0x1F590}, {0x1F595, 0x1F596},
    {0x1F645, 0x1F647}, {0x1F64B, 0x1F64F}, {0x1F6A3, 0x1F6A3}, {0x1F6B4, 0x1F6B6}, {0x1F6C0, 0x1F6C0},
    {0x1F6CC, 0x1F6CC}, {0x1F90C, 0x1F90C}, {0x1F90F, 0x1F90F}, {0x1F918, 0x1F91F}, {0x1F926, 0x1F926},
    {0x1F930, 0x1F939}, {0x1F93C, 0x1F93E}, {0x1F977, 0x1F977}, {0x1F9B5, 0x1F9B6}, {0x1F9B8, 0x1F9B9},
    {0x1F9BB, 0x1F9BB}, {0x1F9CD, 0x1F9CF}, {0x1F9D1, 0x1F9DD}, {0x1FAC3, 0x1FAC5}, {0x1FAF0, 0x1FAF8},
};

bool isPrintableAscii(char byte) { return byte >= 0x20 && byte < 0x7F; }

std::uint32_t roundedUpWidth(std::uint64_t halves) {
  return static_cast<std::uint32_t>(
      std::min<std::uint64_t>((halves + 1) / 2, std::numeric_limits<std::uint32_t>::max()));
}

bool isEmojiModifierBase(char32_t codePoint) {
  const auto after = std::upper_bound(
      std::begin(emojiModifierBases), std::end(emojiModifierBases), codePoint,
      [](char32_t wanted, const std::pair<char32_t, char32_t>& range) { return wanted < range.first; });
  return after != std::begin(emojiModifierBases) && codePoint <= std::prev(after)->second;
}

bool isHalfwidthForm(char32_t codePoint) {
  return (codePoint >= 0xFF61 && codePoint <= 0xFFDC) || (codePoint >= 0xFFE8 && codePoint <= 0xFFEE);
}

// Displays give these a place of their own even where the grapheme rules join
// them to the cluster before: a halfwidth form, the sound marks U+FF9E and
// U+FF9F too, sits in a half cell of its own, and an emoji modifier that
// follows no emoji modifier base shows as a colour swatch.
bool standsApart(char32_t codePoint, char32_t previous) {
  if (codePoint < 0xFF61) {
    return false;
  }
  return isHalfwidthForm(codePoint) ||
         (codePoint >= 0x1F3FB && codePoint <= 0x1F3FF && !isEmojiModifierBase(previous));
}

// The cells a code point takes where it counts for its cluster: utf8proc's
// East Asian width, except that a regional indicator is as wide as the flag
// that a pair of them shows, and a spacing mark, which utf8proc counts as
// zero, takes room when no character before it in its cluster has.
int cellsOf(const utf8proc_property_t& property) {
  if (property.boundclass == UTF8PROC_BOUNDCLASS_REGIONAL_INDICATOR) {
    return 2;
  }
  if (property.charwidth == 0 && property.category == UTF8PROC_CATEGORY_MC) {
    return 1;
  }
  return property.charwidth;
}

// Adds up the lines of one text, code point by code point, into a TextMeasure.
// Widths are counted in halves, so that one rounding at each line's end does.
class LineMeasurer {
public:
  LineMeasurer(WidthUnit unit, TextMeasure& measure)
      : m_otherHalves(unit == WidthUnit::Fullwidth ? 1 : 2),
        m_lineWidths(measure.lineWidths),
        m_control(measure.control) {
    m_lineWidths.clear();
    m_control = boost::none;
  }

  // Most texts are mostly printable ASCII. Such a character after another
  // ASCII one (or at a line's start) always begins a cluster of its own and is
  // one half wide, so a whole run is counted without decoding or looking it
  // up. After other code points it may not (a prepended sign takes the
  // character after it into its cluster): then this counts nothing and
  // returns false.
  bool asciiRun(std::string::const_iterator& position, std::string::const_iterator end) {
    if (!startsAsciiRun(*position)) {
      return false;
    }
    const std::string::const_iterator run = position;
    do {
      ++position;
    } while (position != end && isPrintableAscii(*position));
    m_halves += m_otherHalves * static_cast<std::uint64_t>(position - run);
    m_previous = static_cast<unsigned char>(position[-1]);
    m_clusterState = 0;
    m_clusterCounted = true;
    m_lineBreaks.feedText();
    return true;
  }

  bool startsAsciiRun(char byte) const {
    return isPrintableAscii(byte) && (m_previous < 0x80 || m_previous == lineStart);
  }

  void codePoint(char32_t codePoint) {
    switch (m_lineBreaks.feed(codePoint)) {
      case LineBreakRule::Role::Text:
        cluster(codePoint);
        break;
      case LineBreakRule::Role::LineEnd:
        endLine();
        break;
      case LineBreakRule::Role::RestOfBreak:
        break;
    }
  }

  void endLine() {
    m_lineWidths.push_back(roundedUpWidth(m_halves));
    m_halves = 0;
    m_previous = lineStart;
    m_clusterState = 0;
  }

private:
  void cluster(char32_t codePoint) {
    const auto utf8procCodePoint = static_cast<utf8proc_int32_t>(codePoint);
    const utf8proc_property_t& property = *utf8proc_get_property(utf8procCodePoint);
    const int charWidth = cellsOf(property);
    const bool beginsCluster =
        m_previous == lineStart || utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(m_previous),
                                                                    utf8procCodePoint, &m_clusterState);
    if (property.category == UTF8PROC_CATEGORY_CC && !m_control) {
      m_control = ControlCharacter{codePoint, static_cast<std::uint32_t>(m_lineWidths.size()) + 1};
    }
    if (beginsCluster || standsApart(codePoint, m_previous)) {
      if (charWidth == 2) {
        m_halves += wideHalves;
      } else if (charWidth != 0) {
        m_halves += m_otherHalves;
      }
      m_clusterCounted = charWidth != 0;
    } else if (!m_clusterCounted && charWidth != 0) {
      m_halves += m_otherHalves;
      m_clusterCounted = true;
    }
    m_previous = codePoint;
  }

  static constexpr std::uint64_t wideHalves = 2;
  const std::uint64_t m_otherHalves;
  std::vector<std::uint32_t>& m_lineWidths;
  boost::optional<ControlCharacter>& m_control;
  std::uint64_t m_halves = 0;
  char32_t m_previous = lineStart;
  // utf8proc's memory of the cluster so far (emoji and regional-indicator
  // sequences); zero is a fresh start, which is right after any cluster break.
  utf8proc_int32_t m_clusterState = 0;
  // Whether the current cluster, from its last character that stands apart
  // on, has added its share: a cluster that begins with zero-width code points
  // counts once its first visible one comes.
  bool m_clusterCounted = false;
  LineBreakRule m_lineBreaks;
};

}  // namespace

TextMeasure measureText(const Tovra::Locale::Utf8& text, WidthUnit unit) {
  TextMeasure measure;
  measureText(text, unit, measure);
  return measure;
}

void measureText(const Tovra::Locale::Utf8& text, WidthUnit unit, TextMeasure& measure) {
  // Between runs of ASCII, the store's own decoder, so that a text measures
  // exactly where the store takes it as valid and fails with the store's
  // error elsewhere. It checks the text's first and last sequences whenever it
  // starts, so a text cut short fails however it begins.
  using Decoder = boost::u8_to_u32_iterator<std::string::const_iterator, char32_t>;
  const std::string& bytes = text.value();
  LineMeasurer lines(unit, measure);
  for (auto position = bytes.begin(); position != bytes.end();) {
    if (lines.asciiRun(position, bytes.end())) {
      continue;
    }
    Decoder it(position, bytes.begin(), bytes.end());
    do {
      lines.codePoint(*it);
      position = (++it).base();
    } while (position != bytes.end() && !lines.startsAsciiRun(*position));
  }
  lines.endLine();

  const auto widest = std::max_element(measure.lineWidths.begin(), measure.lineWidths.end());
  measure.widestLine = static_cast<std::uint32_t>(widest - measure.lineWidths.begin()) + 1;
  measure.width = *widest;
  measure.measuredClass = narrowestClassHolding(measure.width);
}

LocalizedTextWidth narrowestClassHolding(std::uint32_t width) {
  for (const auto& limit : classLimits) {
    if (width <= limit.second) {
      return limit.first;
    }
  }
  return LocalizedTextWidth::ExtraExtraLarge;
}

boost::optional<std::uint32_t> widthLimit(LocalizedTextWidth textWidth) {
  for (const auto& limit : classLimits) {
    if (limit.first == textWidth) {
      return limit.second;
    }
  }
  return boost::none;
}

}  // namespace Catalogue
}  // namespace Zalt
