#include "Options.h"

#include <Tovra/Locale/LanguageTag.h>
#include <Zalt/Catalogue/LanguageCase.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace ZaltCatalogueTool {
namespace {

const std::vector<std::pair<std::string, Zalt::Catalogue::WidthUnit>>& widthUnits() {
  static const std::vector<std::pair<std::string, Zalt::Catalogue::WidthUnit>> units = {
      {"fullwidth", Zalt::Catalogue::WidthUnit::Fullwidth},
      {"characters", Zalt::Catalogue::WidthUnit::Characters}};
  return units;
}

bool isSameInput(const std::string& earlier, const std::string& later) {
  if (earlier == "-" || later == "-") {
    return earlier == later;
  }
  std::error_code unknown;
  return std::filesystem::equivalent(earlier, later, unknown);
}

}  // namespace

const char* const catalogueFilesHelp =
    "Catalogue files, read in order as one catalogue; - reads standard input, which messages name <stdin>";

void addFilesOption(CLI::App& command, std::vector<std::string>& files, const char* help) {
  command.add_option("files", files, help)->required();
}

void addWidthUnitOption(CLI::App& command, Zalt::Catalogue::WidthUnit& unit) {
  command
      .add_option("--width-unit", unit,
                  "What a text's width is measured in: fullwidth (a wide character counts one, any other "
                  "one half; the default) or characters (each counts one)")
      ->transform(oneOf(widthUnits()));
}

CLI::Validator storeLanguageTag() {
  return CLI::Validator(
      [](const std::string& tag) {
        return Tovra::Locale::LanguageTag(tag).is2LetterLangAnd2LetterCountry()
                   ? std::string()
                   : "'" + tag + "' is not a language tag of the form ll-CC, like 'en-US'";
      },
      "ll-CC");
}

Tovra::Locale::LanguageTag languageAsHeld(const Tovra::Locale::LanguageTag& tag,
                                          const Zalt::Catalogue::Catalogue& catalogue) {
  for (const Zalt::Catalogue::CatalogueText& text : catalogue.texts) {
    if (text.text.lang() && Zalt::Catalogue::sameLanguage(*text.text.lang(), tag)) {
      return *text.text.lang();
    }
  }
  return Zalt::Catalogue::canonicalLanguage(tag);
}

CLI::Validator namedFile() {
  return CLI::Validator(
      [](const std::string& path) {
        return path == "-" ? std::string("the findings go to standard output; name a file to write")
                           : std::string();
      },
      "FILE");
}

void requireDistinctInputs(const std::vector<std::string>& files) {
  for (std::size_t later = 1; later < files.size(); ++later) {
    for (std::size_t earlier = 0; earlier < later; ++earlier) {
      if (isSameInput(files[earlier], files[later])) {
        throw CLI::ValidationError("files",
                                   files[later] + " is " + files[earlier] + " again: give each file once");
      }
    }
  }
}

}  // namespace ZaltCatalogueTool
