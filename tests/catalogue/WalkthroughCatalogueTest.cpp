#include "WalkthroughCatalogue.h"

#include <Zalt/Catalogue/CheckCatalogue.h>
#include <Zalt/Catalogue/ReadCatalogue.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(WalkthroughCatalogue, TheFileHoldsExactlyTheTextsThatTheWalkthroughLoads) {
  const auto read = Zalt::Catalogue::readCatalogueFile(ZALT_CATALOGUE_EXAMPLES_DIR "/walkthrough.xml");
  std::vector<Tovra::Mdib::LocalizedText> texts;
  texts.reserve(read.size());
  for (const auto& entry : read) {
    texts.push_back(entry.text);
  }
  EXPECT_EQ(texts, ZaltExamples::loadCatalogue());
  EXPECT_TRUE(Zalt::Catalogue::checkCatalogue(read).findings.empty());
}

}  // namespace
