#include "WalkthroughCatalogue.h"

#include <cstdint>

namespace ZaltExamples {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using MdibText = Tovra::Mdib::LocalizedText;

const LanguageTag english("en-US");
const LanguageTag german("de-DE");
const LanguageTag french("fr-FR");

struct CatalogueLine {
  const char* ref;
  std::uint64_t version;
  LocalizedTextWidth width;
  const char* english;
  const char* german;
  const char* french;
};

// Every reference and version in all three languages, so the store stays
// consistent. A "\n" makes the two-line variant of a width.
const CatalogueLine catalogue[] = {
    {"alarm.hr.high", 1, LocalizedTextWidth::ExtraSmall, "HR hi", "HF hoch", "FC ht"},
    {"alarm.hr.high", 1, LocalizedTextWidth::Small, "HR high", "HF hoch", "FC haute"},
    {"alarm.hr.high", 1, LocalizedTextWidth::Medium, "Heart rate high", "Herzfrequenz hoch", "FC trop haute"},
    {"alarm.hr.high", 2, LocalizedTextWidth::ExtraSmall, "HR hi", "HF hoch", "FC ht"},
    {"alarm.hr.high", 2, LocalizedTextWidth::Small, "HR too high", "HF zu hoch", "FC trop haute"},
    {"alarm.hr.high", 2, LocalizedTextWidth::Medium, "Heart rate\ntoo high", "Herzfrequenz\nzu hoch",
     "Fréquence\ncardiaque haute"},
    {"alarm.hr.high", 2, LocalizedTextWidth::Large, "Heart rate too high", "Herzfrequenz zu hoch",
     "Fréquence cardiaque trop haute"},
    {"alarm.hr.high", 2, LocalizedTextWidth::ExtraLarge, "Heart rate above upper limit\nCheck patient",
     "Herzfrequenz über Obergrenze\nPatient prüfen", "Fréquence cardiaque trop élevée\nVérifier le patient"},
    {"label.spo2", 1, LocalizedTextWidth::Small, "SpO2", "SpO2", "SpO2"},
    {"label.spo2", 1, LocalizedTextWidth::Large, "Oxygen saturation", "Sauerstoffsättigung",
     "Saturation en oxygène"},
    {"label.spo2", 2, LocalizedTextWidth::Small, "SpO2 %", "SpO2 %", "SpO2 %"},
    {"label.spo2", 2, LocalizedTextWidth::Large, "Oxygen saturation (%)", "Sauerstoffsättigung (%)",
     "Saturation en oxygène (%)"},
    {"button.silence", 1, LocalizedTextWidth::Small, "Mute", "Stumm", "Muet"},
    {"button.silence", 1, LocalizedTextWidth::Medium, "Silence alarm", "Alarm stumm", "Couper l'alarme"},
    {"button.silence", 2, LocalizedTextWidth::Small, "Mute", "Stumm", "Muet"},
    {"button.silence", 2, LocalizedTextWidth::Medium, "Silence alarm", "Alarm stumm", "Couper l'alarme"},
    {"button.silence", 2, LocalizedTextWidth::Medium, "Silence\nalarm", "Alarm\nstumm", "Couper\nl'alarme"},
    {"button.silence", 2, LocalizedTextWidth::ExtraLarge, "Silence alarm for 2 minutes",
     "Alarm für 2 Minuten stumm", "Couper l'alarme pendant 2 minutes"},
};

MdibText mdibText(const char* value, const LanguageTag& language, const char* ref, std::uint64_t version,
                  LocalizedTextWidth width) {
  return MdibText(Utf8(value), language, LocalizedTextRef(Utf8(ref)), VersionCounter(version), width);
}

}  // namespace

std::vector<MdibText> loadCatalogue() {
  std::vector<MdibText> texts;
  for (const CatalogueLine& line : catalogue) {
    texts.push_back(mdibText(line.english, english, line.ref, line.version, line.width));
    texts.push_back(mdibText(line.german, german, line.ref, line.version, line.width));
    texts.push_back(mdibText(line.french, french, line.ref, line.version, line.width));
  }
  return texts;
}

}  // namespace ZaltExamples
