#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CatalogueDigest.h>
#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using Zalt::Catalogue::Catalogue;

std::string document(const std::string& body) {
  return "<c xmlns='" + CatalogueTestSupport::participant() + "'>" + body + "</c>";
}

std::string text(const std::string& ref, const std::string& lang, const std::string& content,
                 const std::string& more = "") {
  return "<LocalizedText Ref='" + ref + "' Lang='" + lang + "' Version='1' " + more + ">" + content +
         "</LocalizedText>";
}

// UTF-16LE with a byte-order mark, for the code points below U+0800 that these texts use.
std::string utf16(const std::string& utf8) {
  std::string bytes = "\xFF\xFE";
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    auto unit = static_cast<unsigned char>(utf8[i]);
    unsigned int codePoint = unit;
    if (unit >= 0xC0) {
      codePoint = (unit & 0x1FU) << 6U | (static_cast<unsigned char>(utf8[++i]) & 0x3FU);
    }
    bytes += static_cast<char>(codePoint & 0xFFU);
    bytes += static_cast<char>(codePoint >> 8U);
  }
  return bytes;
}

std::string digestOf(const std::vector<std::pair<std::string, std::string>>& files) {
  Catalogue catalogue;
  for (const auto& [name, content] : files) {
    catalogue.append(Zalt::Catalogue::readCatalogue(content, name));
  }
  return Zalt::Catalogue::catalogueDigest(catalogue, Zalt::Catalogue::checkCatalogue(catalogue));
}

TEST(CatalogueDigest, DependsOnlyOnTheKeptTexts) {
  const std::string alarmDe = text("alarm", "de-DE", "Herzfrequenz\nzu hoch", "TextWidth='s'");
  const std::string alarmEn = text("alarm", "en-US", "Heart rate\ntoo high", "TextWidth='s'");
  const std::string pauseDe = text("pause", "de-DE", "Pause für 2 Minuten");
  const std::string pauseEn = text("pause", "en-US", "Paused for 2 minutes");
  const std::string digest = digestOf({{"all.xml", document(alarmDe + alarmEn + pauseDe + pauseEn)}});
  EXPECT_EQ(digestOf({{"en.xml", document("\n  " + pauseEn + "\n  <!-- alarms -->\n  " + alarmEn + "\n")},
                      {"de.xml", utf16("<?xml version='1.0' encoding='UTF-16'?>" +
                                       document(pauseDe + "<![CDATA[]]>" + alarmDe))}}),
            digest);
  // The store keeps the first text of a key and drops any later one.
  EXPECT_EQ(digestOf({{"all.xml", document(alarmDe + alarmEn + pauseDe + pauseEn +
                                           text("pause", "en-US", "Paused (duplicate)"))}}),
            digest);

  const std::vector<std::string> changed = {
      document(alarmDe + alarmEn + pauseDe + text("pause", "en-US", "Paused for 3 minutes")),
      document(alarmDe + text("alarm", "en-US", "Heart rate\ntoo high", "TextWidth='m'") + pauseDe + pauseEn),
      document(alarmDe + alarmEn + pauseDe +
               text("pause", "en-US", "Paused for 2 minutes", "TextWidth='xs'")),
      document(alarmDe + alarmEn + pauseDe + pauseEn +
               "<LocalizedText Ref='pause' Lang='de-DE' Version='2'>Pause</LocalizedText>"
               "<LocalizedText Ref='pause' Lang='en-US' Version='2'>Paused</LocalizedText>"),
      document(alarmDe + alarmEn + pauseDe + pauseEn + text("mute", "de-DE", "Stumm") +
               text("mute", "en-US", "Muted")),
      document(alarmDe + alarmEn + pauseDe + pauseEn + text("alarm", "fr-FR", "Fréquence cardiaque") +
               text("pause", "fr-FR", "Pause")),
  };
  std::set<std::string> digests = {digest};
  for (const std::string& each : changed) {
    EXPECT_TRUE(digests.insert(digestOf({{"all.xml", each}})).second) << each;
  }
}

// The second digest was checked with sha256sum over the documented layout of
// "a" "de-DE" v2 without width "Neu", the same with ExtraSmall, "a" "de-DE" v1
// Small "Zwei\nZeilen" (2 lines), then "b" "en-US" v2 without width "Hi"; the
// third over "a" "de-DE" v1 without width, 1 line, 100,000 times "x"; the
// fourth over "a" "de-DE" v1 without width "Zwei" U+2028 "Zeilen" (2 lines),
// then "b" "de-DE" v1 without width "Eine" U+00A0 "Zeile" (1 line).
TEST(CatalogueDigest, IsSha256OverTheDocumentedLayout) {
  EXPECT_EQ(digestOf({}), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(
      digestOf({{"c.xml", document("<LocalizedText Ref='b' Lang='en-US' Version='2'>Hi</LocalizedText>" +
                                   text("a", "de-DE", "Zwei\nZeilen", "TextWidth='s'") +
                                   "<LocalizedText Ref='a' Lang='de-DE' Version='2' TextWidth='xs'>Neu"
                                   "</LocalizedText><LocalizedText Ref='a' Lang='de-DE' Version='2'>Neu"
                                   "</LocalizedText>")}}),
      "f07ca7462af15124d5a733ff548268afde8fd1ec294aefeace140166b3dee187");
  // A break of more than one byte, and a character that begins as one does.
  EXPECT_EQ(digestOf({{"c.xml", document(text("a", "de-DE", "Zwei\u2028Zeilen") +
                                         text("b", "de-DE", "Eine\u00A0Zeile"))}}),
            "9e27d75b639bc897677de73c6cb2e3ce75e2c045cc11d6b02bee472cc969d30d");
  // Longer than the blocks in which the digest is fed.
  EXPECT_EQ(digestOf({{"c.xml", document(text("a", "de-DE", std::string(100000, 'x')))}}),
            "1584152923ece0d5318212581c55061bd6ddef30a8dfab1b97bb5d5f8d6a43f7");
}

}  // namespace
