#include <Zalt/Display/Private/TextRuns.h>

#include <fribidi.h>

#include <algorithm>
#include <new>

namespace Zalt {
namespace Display {
namespace Private {
namespace {

// The embedding level of each character after the rules that a line's end
// takes part in (trailing white space back at the paragraph's level).
std::vector<FriBidiLevel> embeddingLevels(const std::u32string& line) {
  const auto length = static_cast<FriBidiStrIndex>(line.size());
  const auto* characters = reinterpret_cast<const FriBidiChar*>(line.data());
  std::vector<FriBidiCharType> types(line.size());
  std::vector<FriBidiBracketType> brackets(line.size());
  std::vector<FriBidiLevel> levels(line.size());
  fribidi_get_bidi_types(characters, length, types.data());
  fribidi_get_bracket_types(characters, length, types.data(), brackets.data());
  FriBidiParType direction = FRIBIDI_PAR_ON;
  // Both fail only where FriBidi cannot allocate.
  if (fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), length, &direction, levels.data()) ==
          0 ||
      fribidi_reorder_line(0, types.data(), length, 0, direction, levels.data(), nullptr, nullptr) == 0) {
    throw std::bad_alloc();
  }
  return levels;
}

bool hasScriptOfItsOwn(hb_script_t script) {
  return script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN;
}

// The script of each character, where those of no script of their own take
// their neighbour's.
std::vector<hb_script_t> resolvedScripts(const std::u32string& line) {
  hb_unicode_funcs_t* unicode = hb_unicode_funcs_get_default();
  std::vector<hb_script_t> scripts(line.size());
  std::transform(line.begin(), line.end(), scripts.begin(),
                 [unicode](char32_t character) { return hb_unicode_script(unicode, character); });
  const auto first = std::find_if(scripts.begin(), scripts.end(), hasScriptOfItsOwn);
  hb_script_t current = first == scripts.end() ? HB_SCRIPT_COMMON : *first;
  for (hb_script_t& script : scripts) {
    if (hasScriptOfItsOwn(script)) {
      current = script;
    } else {
      script = current;
    }
  }
  return scripts;
}

// Bidirectional rule L2 on whole runs: from the highest level down to the
// lowest odd one, every sequence of runs at that level or above turns round.
void reorderVisually(std::vector<TextRun>& runs, const std::vector<FriBidiLevel>& runLevels) {
  std::vector<std::size_t> order(runs.size());
  for (std::size_t index = 0; index < order.size(); ++index) {
    order[index] = index;
  }
  const FriBidiLevel highest = *std::max_element(runLevels.begin(), runLevels.end());
  FriBidiLevel lowestOdd = *std::min_element(runLevels.begin(), runLevels.end());
  lowestOdd = static_cast<FriBidiLevel>(lowestOdd % 2 == 0 ? lowestOdd + 1 : lowestOdd);
  for (FriBidiLevel level = highest; level >= lowestOdd; --level) {
    auto begin = order.begin();
    while (begin != order.end()) {
      const auto atLevel = [&runLevels, level](std::size_t run) { return runLevels[run] >= level; };
      begin = std::find_if(begin, order.end(), atLevel);
      const auto end = std::find_if_not(begin, order.end(), atLevel);
      std::reverse(begin, end);
      begin = end;
    }
  }
  std::vector<TextRun> visual;
  visual.reserve(runs.size());
  for (const std::size_t run : order) {
    visual.push_back(runs[run]);
  }
  runs = std::move(visual);
}

}  // namespace

std::vector<TextRun> textRuns(const std::u32string& line) {
  if (line.empty()) {
    return {};
  }
  const std::vector<FriBidiLevel> levels = embeddingLevels(line);
  const std::vector<hb_script_t> scripts = resolvedScripts(line);
  std::vector<TextRun> runs;
  std::vector<FriBidiLevel> runLevels;
  for (std::size_t start = 0; start < line.size();) {
    std::size_t end = start + 1;
    while (end < line.size() && levels[end] == levels[start] && scripts[end] == scripts[start]) {
      ++end;
    }
    const hb_direction_t direction = levels[start] % 2 == 0 ? HB_DIRECTION_LTR : HB_DIRECTION_RTL;
    runs.push_back({start, end - start, direction, scripts[start]});
    runLevels.push_back(levels[start]);
    start = end;
  }
  reorderVisually(runs, runLevels);
  return runs;
}

}  // namespace Private
}  // namespace Display
}  // namespace Zalt
