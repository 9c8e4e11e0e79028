// The commands of zalt-lts-catalogue. Each reads its files as one catalogue,
// writes its answer to stdout and returns the exit status (ExitCode.h). File
// problems end fit and stats on stderr; check and coverage report them as
// findings.
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Localization/NumberOfLines.h>

#include <boost/optional.hpp>

#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// Every problem that a device store would meet, one "FILE:LINE:COLUMN: message"
// per line, then a summary line; or one JSON document. With file problems, only
// those. Widths are measured in `unit`.
int check(const std::vector<std::string>& files, bool json, Zalt::Catalogue::WidthUnit unit);

struct FitRequest {
  std::string language;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> width;
  boost::optional<Zalt::Localization::NumberOfLines> lines;
  boost::optional<std::string> ref;
  boost::optional<Tovra::Mdib::VersionCounter> version;
  // What the measured class of each answer is counted in.
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
  // One JSON document {findings, answers, unanswerable} instead of a table.
  bool json = false;
};

// A table of what the store's text() answers for each reference (or the one
// asked for), in its newest version unless a version is asked for. Says on
// stderr, instead, which language, reference or version no kept text has.
int fit(const std::vector<std::string>& files, const FitRequest& request);

// Numbers of texts, references, versions and languages, texts per width and
// number of lines, and per language the texts declared narrower than they
// measure in `unit`.
int stats(const std::vector<std::string>& files, Zalt::Catalogue::WidthUnit unit, bool json);

struct PseudoRequest {
  std::string from;
  std::string to;
  // The file to write; standard output when absent or "-".
  boost::optional<std::string> output;
};

// A catalogue file with, for each kept text in the language `from`, a text in
// `to` with the same reference, version and width whose content is its
// pseudo-translation. Says on stderr, instead, that no kept text has `from`.
// Each text of `from` that the store rejects is named on stderr as
// "FILE:LINE:COLUMN: message" and makes the status 1; the others are written
// all the same. A `to` that is `from` or that the catalogue holds is refused
// (2) before anything is written.
int pseudo(const std::vector<std::string>& files, const PseudoRequest& request);

struct CoverageRequest {
  // The MDIB document; "-" is standard input.
  std::string mdib;
  bool json = false;
  // Leaves out the references of the catalogue that the MDIB never names.
  bool allowUnused = false;
  // Makes each text that the MDIB gives inline a finding.
  bool requireRefs = false;
};

// Every text that the MDIB names and the catalogue lacks in a language or in
// the version named, each at its place in the MDIB, then the catalogue's
// references that the MDIB never names, then a summary line that counts the
// texts given inline per language; or one JSON document. With file problems of
// either side, only those.
int coverage(const std::vector<std::string>& files, const CoverageRequest& request);

struct XliffExportRequest {
  std::string from;
  std::string to;
  // The XLIFF file to write, never standard output, which carries the findings.
  std::string output;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

// An XLIFF 1.2 file for translators, with a unit for each kept text in `from`
// and, where the catalogue holds it already, its translation into `to`. Prints
// the catalogue's findings as check does and a summary line; with file
// problems, only those, and nothing is written (2). A `to` that is `from` is
// refused (2); a `from` that no kept text has writes nothing (1).
int exportXliff(const std::vector<std::string>& files, const XliffExportRequest& request);

struct XliffImportRequest {
  // The catalogue file to write, never standard output, which carries the findings.
  std::string output;
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
};

// A catalogue file of the translated units of XLIFF files, each text in its
// file's target language, written whole; then the findings of reading them
// (untranslated units, ids and languages that cannot be taken, markup) and of
// checking the texts as check does, widths measured, and a summary line; or
// one JSON document {texts, findings}. With file problems, only those, and
// nothing is written (2); nothing is written either where no unit holds a
// translation (1).
int importXliff(const std::vector<std::string>& files, const XliffImportRequest& request);

}  // namespace ZaltCatalogueTool
