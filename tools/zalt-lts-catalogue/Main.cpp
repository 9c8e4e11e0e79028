// zalt-lts-catalogue: checks localized-text catalogues on the build machine
// against the rules of the device store, and shows what a store answers.
//
//   zalt-lts-catalogue check texts/*.xml [--json] [--width-unit characters]
//   zalt-lts-catalogue fit texts/*.xml --lang de-DE --width m --lines 2
//   zalt-lts-catalogue stats texts/*.xml
//   zalt-lts-catalogue pseudo --from en-US --to en-XA texts/*.xml -o pseudo.xml
//   zalt-lts-catalogue coverage --mdib mdib.xml texts/*.xml
//   zalt-lts-catalogue xliff export --from en-US --to de-DE texts/*.xml -o de.xlf
//   zalt-lts-catalogue xliff import de.xlf -o texts/de.xml
#include "Commands.h"
#include "ExitCode.h"
#include "OutputFile.h"

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Catalogue/TextWidthTokens.h>

#include <CLI/CLI.hpp>
// CLI11 can show an option's value through operator<<, which boost::optional
// declares only here.
#include <boost/optional/optional_io.hpp>

#include <charconv>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace ZaltCatalogueTool;

const char* const filesHelp =
    "Catalogue files, read in order as one catalogue; - reads standard input, which messages name <stdin>";

std::string exitStatusFooter() {
  std::string footer = "Exit statuses:";
  for (const ExitStatus& status : exitStatuses) {
    footer += "\n  " + std::to_string(status.code) + "  " + status.meaning;
  }
  return footer;
}

// Exactly the names of `table`: CLI11's checked transformer alone would also
// take the values' numbers.
template <typename Value>
CLI::Validator oneOf(const std::vector<std::pair<std::string, Value>>& table) {
  std::string names;
  for (const auto& entry : table) {
    names += (names.empty() ? "" : ", ") + entry.first;
  }
  return (CLI::IsMember(table) & CLI::Transformer(table)).description("one of " + names);
}

const std::vector<std::pair<std::string, Zalt::Catalogue::WidthUnit>>& widthUnits() {
  static const std::vector<std::pair<std::string, Zalt::Catalogue::WidthUnit>> units = {
      {"fullwidth", Zalt::Catalogue::WidthUnit::Fullwidth},
      {"characters", Zalt::Catalogue::WidthUnit::Characters}};
  return units;
}

void addWidthUnitOption(CLI::App& command, Zalt::Catalogue::WidthUnit& unit) {
  command
      .add_option("--width-unit", unit,
                  "What a text's width is measured in: fullwidth (a wide character counts one, any other "
                  "one half; the default) or characters (each counts one)")
      ->transform(oneOf(widthUnits()));
}

// Digits only and in range, as a Version in a catalogue file: no sign, no
// other base, no clamping of a number too large.
template <typename Number>
Number decimal(const std::string& option, const std::string& text) {
  Number number{};
  // An unsigned from_chars takes neither a sign nor white space nor a base prefix.
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size()) {
    throw CLI::ValidationError(option, "'" + text + "' is not a decimal number from 0 to " +
                                           std::to_string(std::numeric_limits<Number>::max()));
  }
  return number;
}

// The store takes only tags of two letters, a hyphen and two letters.
CLI::Validator storeLanguageTag() {
  return CLI::Validator(
      [](const std::string& tag) {
        return Tovra::Locale::LanguageTag(tag).is2LetterLangAnd2LetterCountry()
                   ? std::string()
                   : "'" + tag + "' is not a language tag of the form ll-CC, like 'en-US'";
      },
      "ll-CC");
}

// A file given twice would report every text of it as dropped against
// itself, and standard input can be read only once.
void requireDistinctInputs(const std::vector<std::string>& files) {
  for (std::size_t later = 1; later < files.size(); ++later) {
    for (std::size_t earlier = 0; earlier < later; ++earlier) {
      std::error_code unknown;
      const bool stdinTwice = files[earlier] == "-" && files[later] == "-";
      if (stdinTwice || (files[earlier] != "-" && files[later] != "-" &&
                         std::filesystem::equivalent(files[earlier], files[later], unknown))) {
        throw CLI::ValidationError("files",
                                   files[later] + " is " + files[earlier] + " again: give each file once");
      }
    }
  }
}

// What the command line asks for, filled in by CLI11.
struct Request {
  std::vector<std::string> files;
  bool json = false;
  Zalt::Catalogue::WidthUnit unit = Zalt::Catalogue::WidthUnit::Fullwidth;
  FitRequest fit;
  PseudoRequest pseudo;
  CoverageRequest coverage;
  XliffExportRequest xliffExport;
  XliffImportRequest xliffImport;
};

