// The device store checks the languages after each add only where the add
// changed the table. This test holds it to the check of the whole table: the
// same random batches go to a device store and to a core table that runs the
// whole check after every call, and every outcome must agree.
#include "TestSupport.h"

#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

using namespace TestSupport;
using Zalt::Localization::Device::LocalizedTextStore;
using Zalt::Localization::Device::LocalizedTextStoreImpl;

namespace {

constexpr const char* refs[] = {"d", "b", "f", "a", "e", "c"};
constexpr const char* languages[] = {"de-DE", "en-US", "fr-FR"};
constexpr std::uint64_t versions[] = {1, 2, 3};
constexpr const char* values[] = {"Herz", "Herz\nfrequenz", "Herzfrequenz über Grenze"};

// How a call ended: the exception's message and throw site, or "".
template <typename Call>
std::string outcomeOf(const Call& call) {
  try {
    call();
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    return std::string(failure.what()) + " at " + failure.file() + ":" + std::to_string(failure.line());
  } catch (const std::out_of_range& error) {
    return error.what();
  }
  return "";
}

// The device store's behaviour with the whole check after every call, built on
// the core table. A text without a version ends the call as it ends a call of
// its own on a new device store.
class WholeCheckStore {
public:
  std::string add(const std::vector<MdibText>& texts) {
    for (const MdibText& text : texts) {
      if (!text.version()) {
        return outcomeOf([&text] { LocalizedTextStore::createLocalizedTextStore()->add({text}); });
      }
      if (std::string filed = outcomeOf([this, &text] { table.insert(text); }); !filed.empty()) {
        return filed;
      }
    }
    return outcomeOf([this] { table.checkConsistency(); });
  }

  Zalt::Localization::Impl::LocalizedTextStore table;
};

// Mostly a reference and version or two, in most or all languages, so that the
// table keeps coming back to consistent; now and then a text that ends the call
// before its check, rejected or with malformed UTF-8.
class RandomBatches {
public:
  std::vector<MdibText> next() {
    std::vector<MdibText> batch;
    for (int block = draw(2); block >= 0; --block) {
      const char* ref = pick(refs);
      const std::uint64_t version = pick(versions);
      for (const char* language : languages) {
        for (int variant = draw(4) == 0 ? -1 : draw(2); variant >= 0; --variant) {
          const int width = draw(3);
          batch.push_back(mdib(ref, language, version,
                               Width(width != 0, static_cast<LocalizedTextWidth>(width)), 1, pick(values)));
        }
      }
    }
    if (draw(7) == 0) {
      const MdibText good = mdib(pick(refs), pick(languages), pick(versions));
      const bool malformed = draw(1) == 0;
      batch.insert(batch.begin() + draw(static_cast<int>(batch.size())),
                   MdibText(Utf8(malformed ? "a\x80" : "x"), good.lang(), good.ref(),
                            malformed ? good.version() : boost::none, good.textWidth()));
    }
    return batch;
  }

private:
  int draw(int bound) { return std::uniform_int_distribution<int>(0, bound)(m_random); }
  template <typename T, std::size_t size>
  const T& pick(const T (&from)[size]) {
    return from[static_cast<std::size_t>(draw(static_cast<int>(size) - 1))];
  }

  std::mt19937 m_random{20240611};
};

TEST(BatchedAddAgreement, EveryCallEndsAsWithTheWholeCheckAndStoresTheSameTexts) {
  RandomBatches batches;
  int inconsistent = 0;
  int endedEarly = 0;
  for (int sequence = 0; sequence < 300; ++sequence) {
    const std::shared_ptr<LocalizedTextStore> created = LocalizedTextStore::createLocalizedTextStore();
    auto& store = dynamic_cast<LocalizedTextStoreImpl&>(*created);
    WholeCheckStore expected;
    for (int call = 0; call < 25; ++call) {
      std::vector<MdibText> batch = batches.next();
      const std::string wanted = expected.add(batch);
      const std::string got = outcomeOf([&store, &batch, call] {
        if (call % 3 == 0) {
          store.add(std::move(batch));
        } else if (call % 3 == 1) {
          store.add(static_cast<const std::vector<MdibText>&>(batch));
        } else {
          store.addMany(batch);
        }
      });
      ASSERT_EQ(got, wanted) << "sequence " << sequence << ", call " << call;
      const bool failedCheck = wanted.find("inconsistent") != std::string::npos;
      inconsistent += failedCheck ? 1 : 0;
      endedEarly += !wanted.empty() && !failedCheck ? 1 : 0;
      for (const char* ref : refs) {
        for (const std::uint64_t version : versions) {
          ASSERT_EQ(store.localizedTexts(filter({LocalizedTextRef(Utf8(ref))}, version)),
                    expected.table.texts(filter({LocalizedTextRef(Utf8(ref))}, version)))
              << "sequence " << sequence << ", call " << call << ", " << ref << " version " << version;
        }
      }
    }
  }
  // The sequences must exercise both ways a call fails, not only success.
  EXPECT_GT(inconsistent, 1000);
  EXPECT_GT(endedEarly, 300);
}

}  // namespace
