#include "Catalogue.h"

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <random>

namespace ZaltBench {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedTextReference;

// One label in the four lengths a monitor has room for.
struct Label {
  const char* tiny;
  const char* brief;
  const char* full;
  const char* detail;
};

constexpr std::size_t categoryCount = 8;

// Sorted, so that references of later categories order after earlier ones.
constexpr std::array<const char*, categoryCount> categories = {"alarm", "battery", "ecg",  "menu",
                                                               "nibp",  "resp",    "spo2", "temp"};

// Indexed by language (the order of catalogueLanguages()), then by category.
constexpr std::array<std::array<Label, categoryCount>, languagesPerReference> labels = {{
    {{
        {"HF", "HF hoch", "Herzfrequenz hoch", "Herzfrequenz über oberer Grenze"},
        {"Akku", "Akku tief", "Akku schwach", "Akku schwach, an Netzstrom anschließen"},
        {"Abl.", "Abl. ab", "EKG-Ableitung ab", "EKG-Ableitung getrennt, Elektroden prüfen"},
        {"Menü", "Menü", "Hauptmenü", "Hauptmenü und Einstellungen"},
        {"NIBD", "NIBD fertig", "Blutdruck gemessen", "Nichtinvasive Blutdruckmessung abgeschlossen"},
        {"AF", "Atemfreq.", "Atemfrequenz", "Atemfrequenz aus Thoraximpedanz"},
        {"SpO2", "SpO2 tief", "Sauerstoffsättigung tief", "Sauerstoffsättigung unter unterer Grenze"},
        {"Temp", "Temp hoch", "Temperatur hoch", "Körpertemperatur über oberer Grenze"},
    }},
    {{
        {"HR", "HR high", "Heart rate high", "Heart rate above upper limit"},
        {"Batt", "Batt low", "Battery low", "Battery low, connect to mains power"},
        {"Lead", "Lead off", "ECG lead off", "ECG lead disconnected, check electrodes"},
        {"Menu", "Menu", "Main menu", "Main menu and settings"},
        {"NIBP", "NIBP done", "Blood pressure measured", "Non-invasive blood pressure measurement done"},
        {"RR", "Resp rate", "Respiration rate", "Respiration rate from thoracic impedance"},
        {"SpO2", "SpO2 low", "Oxygen saturation low", "Oxygen saturation below lower limit"},
        {"Temp", "Temp high", "Temperature high", "Body temperature above upper limit"},
    }},
    {{
        {"HR", "HR高", "心拍数 高", "心拍数が上限を超えています"},
        {"電池", "電池低", "バッテリー 低下", "バッテリー低下。電源に接続してください"},
        {"誘導", "誘導外れ", "心電図 誘導外れ", "心電図誘導が外れています。電極を確認してください"},
        {"メニュー", "メニュー", "メイン メニュー", "メインメニューと設定"},
        {"NIBP", "NIBP完了", "血圧 測定完了", "非観血血圧測定が完了しました"},
        {"RR", "呼吸数", "呼吸数 (インピーダンス)", "胸部インピーダンスによる呼吸数"},
        {"SpO2", "SpO2低", "酸素飽和度 低", "酸素飽和度が下限を下回っています"},
        {"体温", "体温高", "体温 高", "体温が上限を超えています"},
    }},
}};

struct Variant {
  boost::optional<LocalizedTextWidth> width;
  std::string (*text)(const Label&);
};

std::string fullOnTwoLines(const Label& label) {
  std::string text = label.full;
  const std::size_t space = text.find(' ');
  if (space == std::string::npos) {
    return std::string(label.tiny) + "\n" + label.brief;
  }
  text[space] = '\n';
  return text;
}

// Every width from the unqualified label to the detailed one, and a
// two-line medium label for displays that are narrow but tall; a
// medium-width lookup therefore meets both of the table's line counts.
const std::array<Variant, variantsPerVersion>& variants() {
  static const std::array<Variant, variantsPerVersion> all = {{
      {boost::none, [](const Label& label) { return std::string(label.full); }},
      {LocalizedTextWidth::ExtraSmall, [](const Label& label) { return std::string(label.tiny); }},
      {LocalizedTextWidth::Small, [](const Label& label) { return std::string(label.brief); }},
      {LocalizedTextWidth::Medium, [](const Label& label) { return std::string(label.full); }},
      {LocalizedTextWidth::Medium, fullOnTwoLines},
      {LocalizedTextWidth::Large, [](const Label& label) { return std::string(label.detail); }},
  }};
  return all;
}

constexpr std::array<std::uint64_t, versionsPerReference> versions = {2, 1};

std::size_t categoryOf(std::size_t index, std::size_t references) {
  return index * categoryCount / references;
}

LocalizedTextRef referenceName(std::size_t index, std::size_t references, const char* kind) {
  char name[64];
  std::snprintf(name, sizeof name, "%s.%07zu.%s", categories[categoryOf(index, references)], index, kind);
  return LocalizedTextRef(Utf8(name));
}

template <typename Element, typename Container>
const Element& drawFrom(const Container& elements, std::mt19937_64& random) {
  return elements[std::uniform_int_distribution<std::size_t>(0, elements.size() - 1)(random)];
}

boost::optional<LocalizedTextWidth> drawWidth(std::mt19937_64& random) {
  return static_cast<LocalizedTextWidth>(std::uniform_int_distribution<std::int32_t>(0, 5)(random));
}

}  // namespace