CLI::App* addCheck(CLI::App& app, Request& request) {
  CLI::App* command = app.add_subcommand(
      "check", "Report every problem that a device store would meet; exit 1 if there is any.");
  command->add_option("files", request.files, filesHelp)->required();
  command->add_flag("--json", request.json,
                    "Print one JSON document {texts, findings: [{file, line, column, kind, message}]}, "
                    "file problems too; a wrong command line prints none");
  addWidthUnitOption(*command, request.unit);
  return command;
}

CLI::App* addFit(CLI::App& app, Request& request) {
  FitRequest& fit = request.fit;
  CLI::App* command =
      app.add_subcommand("fit", "Show the text that a device store answers for each reference.");
  command->add_option("files", request.files, filesHelp)->required();
  command->add_option("--lang", fit.language, "Language tag, such as de-DE")->required();
  command->add_option("--width", fit.width, "Display width")
      ->transform(oneOf(Zalt::Catalogue::textWidthTokens()));
  command->add_option_function<std::string>(
      "--lines",
      [&fit](const std::string& lines) {
        fit.lines = decimal<Zalt::Localization::NumberOfLines>("--lines", lines);
      },
      "Number of lines the display has room for");
  command->add_option("--ref", fit.ref, "Only this reference");
  command->add_option_function<std::string>(
      "--ref-version",
      [&fit](const std::string& version) {
        fit.version = Tovra::Mdib::VersionCounter(decimal<std::uint64_t>("--ref-version", version));
      },
      "This version instead of the newest");
  addWidthUnitOption(*command, fit.unit);
  command->add_flag(
      "--json", fit.json,
      "Print one JSON document {findings, answers: [{reference, version, width, measured, lines, "
      "text}], unanswerable}, file problems too");
  return command;
}

CLI::App* addStats(CLI::App& app, Request& request) {
  CLI::App* command = app.add_subcommand("stats", "Count texts, references, versions and languages.");
  command->add_option("files", request.files, filesHelp)->required();
  addWidthUnitOption(*command, request.unit);
  command->add_flag(
      "--json", request.json,
      "Print one JSON document {texts, read, references, versions, languages, perWidth, perLines, "
      "declaredTooNarrow, findings}, file problems too");
  return command;
}

CLI::App* addPseudo(CLI::App& app, Request& request) {
  PseudoRequest& pseudo = request.pseudo;
  CLI::App* command = app.add_subcommand(
      "pseudo", "Write a pseudo-translation of one language: accented, longer, each line in brackets.");
  command->add_option("files", request.files, filesHelp)->required();
  command->add_option("--from", pseudo.from, "The language to translate, such as en-US")->required();
  command->add_option("--to", pseudo.to, "The pseudo-language's tag, such as en-XA")
      ->required()
      ->check(storeLanguageTag());
  command->add_option(
      "-o,--output", pseudo.output,
      "The catalogue file to write, whole or not at all; standard output without it or with -");
  return command;
}

CLI::App* addCoverage(CLI::App& app, Request& request) {
  CoverageRequest& coverage = request.coverage;
  CLI::App* command = app.add_subcommand(
      "coverage", "Report the texts that an MDIB names and the catalogue lacks; exit 1 if there is any.");
  command->add_option("files", request.files, filesHelp)->required();
  command
      ->add_option("--mdib", coverage.mdib,
                   "The MDIB document whose Ref attributes name the texts: a GetMdibResponse, an Mdib, or "
                   "any document of MDIB content; - reads standard input")
      ->required();
  command->add_flag("--allow-unused", coverage.allowUnused,
                    "Leave out the references of the catalogue that the MDIB never names");
  command->add_flag("--require-refs", coverage.requireRefs,
                    "Report each text that the MDIB gives inline, without a Ref, as a finding");
  command->add_flag("--json", coverage.json,
                    "Print one JSON document {referencesNamed, covered, inline: [{lang, texts}], findings}, "
                    "inline texts and file problems too");
  return command;
}

// The report goes to standard output, so the file written cannot.
CLI::Validator namedFile() {
  return CLI::Validator(
      [](const std::string& path) {
        return path == "-" ? std::string("the findings go to standard output; name a file to write")
                           : std::string();
      },
      "FILE");
}

struct XliffCommands {
  const CLI::App* exporting;
  const CLI::App* importing;
};

