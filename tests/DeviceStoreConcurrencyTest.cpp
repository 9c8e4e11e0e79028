// Runs under ThreadSanitizer in CI. text() is left out on purpose: it takes no
// lock and must not overlap an add.
#include "TestSupport.h"

#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace TestSupport;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;

namespace {

// One new reference in every language and two widths: consistent with every other batch.
std::vector<MdibText> batch(const std::string& name) {
  std::vector<MdibText> texts;
  for (const char* language : {"de-DE", "en-US", "fr-FR"}) {
    texts.push_back(mdib(name, language, 1, sm));
    texts.push_back(mdib(name, language, 1, lg));
  }
  return texts;
}

TEST(DeviceStoreConcurrency, ReadersSeeWholeBatchesOnly) {
  constexpr int writers = 3;
  constexpr int batchesPerWriter = 40;
  const std::size_t batchSize = batch("").size();
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  const auto& impl = dynamic_cast<const LocalizedTextStoreImpl&>(*store);
  std::atomic<int> writersLeft{writers};
  std::atomic<int> partialViews{0};

  // Every batch brings its own reference, so a view within a batch holds part of
  // one; the first batch brings every language.
  const auto read = [&] {
    while (writersLeft.load() > 0) {
      const std::size_t languages = store->languages().size();
      partialViews += impl.localizedTexts(filter()).size() % batchSize != 0 || languages % 3 != 0 ? 1 : 0;
    }
  };
  std::vector<std::thread> threads;
  threads.emplace_back(read);
  threads.emplace_back(read);
  for (int writer = 0; writer < writers; ++writer) {
    threads.emplace_back([&, writer] {
      for (int index = 0; index < batchesPerWriter; ++index) {
        store->add(batch("w" + std::to_string(writer) + "." + std::to_string(index)));
      }
      --writersLeft;
    });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(partialViews.load(), 0);
  EXPECT_EQ(impl.localizedTexts(filter()).size(), batchSize * writers * batchesPerWriter);
}

}  // namespace