std::size_t referencesFor(std::size_t texts) {
  const double references = std::round(static_cast<double>(texts) / textsPerReference);
  return references < 1 ? 1 : static_cast<std::size_t>(references);
}

const std::vector<LanguageTag>& catalogueLanguages() {
  static const std::vector<LanguageTag> languages = {LanguageTag("de-DE"), LanguageTag("en-US"),
                                                     LanguageTag("ja-JP")};
  return languages;
}

// ".hint" orders before ".label", so a missing reference falls between the
// stored references index - 1 and index and a lookup of it descends as deep.
LocalizedTextRef storedReference(std::size_t index, std::size_t references) {
  return referenceName(index, references, "label");
}

LocalizedTextRef missingReference(std::size_t index, std::size_t references) {
  return referenceName(index, references, "hint");
}

std::vector<LocalizedText> makeCatalogue(std::size_t references) {
  std::vector<LocalizedText> catalogue;
  catalogue.reserve(references * textsPerReference);
  for (std::size_t index = 0; index < references; ++index) {
    const LocalizedTextRef ref = storedReference(index, references);
    const std::size_t category = categoryOf(index, references);
    for (std::uint64_t version : versions) {
      for (std::size_t language = 0; language < languagesPerReference; ++language) {
        const Label& label = labels[language][category];
        for (const Variant& variant : variants()) {
          catalogue.emplace_back(Utf8(variant.text(label)), catalogueLanguages()[language], ref,
                                 VersionCounter(version), variant.width);
        }
      }
    }
  }
  return catalogue;
}

std::string strategyName(Strategy strategy) {
  switch (strategy) {
    case Strategy::Plain:
      return "plain";
    case Strategy::WidthOnly:
      return "width";
    case Strategy::LinesOnly:
      return "lines";
    case Strategy::WidthAndLines:
      return "both";
  }
  return "?";
}

std::string outcomeName(Outcome outcome) { return outcome == Outcome::Hit ? "hit" : "miss"; }

std::vector<TextQuery> makeTextQueries(std::size_t references, Strategy strategy, Outcome outcome,
                                       std::size_t count) {
  // Fixed seed: every run and every size asks the same kind of questions.
  std::mt19937_64 random(20240611);
  std::uniform_int_distribution<std::size_t> referenceIndex(0, references - 1);
  std::uniform_int_distribution<std::uint32_t> lines(1, 2);
  std::vector<TextQuery> queries;
  queries.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t index = referenceIndex(random);
    const LocalizedTextRef ref =
        outcome == Outcome::Hit ? storedReference(index, references) : missingReference(index, references);
    const auto version = VersionCounter(drawFrom<std::uint64_t>(versions, random));
    const auto& language = drawFrom<LanguageTag>(catalogueLanguages(), random);

    const bool withWidth = strategy == Strategy::WidthOnly || strategy == Strategy::WidthAndLines;
    const bool withLines = strategy == Strategy::LinesOnly || strategy == Strategy::WidthAndLines;
    const LocalizedTextReference reference(
        ref, version, withWidth ? drawWidth(random) : boost::none,
        withLines ? boost::optional<std::uint32_t>(lines(random)) : boost::none);
    // A lookup by lines starts at the group's first entry; one by width alone
    // searches the one-line text of the requested width.
    const Zalt::Localization::Impl::LocalizedTextStoreKey searchKey{
        ref, language, version, withLines ? boost::none : reference.textWidth, 1};
    queries.push_back(TextQuery{reference, language, searchKey});
  }
  return queries;
}

}  // namespace ZaltBench
