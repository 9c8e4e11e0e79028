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
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace {

using MdibText = Tovra::Mdib::LocalizedText;

// Kept texts are valid UTF-8, and most are one line of characters that no
// break begins with: those need no decoding.
Localization::NumberOfLines numberOfLines(const Tovra::Locale::Utf8& text) {
  const std::string& bytes = text.value();
  const bool oneLine = std::none_of(bytes.begin(), bytes.end(), [](char byte) {
    return Localization::Impl::LineBreakRule::mayBeginBreak(static_cast<unsigned char>(byte));
  });
  return oneLine ? 1 : Localization::Impl::numberOfLineBreaks(text) + 1;
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

void addText(Sha256& sha, const MdibText& text) {
  sha.addField(text.ref().get().value());
  sha.addField(text.lang()->tag());
  sha.addBigEndian(text.version()->get(), 8);
  if (const auto& width = text.textWidth()) {
    sha.addBigEndian(1, 1);
    sha.addBigEndian(static_cast<std::uint32_t>(*width), 4);
  } else {
    sha.addBigEndian(0, 1);
  }
  sha.addBigEndian(numberOfLines(text.text()), 4);
  sha.addField(text.text().value());
}

}  // namespace

std::string catalogueDigest(const Catalogue& catalogue, const CatalogueCheck& check) {
  Sha256 sha;
  for (const std::size_t index : check.keyOrder) {
    addText(sha, catalogue.texts[index].text);
  }
  return sha.hexDigest();
}

}  // namespace Catalogue
}  // namespace Zalt
