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

constexpr int writers = 3;
constexpr int batchesPerWriter = 40;
const char* const languagesOfEveryBatch[] = {"de-DE", "en-US", "fr-FR"};
const LocalizedTextWidth widthsOfEveryBatch[] = {LocalizedTextWidth::Small, LocalizedTextWidth::Large};
constexpr std::size_t textsPerBatch = 6;

// One new reference in every language and two widths: consistent on its own
// and together with every other batch.
std::vector<MdibText> batch(int writer, int index) {
  const std::string ref = "w" + std::to_string(writer) + "." + std::to_string(index);
  std::vector<MdibText> texts;
  for (const char* language : languagesOfEveryBatch) {
    for (const LocalizedTextWidth width : widthsOfEveryBatch) {
      texts.emplace_back(Utf8(ref), LanguageTag(language), LocalizedTextRef(Utf8(ref)), VersionCounter(1), width);
    }
  }
  return texts;
}

TEST(DeviceStoreConcurrency, ReadersSeeWholeBatchesOnly) {
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  const auto& impl = dynamic_cast<const LocalizedTextStoreImpl&>(*store);
  std::atomic<int> writersLeft{writers};
  std::atomic<int> partialViews{0};
  std::atomic<int> reads{0};

  const auto read = [&] {
    while (writersLeft.load() > 0) {
      const auto languages = store->languages();
      if (!languages.empty() && languages.size() != std::size(languagesOfEveryBatch)) {
        ++partialViews;
      }
      std::map<std::string, std::size_t> textsPerRef;
      for (const MdibText& text : impl.localizedTexts(LocalizedTextFilter({}, boost::none, {}, {}, {}))) {
        ++textsPerRef[text.ref().get().value()];
      }
      for (const auto& entry : textsPerRef) {
        if (entry.second != textsPerBatch) {
          ++partialViews;
        }
      }
      ++reads;
    }
  };
  const auto write = [&](int writer) {
    for (int index = 0; index < batchesPerWriter; ++index) {
      store->add(batch(writer, index));
    }
    --writersLeft;
  };

  std::vector<std::thread> threads;
  threads.emplace_back(read);
  threads.emplace_back(read);
  for (int writer = 0; writer < writers; ++writer) {
    threads.emplace_back(write, writer);
  }
  for (auto& thread : threads) {
    thread.join();
  }

  EXPECT_EQ(partialViews.load(), 0);
  EXPECT_GT(reads.load(), 0);
  EXPECT_EQ(impl.localizedTexts(LocalizedTextFilter({}, boost::none, {}, {}, {})).size(),
            textsPerBatch * writers * batchesPerWriter);
}

TEST(DeviceStoreConcurrency, AFailedAddLeavesTheLockFree) {
  const auto store = LocalizedTextStore::createLocalizedTextStore();
  EXPECT_THROW(store->add({MdibText(Utf8("x"), LanguageTag("en"), LocalizedTextRef(Utf8("r")), VersionCounter(1),
                                    boost::none)}),
               Zalt::InternalConsistencyFailure);
  EXPECT_THROW(store->add({MdibText(Utf8("A"), LanguageTag("de-DE"), LocalizedTextRef(Utf8("a")), VersionCounter(1),
                                    boost::none),
                           MdibText(Utf8("B"), LanguageTag("en-US"), LocalizedTextRef(Utf8("b")), VersionCounter(1),
                                    boost::none)}),
               Zalt::InternalConsistencyFailure);

  auto later = std::async(std::launch::async, [&] {
    store->add({MdibText(Utf8("B"), LanguageTag("de-DE"), LocalizedTextRef(Utf8("b")), VersionCounter(1),
                         boost::none),
                MdibText(Utf8("A"), LanguageTag("en-US"), LocalizedTextRef(Utf8("a")), VersionCounter(1),
                         boost::none)});
    return store->languages().size();
  });
  ASSERT_EQ(later.wait_for(std::chrono::seconds(10)), std::future_status::ready);
  EXPECT_EQ(later.get(), 2U);
}

}  // namespace
