#include "CatalogueTestSupport.h"

#include <Zalt/Catalogue/CatalogueIdentity.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Zalt::Catalogue::checkIdentity;
using Zalt::Catalogue::comparedForm;
using Zalt::Catalogue::Finding;
using Zalt::Catalogue::IdentityCheck;
using Zalt::Catalogue::isCatalogueIdentifier;
using Zalt::Catalogue::MdibTexts;

TEST(CatalogueIdentity, TakesUrnsOfOidsAndUuidsAlone) {
  for (const char* good :
       {"urn:oid:1.3.6.1.4.1.1234.4.1.2.1", "urn:oid:0.0", "urn:oid:2.999", "URN:OID:1.10",
        "urn:uuid:5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a44", "urn:UUID:5F0C4E2A-8D1B-4C3E-9A6F-2B7D9E1C0A44"}) {
    EXPECT_TRUE(isCatalogueIdentifier(good)) << good;
  }
  for (const char* bad : {"",
                          "urn:oid:",
                          "urn:oid:1",
                          "urn:oid:3.1",
                          "urn:oid:10.1",
                          "urn:oid:1.02",
                          "urn:oid:1..2",
                          "urn:oid:1.2.",
                          "urn:oid:.1.2",
                          "urn:oid:1.2a",
                          "urn:oid:1.-2",
                          "oid:1.2",
                          "urn:isbn:1.2",
                          " urn:oid:1.2",
                          "urn:oid:1.2 ",
                          "urn:uuid:5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a4",
                          "urn:uuid:5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a44a",
                          "urn:uuid:5f0c4e2a8d1b-4c3e-9a6f-2b7d9e1c0a44-",
                          "urn:uuid:5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a4g",
                          "urn:uuid:1.2.3"}) {
    EXPECT_FALSE(isCatalogueIdentifier(bad)) << bad;
  }
  EXPECT_EQ(comparedForm("URN:Oid:1.2.3"), "urn:oid:1.2.3");
  EXPECT_EQ(comparedForm("Urn:UUID:5F0C4E2A-8D1B-4C3E-9A6F-2B7D9E1C0A44"),
            "urn:uuid:5f0c4e2a-8d1b-4c3e-9a6f-2b7d9e1c0a44");
}

TEST(CatalogueIdentity, ReportsIdentifiersThatAreNoneAndMdssThatDisagree) {
  MdibTexts mdib;
  mdib.files = {"mdib.xml"};
  EXPECT_EQ(checkIdentity(mdib).catalogueId, std::nullopt);
  EXPECT_TRUE(checkIdentity(mdib).findings.empty());

  mdib.catalogueIds = {{"urn:oid:1.2.3", std::string("mds.a"), 0, 4, 9},
                       {"URN:OID:1.2.3", std::nullopt, 0, 8, 9},
                       {"urn:oid:1.2.4", std::string("mds.c"), 0, 12, 9},
                       {"urn:oid:01.2", std::string("mds.d"), 0, 16, 9}};
  const IdentityCheck check = checkIdentity(mdib);
  EXPECT_EQ(check.catalogueId, "urn:oid:1.2.3");
  EXPECT_EQ(check.location, (Zalt::Catalogue::SourceLocation{"mdib.xml", 4, 9}));
  EXPECT_THAT(
      check.findings,
      testing::ElementsAre(
          Finding{Finding::Kind::Identity,
                  {"mdib.xml", 12, 9},
                  "MDS 'mds.c' declares text catalogue 'urn:oid:1.2.4', where an earlier MDS declares "
                  "'urn:oid:1.2.3': one MDIB takes its texts from one catalogue"},
          Finding{Finding::Kind::Identity,
                  {"mdib.xml", 16, 9},
                  "the text catalogue identifier 'urn:oid:01.2' of MDS 'mds.d' is neither urn:oid: and an "
                  "OID nor urn:uuid: and a UUID"}));
}

}  // namespace
