#include "Commands.h"

namespace ZaltCatalogueTool {
namespace {

// The XLIFF exchange is two commands under one name, as translators' tools
// take one file and give back another.
void addXliff(CLI::App& parent, Runner& chosen) {
  static const std::vector<AddCommand> directions{addXliffExport, addXliffImport};
  CLI::App* xliff = parent.add_subcommand(
      "xliff",
      "Exchange texts with translators' tools as XLIFF 1.2, each with its width and lines as limits.");
  addCommands(*xliff, directions, chosen);
}

}  // namespace

const std::vector<AddCommand>& toolCommands() {
  static const std::vector<AddCommand> commands{
      addCheck,   addFit, addStats, addPseudo, addCoverage, addXliff,
#ifdef ZALT_LTS_DISPLAY
      addDisplay,
#endif
  };
  return commands;
}

void addCommands(CLI::App& parent, const std::vector<AddCommand>& commands, Runner& chosen) {
  parent.require_subcommand(1);
  for (const AddCommand add : commands) {
    add(parent, chosen);
  }
}

}  // namespace ZaltCatalogueTool
