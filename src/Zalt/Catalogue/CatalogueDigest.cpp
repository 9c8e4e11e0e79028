#include <Zalt/Catalogue/CatalogueDigest.h>

#include <Zalt/Localization/NumberOfLines.h>
#include <Zalt/Localization/Private/Common/LineBreakRule.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <nettle/sha2.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace {

using MdibText = Tovra::Mdib::LocalizedText;

// Numbers the distinct strings met, then ranks them byte-wise, as the store
// orders references and languages. Texts come grouped by reference as a
// rule, so the string met last is tried before the table.
class StringRanks {
public:
  // The id of `string`: its place among the distinct strings in the order first met.
  std::uint32_t idOf(std::string_view string) {
    if (m_strings.empty() || m_strings[m_lastId] != string) {
      m_lastId = m_ids.try_emplace(string, static_cast<std::uint32_t>(m_strings.size())).first->second;
      if (m_lastId == m_strings.size()) {
        m_strings.push_back(string);
      }
    }
    return m_lastId;
  }

  // The rank of each string, by its id.
  std::vector<std::uint32_t> ranks() const {
    std::vector<std::uint32_t> byRank(m_strings.size());
    std::iota(byRank.begin(), byRank.end(), 0U);
    std::sort(byRank.begin(), byRank.end(),
              [this](std::uint32_t lhs, std::uint32_t rhs) { return m_strings[lhs] < m_strings[rhs]; });
    std::vector<std::uint32_t> rankOf(m_strings.size());
    for (std::uint32_t rank = 0; rank < byRank.size(); ++rank) {
      rankOf[byRank[rank]] = rank;
    }
    return rankOf;
  }

private:
  std::unordered_map<std::string_view, std::uint32_t> m_ids;
  std::vector<std::string_view> m_strings;
  std::uint32_t m_lastId = 0;
};

// A kept text with its store key as numbers, so that sorting compares
// integers instead of reaching into every text's strings, and moves no text.
// The fields run in the order of the store's key and each ascends as the
// store's order does: age is the version counted down, an absent width is
// below every width.
struct KeptText {
  const MdibText* text;
  std::uint32_t ref;
  std::uint32_t language;
  std::uint64_t age;
  std::int64_t width;
  Localization::NumberOfLines lines;
};

bool operator<(const KeptText& lhs, const KeptText& rhs) {
  return std::tie(lhs.ref, lhs.language, lhs.age, lhs.width, lhs.lines) <
         std::tie(rhs.ref, rhs.language, rhs.age, rhs.width, rhs.lines);
}

// Kept texts are valid UTF-8, and most are one line of characters that no
// break begins with: those need no decoding.
Localization::NumberOfLines numberOfLines(const Tovra::Locale::Utf8& text) {
  const std::string& bytes = text.value();
  const bool oneLine = std::none_of(bytes.begin(), bytes.end(), [](char byte) {
    return Localization::Impl::LineBreakRule::mayBeginBreak(static_cast<unsigned char>(byte));
  });
  return oneLine ? 1 : Localization::Impl::numberOfLineBreaks(text) + 1;
}

KeptText keyed(const MdibText& text, StringRanks& refs, StringRanks& languages) {
  const auto& width = text.textWidth();
  return {&text,
          refs.idOf(text.ref().get().value()),
          languages.idOf(text.lang()->tag()),
          std::numeric_limits<std::uint64_t>::max() - text.version()->get(),
          width ? static_cast<std::int64_t>(*width) : std::numeric_limits<std::int64_t>::min(),
          numberOfLines(text.text())};
}

std::vector<KeptText> inStoreOrder(const Catalogue& catalogue, const CatalogueCheck& check) {
  StringRanks refs;
  StringRanks languages;
  std::vector<KeptText> kept;
  kept.reserve(check.kept.size());
  for (const std::size_t index : check.kept) {
    kept.push_back(keyed(catalogue.texts[index].text, refs, languages));
  }
  const std::vector<std::uint32_t> refRanks = refs.ranks();
  const std::vector<std::uint32_t> languageRanks = languages.ranks();
  for (KeptText& each : kept) {
    each.ref = refRanks[each.ref];
    each.language = languageRanks[each.language];
  }
  std::sort(kept.begin(), kept.end());
  return kept;
}

// SHA-256 fed in blocks of many fields: a call per field would cost more than
// hashing the few bytes of most fields.
class Sha256 {
public:
  Sha256() { sha256_init(&m_context); }

  void add(std::string_view bytes) {
    while (!bytes.empty()) {
      const std::size_t taken = std::min(bytes.size(), m_pending.size() - m_used);
      std::memcpy(m_pending.data() + m_used, bytes.data(), taken);
      m_used += taken;
      bytes.remove_prefix(taken);
      if (m_used == m_pending.size()) {
        flush();
      }
    }
  }

  // The low `size` bytes of `value`, most significant first.
  void addBigEndian(std::uint64_t value, std::size_t size) {
    std::array<char, sizeof value> bytes{};
    for (std::size_t i = 0; i < size; ++i) {
      bytes[i] = static_cast<char>(value >> (8U * (size - 1 - i)));
    }
    add({bytes.data(), size});
  }

  // A length before the bytes keeps adjacent fields from running into each other.
  void addField(std::string_view bytes) {
    addBigEndian(bytes.size(), 8);
    add(bytes);
  }

  std::string hexDigest() {
    flush();
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&m_context, digest.size(), digest.data());
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * digest.size());
    for (const std::uint8_t byte : digest) {
      hex += digits[byte >> 4U];
      hex += digits[byte & 0x0FU];
    }
    return hex;
  }

private:
  void flush() {
    sha256_update(&m_context, m_used, m_pending.data());
    m_used = 0;
  }

  sha256_ctx m_context{};
  std::vector<std::uint8_t> m_pending = std::vector<std::uint8_t>(std::size_t{64} * 1024);
  std::size_t m_used = 0;
};

void addText(Sha256& sha, const KeptText& kept) {
  const MdibText& text = *kept.text;
  sha.addField(text.ref().get().value());
  sha.addField(text.lang()->tag());
  sha.addBigEndian(text.version()->get(), 8);
  if (const auto& width = text.textWidth()) {
    sha.addBigEndian(1, 1);
    sha.addBigEndian(static_cast<std::uint32_t>(*width), 4);
  } else {
    sha.addBigEndian(0, 1);
  }
  sha.addBigEndian(kept.lines, 4);
  sha.addField(text.text().value());
}

}  // namespace

std::string catalogueDigest(const Catalogue& catalogue, const CatalogueCheck& check) {
  Sha256 sha;
  for (const KeptText& kept : inStoreOrder(catalogue, check)) {
    addText(sha, kept);
  }
  return sha.hexDigest();
}

}  // namespace Catalogue
}  // namespace Zalt