XliffCommands addXliff(CLI::App& app, Request& request) {
  CLI::App* xliff = app.add_subcommand(
      "xliff",
      "Exchange texts with translators' tools as XLIFF 1.2, each with its width and lines as limits.");
  xliff->require_subcommand(1);
  XliffExportRequest& exporting = request.xliffExport;
  CLI::App* exportCommand = xliff->add_subcommand(
      "export",
      "Write an XLIFF file of the kept texts of one language, with the translations the catalogue has.");
  exportCommand->add_option("files", request.files, filesHelp)->required();
  exportCommand->add_option("--from", exporting.from, "The language to translate, such as en-US")
      ->required()
      ->check(storeLanguageTag());
  exportCommand->add_option("--to", exporting.to, "The language to translate into, such as de-DE")
      ->required()
      ->check(storeLanguageTag());
  exportCommand->add_option("-o,--output", exporting.output, "The XLIFF file to write, whole or not at all")
      ->required()
      ->check(namedFile());
  addWidthUnitOption(*exportCommand, exporting.unit);

  XliffImportRequest& importing = request.xliffImport;
  CLI::App* importCommand = xliff->add_subcommand(
      "import", "Write a catalogue file of the translated units of XLIFF files, and check it.");
  importCommand
      ->add_option("files", request.files,
                   "XLIFF 1.2 files, read in order; - reads standard input, which messages name <stdin>")
      ->required();
  importCommand
      ->add_option("-o,--output", importing.output, "The catalogue file to write, whole or not at all")
      ->required()
      ->check(namedFile());
  addWidthUnitOption(*importCommand, importing.unit);
  importCommand->add_flag("--json", importing.json,
                          "Print one JSON document {texts, findings}, file problems too");
  return {exportCommand, importCommand};
}

int run(int argc, char** argv) {
  CLI::App app("Checks localized-text catalogues against the rules of the device store.",
               "zalt-lts-catalogue");
  app.set_version_flag("--version", std::string("zalt-lts-catalogue ") + ZALT_LTS_CATALOGUE_VERSION,
                       "Print the tool's version and exit");
  app.footer(exitStatusFooter());
  // A path such as /data/texts.xml is a file, never a Windows-style /option.
  app.allow_windows_style_options(false);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("zalt-lts-catalogue: ") + error.what() + "\nRun with --help for more information.\n";
  });

  Request request;
  const CLI::App* const checkCommand = addCheck(app, request);
  const CLI::App* const fitCommand = addFit(app, request);
  addStats(app, request);
  const CLI::App* const pseudoCommand = addPseudo(app, request);
  const CLI::App* const coverageCommand = addCoverage(app, request);
  const XliffCommands xliffCommands = addXliff(app, request);
  try {
    app.parse(argc, argv);
    std::vector<std::string> inputs = request.files;
    if (coverageCommand->parsed()) {
      inputs.push_back(request.coverage.mdib);
    }
    requireDistinctInputs(inputs);
    if (pseudoCommand->parsed() && request.pseudo.output) {
      refuseOutputAmongInputs(*request.pseudo.output, request.files);
    }
    if (xliffCommands.exporting->parsed()) {
      refuseOutputAmongInputs(request.xliffExport.output, request.files);
    }
    if (xliffCommands.importing->parsed()) {
      refuseOutputAmongInputs(request.xliffImport.output, request.files);
    }
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? success : failure;
  }
  if (checkCommand->parsed()) {
    return check(request.files, request.json, request.unit);
  }
  if (fitCommand->parsed()) {
    return fit(request.files, request.fit);
  }
  if (pseudoCommand->parsed()) {
    return pseudo(request.files, request.pseudo);
  }
  if (coverageCommand->parsed()) {
    return coverage(request.files, request.coverage);
  }
  if (xliffCommands.exporting->parsed()) {
    return exportXliff(request.files, request.xliffExport);
  }
  if (xliffCommands.importing->parsed()) {
    return importXliff(request.files, request.xliffImport);
  }
  return stats(request.files, request.unit, request.json);
}

// A gate whose report did not reach its file must not pass: a full disk
// fails the command, whatever it found.
int afterWritingOutput(int status) {
  std::cout.flush();
  if (std::cout) {
    return status;
  }
  std::cerr << "zalt-lts-catalogue: cannot write to standard output\n";
  return failure;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return afterWritingOutput(run(argc, argv));
  } catch (const std::exception& error) {
    std::cerr << "zalt-lts-catalogue: " << error.what() << '\n';
    return afterWritingOutput(failure);
  }
}
