#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/Private/CodePoints.h>
#include <Zalt/Display/Private/FontHandles.h>
#include <Zalt/Display/Private/TextRuns.h>

#include <algorithm>
#include <set>

namespace Zalt {
namespace Display {
namespace {

using Private::TextRun;

// A glyph with the first character of its cluster, by which fallback finds
// the characters it stands for.
struct ClusterGlyph {
  ShapedGlyph glyph;
  std::size_t cluster;
};

}  // namespace

struct LineShaper::State {
  FontChain chain;
  hb_language_t language;
  hb_buffer_t* buffer;

  State(FontChain fonts, const std::string& tag)
      : chain(std::move(fonts)),
        language(tag.empty() ? HB_LANGUAGE_INVALID : hb_language_from_string(tag.c_str(), -1)),
        buffer(hb_buffer_create()) {}
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() { hb_buffer_destroy(buffer); }

  // Characters [start, start + length) of `line`, of `run`, shaped by face
  // `face` alone, left to right.
  std::vector<ClusterGlyph> shapeWith(std::uint32_t face, const std::u32string& line, std::size_t start,
                                      std::size_t length, const TextRun& run) const {
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_utf32(buffer, reinterpret_cast<const std::uint32_t*>(line.data()),
                        static_cast<int>(line.size()), static_cast<unsigned int>(start),
                        static_cast<int>(length));
    hb_buffer_set_direction(buffer, run.direction);
    hb_buffer_set_script(buffer, run.script);
    hb_buffer_set_language(buffer, language);
    hb_shape(chain.faces[face]->handles().harfBuzz, buffer, nullptr, 0);
    unsigned int count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
    std::vector<ClusterGlyph> glyphs;
    glyphs.reserve(count);
    for (unsigned int index = 0; index < count; ++index) {
      glyphs.push_back({{face, infos[index].codepoint, positions[index].x_advance, positions[index].x_offset,
                         positions[index].y_offset, false},
                        infos[index].cluster});
    }
    return glyphs;
  }

  // Appends the glyphs of characters [start, start + length) to `out`, each
  // cluster from the first face from `face` on that has all its glyphs.
  void appendWithFallback(std::uint32_t face, const std::u32string& line, std::size_t start,
                          std::size_t length, const TextRun& run, std::vector<ClusterGlyph>& out) const {
    const std::vector<ClusterGlyph> glyphs = shapeWith(face, line, start, length, run);
    std::set<std::size_t> clusterStarts;
    for (const ClusterGlyph& glyph : glyphs) {
      clusterStarts.insert(glyph.cluster);
    }
    for (auto begin = glyphs.begin(); begin != glyphs.end();) {
      const std::size_t cluster = begin->cluster;
      const auto end = std::find_if(
          begin, glyphs.end(), [cluster](const ClusterGlyph& glyph) { return glyph.cluster != cluster; });
      const auto next = clusterStarts.upper_bound(cluster);
      const std::size_t clusterEnd = next == clusterStarts.end() ? start + length : *next;
      const bool whole =
          std::none_of(begin, end, [](const ClusterGlyph& glyph) { return glyph.glyph.glyph == 0; });
      if (whole) {
        out.insert(out.end(), begin, end);
      } else if (face + 1 < chain.faces.size()) {
        appendWithFallback(face + 1, line, cluster, clusterEnd - cluster, run, out);
      } else if (clusterEnd - cluster > 1) {
        appendCharacterByCharacter(line, cluster, clusterEnd, run, out);
      } else {
        std::for_each(begin, end, [&out](ClusterGlyph glyph) {
          glyph.glyph.missing = true;
          out.push_back(glyph);
        });
      }
      begin = end;
    }
  }

  void appendCharacterByCharacter(const std::u32string& line, std::size_t start, std::size_t end,
                                  const TextRun& run, std::vector<ClusterGlyph>& out) const {
    if (run.direction == HB_DIRECTION_RTL) {
      for (std::size_t at = end; at > start; --at) {
        appendWithFallback(0, line, at - 1, 1, run, out);
      }
    } else {
      for (std::size_t at = start; at < end; ++at) {
        appendWithFallback(0, line, at, 1, run, out);
      }
    }
  }

  std::vector<ClusterGlyph> shapeLine(const std::u32string& line) const {
    std::vector<ClusterGlyph> glyphs;
    for (const TextRun& run : Private::textRuns(line)) {
      appendWithFallback(0, line, run.start, run.length, run, glyphs);
    }
    return glyphs;
  }

  // The characters of the missing glyphs, in the order of the line, each once.
  static std::u32string missingCharacters(const std::u32string& line,
                                          const std::vector<ClusterGlyph>& glyphs) {
    std::set<std::size_t> places;
    for (const ClusterGlyph& glyph : glyphs) {
      if (glyph.glyph.missing) {
        places.insert(glyph.cluster);
      }
    }
    std::u32string missing;
    for (const std::size_t place : places) {
      if (missing.find(line[place]) == std::u32string::npos) {
        missing.push_back(line[place]);
      }
    }
    return missing;
  }

  MeasuredLine measured(const std::u32string& line, const std::vector<ClusterGlyph>& glyphs) const {
    MeasuredLine measure;
    for (const ClusterGlyph& glyph : glyphs) {
      if (!glyph.glyph.missing) {
        measure.add(chain.faces[glyph.glyph.face]->unitsPerEm(), glyph.glyph.xAdvance);
      }
    }
    measure.missing = missingCharacters(line, glyphs);
    return measure;
  }
};

LineShaper::LineShaper(FontChain chain, const std::string& language)
    : m_state(std::make_unique<State>(std::move(chain), language)) {}

LineShaper::~LineShaper() = default;
LineShaper::LineShaper(LineShaper&&) noexcept = default;
LineShaper& LineShaper::operator=(LineShaper&&) noexcept = default;

ShapedLine LineShaper::shape(std::string_view line, std::int32_t size) {
  const std::u32string characters = Private::codePoints(line);
  const std::vector<ClusterGlyph> glyphs = m_state->shapeLine(characters);
  MeasuredLine measure = m_state->measured(characters, glyphs);
  ShapedLine shaped{{}, measure.pixels(size), std::move(measure.missing)};
  shaped.glyphs.reserve(glyphs.size());
  for (const ClusterGlyph& glyph : glyphs) {
    shaped.glyphs.push_back(glyph.glyph);
  }
  return shaped;
}

MeasuredLine LineShaper::measure(std::string_view line) {
  const std::u32string characters = Private::codePoints(line);
  return m_state->measured(characters, m_state->shapeLine(characters));
}

const FontChain& LineShaper::chain() const { return m_state->chain; }

}  // namespace Display
}  // namespace Zalt
