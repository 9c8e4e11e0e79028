// The options and checks of the command line that several commands of
// zalt-lts-catalogue share, so that each takes and explains them alike:
//
//   addFilesOption(*command, request.files);
//   addWidthUnitOption(*command, request.unit);
//   command->add_option("--to", request.to, "...")->check(storeLanguageTag());
#pragma once

#include "Wording.h"

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/TextMeasure.h>

#include <CLI/CLI.hpp>
// CLI11 can show an option's value through operator<<, which boost::optional
// declares only here.
#include <boost/optional/optional_io.hpp>

#include <charconv>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace ZaltCatalogueTool {

// What the catalogue files of a command are and how "-" reads.
extern const char* const catalogueFilesHelp;

// The required positional `files`, described by `help`.
void addFilesOption(CLI::App& command, std::vector<std::string>& files,
                    const char* help = catalogueFilesHelp);

// --width-unit: fullwidth (the default) or characters.
void addWidthUnitOption(CLI::App& command, Zalt::Catalogue::WidthUnit& unit);

// Exactly the names of `table`, turned into their values: CLI11's checked
// transformer alone would also take the values' numbers.
template <typename Value>
CLI::Validator oneOf(const std::vector<std::pair<std::string, Value>>& table) {
  std::vector<std::string> names;
  names.reserve(table.size());
  for (const auto& entry : table) {
    names.push_back(entry.first);
  }
  return (CLI::IsMember(table) & CLI::Transformer(table)).description("one of " + listed(names));
}

// `text` of `option` as a Number: digits only and in range, as a Version in a
// catalogue file, with no sign, no other base and no clamping of a number too
// large. Throws CLI::ValidationError otherwise.
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

// A language tag as the store takes it: two letters, a hyphen, two letters.
CLI::Validator storeLanguageTag();

// `tag` as `catalogue` spells it where a text there has it but for case, else
// in canonical case: the language a command writes texts in.
Tovra::Locale::LanguageTag languageAsHeld(const Tovra::Locale::LanguageTag& tag,
                                          const Zalt::Catalogue::Catalogue& catalogue);

// A file to write other than standard output, which carries the findings.
CLI::Validator namedFile();

// Throws CLI::ValidationError when a file of `files` is given twice, as named
// or through links, or "-" is: a file given twice would report every text of it
// as dropped against itself, and standard input can be read only once.
void requireDistinctInputs(const std::vector<std::string>& files);

}  // namespace ZaltCatalogueTool
