// The device store checks the languages after each add only where the add
// changed the table. These tests hold it to the check of the whole table: the
// same random batches go to a device store and to a core table that runs the
// whole check after every call, and every outcome must agree.
#include <Zalt/Errors/InternalConsistencyFailure.h>
#include <Zalt/Localization/Private/Common/LocalizedTextStore.h>
#include <Zalt/Localization/ZaltOnly/Device/LocalizedTextStoreImpl.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
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

const std::vector<std::string>& refs() {
  static const std::vector<std::string> all{"d", "b", "f", "a", "e", "c"};
  return all;
}

const std::vector<std::string>& languages() {
  static const std::vector<std::string> all{"de-DE", "en-US", "fr-FR"};
  return all;
}

const std::vector<std::uint64_t>& versions() {
  static const std::vector<std::uint64_t> all{1, 2, 3};
  return all;
}

// How a call ended: the exception's type, message and throw site, or "".
struct Outcome {
  std::string type;
  std::string message;
  std::string file;
  int line = 0;

  bool operator==(const Outcome& other) const {
    return type == other.type && message == other.message && file == other.file && line == other.line;
  }
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << (outcome.type.empty() ? "no exception" : outcome.type) << " \"" << outcome.message << "\" at "
             << outcome.file << ":" << outcome.line;
}

template <typename Call>
Outcome outcomeOf(Call call) {
  try {
    call();
  } catch (const Zalt::InternalConsistencyFailure& failure) {
    return {"InternalConsistencyFailure", failure.what(), failure.file(), failure.line()};
  } catch (const std::out_of_range& error) {
    return {"out_of_range", error.what(), "", 0};
  }
  return {};
}

// A text that the device store rejects before filing it.
bool isRejected(const MdibText& text) {
  return !text.lang() || !text.version() || text.ref().get().empty() ||
         !text.lang()->is2LetterLangAnd2LetterCountry();
}

// The device store's behaviour with the whole check after every call, built
// on the core table. A rejected text ends the call as it ends a call of its
// own on a new device store.
class WholeCheckStore {
public:
  Outcome add(const std::vector<MdibText>& texts) {
    for (const MdibText& text : texts) {
      if (isRejected(text)) {
        return outcomeOf([&text] { LocalizedTextStore::createLocalizedTextStore()->add({text}); });
      }
      m_languages.insert(text.lang()->tag());
      Outcome filed = outcomeOf([this, &text] { m_table.insert(text); });
      if (!(filed == Outcome())) {
        return filed;
      }
    }
    return outcomeOf([this] { m_table.checkConsistency(); });
  }

  const Zalt::Localization::Impl::LocalizedTextStore& table() const { return m_table; }
  const std::set<std::string>& languages() const { return m_languages; }

private:
  Zalt::Localization::Impl::LocalizedTextStore m_table;
  std::set<std::string> m_languages;
};

class RandomBatches {
public:
  explicit RandomBatches(unsigned seed) : m_random(seed) {}

  // Mostly a reference and version or two, in most or all languages, so that
  // the table keeps coming back to consistent; now and then a text that the
  // store rejects or cannot count the lines of.
  std::vector<MdibText> next() {
    std::vector<MdibText> batch;
    for (int block = draw(2); block >= 0; --block) {
      const std::string& ref = pick(refs());
      const std::uint64_t version = pick(versions());
      for (const std::string& language : languages()) {
        for (int variant = chance(5) ? -1 : draw(2); variant >= 0; --variant) {
          batch.push_back(text(ref, language, version));
        }
      }
    }
    if (chance(8)) {
      batch.insert(batch.begin() + draw(static_cast<int>(batch.size())), faulty());
    }
    return batch;
  }

private:
  MdibText text(const std::string& ref, const std::string& language, std::uint64_t version) {
    static const std::vector<std::string> values{"Herz", "Herz\nfrequenz", "Herzfrequenz über Grenze"};
    const int width = draw(3);
    return MdibText(Utf8(pick(values)), LanguageTag(language), LocalizedTextRef(Utf8(ref)),
                    VersionCounter(version),
                    width == 0 ? boost::none : boost::make_optional(static_cast<LocalizedTextWidth>(width)));
  }

  MdibText faulty() {
    MdibText good = text(pick(refs()), pick(languages()), pick(versions()));
    switch (draw(5)) {
      case 0:
        return MdibText(good.text(), boost::none, good.ref(), good.version(), good.textWidth());
      case 1:
        return MdibText(good.text(), good.lang(), good.ref(), boost::none, good.textWidth());
      case 2:
        return MdibText(good.text(), good.lang(), LocalizedTextRef(Utf8("")), good.version(),
                        good.textWidth());
      case 3:
        return MdibText(good.text(), LanguageTag("en"), good.ref(), good.version(), good.textWidth());
      default:
        return MdibText(Utf8("a\x80"), good.lang(), good.ref(), good.version(), good.textWidth());
    }
  }

  int draw(int bound) { return std::uniform_int_distribution<int>(0, bound)(m_random); }
  bool chance(int oneIn) { return draw(oneIn - 1) == 0; }
  template <typename T>
  const T& pick(const std::vector<T>& from) {
    return from[static_cast<std::size_t>(draw(static_cast<int>(from.size()) - 1))];
  }

  std::mt19937 m_random;
};

void expectSameContent(const LocalizedTextStoreImpl& store, const WholeCheckStore& expected) {
  for (const std::string& ref : refs()) {
    for (const std::uint64_t version : versions()) {
      const LocalizedTextFilter filter({LocalizedTextRef(Utf8(ref))}, VersionCounter(version), {}, {}, {});
      ASSERT_EQ(store.localizedTexts(filter), expected.table().texts(filter))
          << ref << " version " << version;
    }
  }
  std::vector<std::string> tags;
  for (const LanguageTag& language : store.languages()) {
    tags.push_back(language.tag());
  }
  ASSERT_EQ(tags, std::vector<std::string>(expected.languages().begin(), expected.languages().end()));
}

TEST(BatchedAddAgreement, EveryCallEndsAsWithTheWholeCheckAndStoresTheSameTexts) {
  RandomBatches batches(20240611);
  int inconsistent = 0;
  int rejected = 0;
  for (int sequence = 0; sequence < 300; ++sequence) {
    const std::shared_ptr<LocalizedTextStore> created = LocalizedTextStore::createLocalizedTextStore();
    auto& store = dynamic_cast<LocalizedTextStoreImpl&>(*created);
    WholeCheckStore expected;
    for (int call = 0; call < 25; ++call) {
      std::vector<MdibText> batch = batches.next();
      const Outcome wanted = expected.add(batch);
      const Outcome got = outcomeOf([&store, &batch, call] {
        if (call % 3 == 0) {
          store.add(std::move(batch));
        } else if (call % 3 == 1) {
          store.add(static_cast<const std::vector<MdibText>&>(batch));
        } else {
          store.addMany(batch);
        }
      });
      ASSERT_EQ(got, wanted) << "sequence " << sequence << ", call " << call;
      const bool failedCheck = wanted.message.find("inconsistent") != std::string::npos;
      inconsistent += failedCheck ? 1 : 0;
      rejected += !wanted.type.empty() && !failedCheck ? 1 : 0;
      ASSERT_NO_FATAL_FAILURE(expectSameContent(store, expected));
    }
  }
  // The sequences must exercise both ways a call fails, not only success.
  EXPECT_GT(inconsistent, 1000);
  EXPECT_GT(rejected, 300);
}

}  // namespace
