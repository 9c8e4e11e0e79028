#include "WalkthroughCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(WalkthroughCatalogue, TheFileHoldsExactlyTheTextsThatTheWalkthroughLoads) {
  const auto read = Zalt::Catalogue::readCatalogueFile(ZALT_CATALOGUE_EXAMPLES_DIR "/walkthrough.xml");
  EXPECT_EQ(Zalt::Catalogue::mdibTexts(read.texts), ZaltExamples::loadCatalogue());
  EXPECT_TRUE(Zalt::Catalogue::checkCatalogue(read).findings.empty());
}

}  // namespace
