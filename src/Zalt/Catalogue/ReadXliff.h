// Zalt::Catalogue::readXliff: translators' XLIFF 1.2 files read back as a
// catalogue of their target language, with what keeps a unit from yielding a
// text as findings. The units are those that writeXliff (WriteXliff.h) writes,
// as translation tools save them.
//
//   const Zalt::Catalogue::XliffImport translated = Zalt::Catalogue::readXliffFile("de.xlf");
//   for (const Zalt::Catalogue::Finding& finding : translated.findings) {
//     std::cerr << Zalt::Catalogue::placed(finding) << '\n';  // de.xlf:12:7: unit 'alarm.hr.high' has no
//     translation
//   }
//   const std::string germanFile =
//       Zalt::Catalogue::writeCatalogue(Zalt::Catalogue::mdibTexts(translated.catalogue.texts));
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/Finding.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {

// The translations read from XLIFF files.
struct ZALT_LTSCATALOGUE_EXPORT XliffImport {
  // One text per translated unit, in the target language of its file (an
  // ll-CC tag in any case, taken as it-IT), each at its target element;
  // `files` names the XLIFF files read.
  Catalogue catalogue;
  // In document order, each at its place:
  //   - Language: a file element without a target-language, or with one that
  //     is not ll-CC; none of its units yields a text;
  //   - Id: a unit without an id or with one that writeXliff does not write;
  //   - Untranslated: a unit with no target, an empty one or one of white
  //     space only, or one whose state is "new" or "needs-translation";
  //   - Markup: a target that holds an element (g, x, ph, ...) at it; the
  //     segments of a segmented target (mrk mtype="seg") are its text;
  //   - Segments: a segmented unit whose target's segments are not those of
  //     its seg-source, by mid, in any order;
  //   - Lines: a target with another number of lines than its id gives;
  //   - Placeholder: a translation that lacks or adds a form its source keeps
  //     as written (Private/KeptForms.h), in any order; of a plural or select
  //     argument only its name and type count, as languages have other
  //     plural categories;
  //   - Unreviewed: a translation whose state asks for review or adaptation
  //     (needs-review-translation, needs-adaptation, needs-l10n,
  //     needs-review-adaptation, needs-review-l10n), whose state-qualifier
  //     says a machine made it (leveraged-mt, mt-suggestion), or whose unit
  //     has approved="no"; the only finding whose unit yields a text.
  // A unit with any other finding yields no text; a unit with translate="no"
  // yields none and no finding.
  std::vector<Finding> findings;
  // The indexes into catalogue.texts, ascending, of the texts of the units
  // with an Unreviewed finding.
  std::vector<std::size_t> unreviewed;

  // Moves the texts, files, findings and unreviewed texts of `other` behind
  // these, its indexes shifted past the texts here.
  void append(XliffImport&& other);
};

// `import` without its unreviewed texts, for callers that take only
// translations someone signed off; its findings stay.
ZALT_LTSCATALOGUE_EXPORT XliffImport withoutUnreviewed(XliffImport&& import);

// Reads XLIFF 1.2 files in order ("-" is standard input) as any tool saves
// them: in the XLIFF namespace under any prefix or in none, units at any depth
// of groups, in several file elements, with attributes and notes dropped.
// Reads every file before it throws CatalogueError with the problems of all
// that cannot be read, are not well-formed, whose root is not an xliff
// element of version 1.2, that give a unit two targets or that put a unit
// inside another; read as a catalogue file is.
ZALT_LTSCATALOGUE_EXPORT XliffImport readXliffFiles(const std::vector<std::string>& paths);

// Reads one file; throws CatalogueError as readXliffFiles does.
ZALT_LTSCATALOGUE_EXPORT XliffImport readXliffFile(const std::string& path);

// Reads an XLIFF document held in memory, naming it `fileName`; throws CatalogueError.
ZALT_LTSCATALOGUE_EXPORT XliffImport readXliff(std::string_view content, const std::string& fileName);

}  // namespace Catalogue
}  // namespace Zalt
