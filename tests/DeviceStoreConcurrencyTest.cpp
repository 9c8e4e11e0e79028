// Runs under ThreadSanitizer in CI. text() is left out on purpose: it takes no
// lock and must not overlap an add.
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;
using Tovra::Mdib::LocalizedTextRef;
using Tovra::Mdib::LocalizedTextWidth;
using Tovra::Mdib::VersionCounter;
using Zalt::Localization::LocalizedTextFilter;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;
using MdibText = Tovra::Mdib::LocalizedText;

const std::vector<std::string> batchLanguages{"de-DE", "en-US", "fr-FR"};
const std::vector<LocalizedTextWidth> batchWidths{LocalizedTextWidth::Small, LocalizedTextWidth::Large};

// One new reference in every language and both widths: consistent with every other batch.
std::vector<MdibText> batch(const std::string& ref,
                            const std::vector<std::string>& languages = batchLanguages) {
  std::vector<MdibText> texts;
  for (const std::string& language : languages) {
    for (const LocalizedTextWidth width : batchWidths) {
      texts.emplace_back(Utf8(ref), LanguageTag(language), LocalizedTextRef(Utf8(ref)), VersionCounter(1),
                         width);
    }
  }
  return texts;
}

std::vector<MdibText> everything(const LocalizedTextStoreImpl& store) {
  return store.localizedTexts(LocalizedTextFilter({}, boost::none, {}, {}, {}));
}

TEST(DeviceStoreConcurrency, ReadersSeeWholeBatchesOnly) {
  constexpr int writers = 3;
  constexpr int batchesPerWriter = 40;
  const std::size_t batchSize = batchLanguages.size() * batchWidths.size();
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  const auto& impl = dynamic_cast<const LocalizedTextStoreImpl&>(*store);
  std::atomic<int> writersLeft{writers};
  std::atomic<int> partialViews{0};

  const auto read = [&] {
    while (writersLeft.load() > 0) {
      const auto languages = store->languages().size();
      partialViews += (languages != 0 && languages != batchLanguages.size()) ? 1 : 0;
      std::map<std::string, std::size_t> textsPerRef;
      for (const MdibText& text : everything(impl)) {
        ++textsPerRef[text.ref().get().value()];
      }
      for (const auto& entry : textsPerRef) {
        partialViews += entry.second != batchSize ? 1 : 0;
      }
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
  EXPECT_EQ(everything(impl).size(), batchSize * writers * batchesPerWriter);
}

TEST(DeviceStoreConcurrency, AFailedAddLeavesTheLockFree) {
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  EXPECT_THROW(store->add(batch("a", {"de-DE", "en"})), Zalt::InternalConsistencyFailure);
  EXPECT_THROW(store->add(batch("b", {"de-DE", "en-US"})),
               Zalt::InternalConsistencyFailure);  // "a" lacks en-US

  auto later = std::async(std::launch::async, [&] {
    store->add(batch("a", {"en-US"}));
    return store->languages().size();
  });
  ASSERT_EQ(later.wait_for(std::chrono::seconds(10)), std::future_status::ready);
  EXPECT_EQ(later.get(), 2U);
}

}  // namespace
