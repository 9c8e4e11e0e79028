#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CatalogueIdRecord.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace CatalogueTestSupport;
using Zalt::Catalogue::CatalogueIdRecord;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::readCatalogueIdRecord;

std::string digestA() { return std::string(64, 'a'); }
std::string digestB() { return std::string(63, '0') + "f"; }

std::vector<Finding> problemsOf(const std::string& text) {
  return problemsReading(readCatalogueIdRecord, text, "ids.txt");
}

Finding problemAt(std::int32_t line, std::int32_t column, const std::string& message) {
  return {Finding::Kind::File, {"ids.txt", line, column}, message};
}

TEST(CatalogueIdRecord, ReadsIdentifiersWithTheirDigestsAmongCommentsAndBlankLines) {
  const std::string text = "# monitor\r\n\n  \t\nurn:oid:1.2.3 sha256:" + digestA() +
                           "\r\n\turn:uuid:" + "5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a44\t sha256:" + digestB() +
                           "  ";
  const CatalogueIdRecord record = readCatalogueIdRecord(text, "ids.txt");
  ASSERT_EQ(record.entries.size(), 2u);
  EXPECT_EQ(record.entries[1].identifier, "urn:uuid:5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a44");
  EXPECT_EQ(record.entries[1].digest, digestB());
  EXPECT_EQ(record.entries[1].line, 5);
  ASSERT_NE(record.find("URN:OID:1.2.3"), nullptr);
  EXPECT_EQ(record.find("URN:OID:1.2.3")->digest, digestA());
  EXPECT_EQ(record.find("urn:oid:1.2.3.1"), nullptr);
  EXPECT_EQ(withRecorded(record, "urn:oid:1.2.4", digestB()),
            text + "\nurn:oid:1.2.4 sha256:" + digestB() + "\n");
  EXPECT_EQ(withRecorded(CatalogueIdRecord(), "urn:oid:1.2.4", digestB()),
            "urn:oid:1.2.4 sha256:" + digestB() + "\n");
}

TEST(CatalogueIdRecord, ReportsEachMalformedLineAtItsPlace) {
  const std::string good = "urn:oid:1.2.3 sha256:" + digestA();
  EXPECT_THAT(
      problemsOf(good + "\n  urn:oid:1.02 sha256:" + digestA() + "\n" + good.substr(0, 20) + "\n" +
                 "urn:oid:1.2.4 sha256:" + std::string(64, 'A') + "\nurn:oid:1.2.5 md5:" + digestA() +
                 "\nurn:oid:1.2.6 sha256:" + digestA() + " # note\n urn:oid:1.2.3  sha256:" + digestB() +
                 "\nurn:oid:1.2.7 sha256:" + digestA().substr(1)),
      testing::ElementsAre(
          problemAt(2, 3, "'urn:oid:1.02' is not a text catalogue identifier (urn:oid: or urn:uuid:)"),
          problemAt(3, 15, "expected sha256: and 64 lowercase hexadecimal digits after the identifier"),
          problemAt(4, 15, "expected sha256: and 64 lowercase hexadecimal digits after the identifier"),
          problemAt(5, 15, "expected sha256: and 64 lowercase hexadecimal digits after the identifier"),
          problemAt(6, 87, "expected the end of the line after the digest"),
          problemAt(7, 2, "'urn:oid:1.2.3' is recorded already on line 1"),
          problemAt(8, 15, "expected sha256: and 64 lowercase hexadecimal digits after the identifier")));
}

TEST(CatalogueIdRecord, TakesAFileThatIsNotThereForAnEmptyRecord) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "zalt-catalogue-ids-test.txt";
  std::filesystem::remove(path);
  EXPECT_TRUE(Zalt::Catalogue::readCatalogueIdRecordFile(path.string()).entries.empty());
  std::ofstream(path) << "urn:oid:1.2 sha256:" << digestA() << '\n';
  EXPECT_EQ(Zalt::Catalogue::readCatalogueIdRecordFile(path.string()).entries.at(0).line, 1);
  std::filesystem::remove(path);
  EXPECT_THAT(problemsReading(
                  [](const std::string&, const std::string& name) {
                    return Zalt::Catalogue::readCatalogueIdRecordFile(name);
                  },
                  "", std::filesystem::temp_directory_path().string()),
              testing::ElementsAre(testing::Field(&Finding::kind, Finding::Kind::File)));
}

}  // namespace
