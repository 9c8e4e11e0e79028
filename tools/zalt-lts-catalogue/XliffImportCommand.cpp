// xliff import: the translations of XLIFF files merged into a catalogue file, checked.
#include "Commands.h"
#include "ExitCode.h"
#include "Json.h"
#include "LoadCatalogue.h"
#include "Options.h"
#include "OutputFile.h"
#include "Wording.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/LanguageCase.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Zalt::Catalogue::Catalogue;
using Zalt::Catalogue::CatalogueText;
using Zalt::Catalogue::Finding;

struct XliffImportRequest {
  std::vector<std::string> files;
  // The catalogue file to write, never standard output, which carries the findings.
  std::string output;
  // Write only the imported texts, dropping the output's others.
  bool replace = false;
  // Leave out the units that still need review.
  bool skipUnreviewed = false;
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

// How the written texts relate to the output's earlier ones. Unchanged texts
// count as kept; only --replace drops any.
struct ImportCounts {
  std::size_t texts = 0;
  std::size_t added = 0;
  std::size_t changed = 0;
  std::size_t kept = 0;
  std::size_t dropped = 0;
};

// The key under which a store files a text: reference, language, version,
// width and number of lines.
using TextKey = std::tuple<std::string, std::string, boost::optional<std::uint64_t>, int, std::uint32_t>;

TextKey keyOf(const LocalizedText& text) {
  return {text.ref().get().value(), text.lang() ? text.lang()->tag() : std::string(),
          text.version() ? boost::make_optional(text.version()->get()) : boost::none,
          text.textWidth() ? static_cast<int>(*text.textWidth()) : -1,
          Zalt::Localization::Impl::numberOfLineBreaks(text.text()) + 1};
}

// The output's texts, none where it is not yet a file.
Loaded<Catalogue> loadEarlier(const std::string& output) {
  // Only a regular file holds earlier texts; a device or a pipe is written to as it is.
  return isExistingRegularFile(output) ? loadCatalogue({output}) : Loaded<Catalogue>{};
}

// Imported texts in a language that the earlier texts spell in another case
// take the earlier spelling, so that a merge does not hold one language twice.
void spellLanguagesAs(const Catalogue& earlier, std::vector<CatalogueText>& imported) {
  std::set<LanguageTag> spellings;
  for (const CatalogueText& text : earlier.texts) {
    if (text.text.lang()) {
      spellings.insert(*text.text.lang());
    }
  }
  for (CatalogueText& text : imported) {
    for (const LanguageTag& spelling : spellings) {
      const LocalizedText& was = text.text;
      if (was.lang() && *was.lang() != spelling && Zalt::Catalogue::sameLanguage(*was.lang(), spelling)) {
        text.text = LocalizedText(was.text(), spelling, was.ref(), was.version(), was.textWidth());
      }
    }
  }
}

// For each imported text, the index of the earlier text under its key; each
// earlier text matches once, so that of imported texts sharing a key only
// the first replaces it, as a store keeps only the first.
std::vector<boost::optional<std::size_t>> matchEarlier(const Catalogue& earlier, const Catalogue& imported) {
  std::map<TextKey, std::size_t> unmatched;
  for (std::size_t index = 0; index < earlier.texts.size(); ++index) {
    unmatched.emplace(keyOf(earlier.texts[index].text), index);
  }
  std::vector<boost::optional<std::size_t>> matches;
  for (const CatalogueText& text : imported.texts) {
    const auto match = unmatched.find(keyOf(text.text));
    matches.push_back(match == unmatched.end() ? boost::none : boost::make_optional(match->second));
    if (match != unmatched.end()) {
      unmatched.erase(match);
    }
  }
  return matches;
}

// The texts to write, and how they relate to the earlier ones: with `replace`
// the imported texts alone, else the earlier texts in their order with
// changed ones replaced in place and new ones after them. Texts keep their
// files and places, for the check's findings.
std::pair<Catalogue, ImportCounts> mergeTexts(Catalogue&& earlier, Catalogue&& imported, bool replace) {
  if (!replace) {
    spellLanguagesAs(earlier, imported.texts);
  }
  const std::vector<boost::optional<std::size_t>> matches = matchEarlier(earlier, imported);
  const std::size_t earlierCount = earlier.texts.size();
  Catalogue merged = std::move(earlier);
  merged.append(std::move(imported));
  std::vector<CatalogueText> all = std::move(merged.texts);
  ImportCounts counts;
  // For each earlier text, the imported text that changes it.
  std::vector<boost::optional<std::size_t>> changedBy(earlierCount);
  for (std::size_t index = 0; index < matches.size(); ++index) {
    if (!matches[index]) {
      ++counts.added;
    } else if (all[*matches[index]].text.text() != all[earlierCount + index].text.text()) {
      ++counts.changed;
      changedBy[*matches[index]] = earlierCount + index;
    } else {
      ++counts.kept;
    }
  }
  if (replace) {
    counts.dropped = earlierCount - counts.changed - counts.kept;
    merged.texts.assign(std::make_move_iterator(all.begin() + static_cast<std::ptrdiff_t>(earlierCount)),
                        std::make_move_iterator(all.end()));
  } else {
    counts.kept = earlierCount - counts.changed;
    for (std::size_t index = 0; index < earlierCount; ++index) {
      merged.texts.push_back(std::move(all[changedBy[index].value_or(index)]));
    }
    for (std::size_t index = 0; index < matches.size(); ++index) {
      if (!matches[index]) {
        merged.texts.push_back(std::move(all[earlierCount + index]));
      }
    }
  }
  counts.texts = merged.texts.size();
  return {std::move(merged), counts};
}

void report(const std::vector<Finding>& reported, const boost::optional<ImportCounts>& written, bool json) {
  const ImportCounts counts = written.value_or(ImportCounts{});
  if (json) {
    printJson({{"texts", counts.texts},
               {"added", counts.added},
               {"changed", counts.changed},
               {"kept", counts.kept},
               {"dropped", counts.dropped},
               {"findings", findingsJson(reported)}});
    return;
  }
  printPlaced(std::cout, reported);
  std::cout << "xliff import: ";
  if (written) {
    std::cout << counted(counts.texts, "text", "texts") << " written: " << counts.changed << " changed, "
              << counts.added << " added, " << counts.kept << " kept, " << counts.dropped << " dropped; ";
  } else {
    std::cout << "nothing written, ";
  }
  std::cout << countedOrNo(reported.size(), "finding", "findings") << '\n';
}

// Reports the problems of reading, which write nothing (2).
int reportProblems(const std::vector<Finding>& problems, bool json) {
  report(problems, boost::none, json);
  return failure;
}

// The translated units of XLIFF files, each text in its file's target
// language, merged into the catalogue file `output` by key and written whole:
// the output's other texts are kept, unless `replace` drops them. Then the
// findings of reading them (untranslated units, ids and languages that cannot
// be taken, markup) and of checking the written texts as check does, widths
// measured, and a summary line of what changed; or one JSON document {texts,
// added, changed, kept, dropped, findings}. With file problems of the XLIFF
// files or of the output, or an output that cannot be written, only those,
// and nothing is written (2); nothing is written either where no unit holds a
// translation (1).
int importXliff(const XliffImportRequest& request) {
  requireDistinctInputs(request.files);
  refuseOutputAmongInputs(request.output, request.files);
  Loaded<Zalt::Catalogue::XliffImport> imported = loadFiles(Zalt::Catalogue::readXliffFiles, request.files);
  Loaded<Catalogue> earlier = loadEarlier(request.output);
  if (!imported.problems.empty() || !earlier.problems.empty()) {
    imported.problems.insert(imported.problems.end(), earlier.problems.begin(), earlier.problems.end());
    return reportProblems(imported.problems, request.json);
  }
  if (request.skipUnreviewed) {
    imported.document = Zalt::Catalogue::withoutUnreviewed(std::move(imported.document));
  }
  std::vector<Finding> reported = std::move(imported.document.findings);
  if (imported.document.catalogue.texts.empty()) {
    // An empty catalogue would pass for the translation of nothing.
    reported.push_back({Finding::Kind::Empty,
                        {imported.document.catalogue.files.front(), 0, 0},
                        "no unit holds a translation; nothing is written"});
    report(reported, boost::none, request.json);
    return findings;
  }
  auto merged =
      mergeTexts(std::move(earlier.document), std::move(imported.document.catalogue), request.replace);
  // The translations are checked as the catalogue they become: a text too
  // wide for its display is found on the way in, not on the device.
  const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(merged.first, request.unit);
  reported.insert(reported.end(), check.findings.begin(), check.findings.end());
  try {
    writeWhole(request.output,
               Zalt::Catalogue::writeCatalogue(Zalt::Catalogue::mdibTexts(std::move(merged.first.texts))));
  } catch (const std::runtime_error& error) {
    if (!request.json) {
      throw;
    }
    return reportProblems({unwritableOutput(request.output, error)}, true);
  }
  report(reported, merged.second, request.json);
  return reported.empty() ? success : findings;
}

}  // namespace

void addXliffImport(CLI::App& parent, Runner& chosen) {
  CLI::App* command = parent.add_subcommand("import",
                                            "Merge the translated units of XLIFF files into a catalogue file "
                                            "by key, and check what it holds then.");
  XliffImportRequest& request = runWhenChosen(*command, chosen, importXliff);
  addFilesOption(*command, request.files,
                 "XLIFF 1.2 files, read in order; - reads standard input, which messages name <stdin>");
  command
      ->add_option("-o,--output", request.output,
                   "The catalogue file to write, whole or not at all; the texts it holds already are kept "
                   "where the XLIFF files carry none under their key")
      ->required()
      ->check(namedFile());
  command->add_flag("--skip-unreviewed", request.skipUnreviewed,
                    "Leave out the units that still need review (a review state, approved=\"no\", a machine "
                    "translation); they are reported either way");
  command->add_flag("--replace", request.replace,
                    "Write only the imported texts, dropping the others that the output holds");
  addWidthUnitOption(*command, request.unit);
  command->add_flag("--json", request.json,
                    "Print one JSON document {texts, added, changed, kept, dropped, findings}, file problems "
                    "too");
}

}  // namespace ZaltCatalogueTool
