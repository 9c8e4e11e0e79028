#include <Zalt/Catalogue/WriteCatalogue.h>

#include <Zalt/Localization/Private/Common/LineBreakRule.h>

#include <utf8proc.h>
#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
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

bool isPrintableAscii(char byte) { return byte >= 0x20 && byte < 0x7F; }

std::uint32_t roundedUpWidth(std::uint64_t halves) {
  return static_cast<std::uint32_t>(
      std::min<std::uint64_t>((halves + 1) / 2, std::numeric_limits<std::uint32_t>::max()));
}

// Adds up the lines of one text, code point by code point, into a TextMeasure.
// Widths are counted in halves, so that one rounding at each line's end does.
class LineMeasurer {
public:
  LineMeasurer(WidthUnit unit, std::vector<std::uint32_t>& lineWidths)
      : m_otherHalves(unit == WidthUnit::Fullwidth ? 1 : 2), m_lineWidths(lineWidths) {
    m_lineWidths.clear();
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
    const int charWidth = utf8proc_charwidth(utf8procCodePoint);
    const bool beginsCluster =
        m_previous == lineStart || utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(m_previous),
                                                                    utf8procCodePoint, &m_clusterState);
    if (beginsCluster) {
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
  std::uint64_t m_halves = 0;
  char32_t m_previous = lineStart;
  // utf8proc's memory of the cluster so far (emoji and regional-indicator
  // sequences); zero is a fresh start, which is right after any cluster break.
  utf8proc_int32_t m_clusterState = 0;
  // Whether the current cluster has added its share: a cluster that begins with
  // zero-width code points counts once its first visible one comes.
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
  LineMeasurer lines(unit, measure.lineWidths);
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
