#include <Zalt/Catalogue/CatalogueDigest.h>

#include <Zalt/Localization/Private/Common/LocalizedTextStoreKeyView.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <nettle/sha2.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {
namespace {

using Localization::Impl::LocalizedTextStoreKeyView;
using MdibText = Tovra::Mdib::LocalizedText;

// A kept text and its number of lines, counted once: with the text itself
// that is its store key, so sorting moves no text and no copy of a key.
struct KeptText {
  const MdibText* text;
  Localization::NumberOfLines lines;
};

LocalizedTextStoreKeyView keyOf(const KeptText& kept) {
  const MdibText& text = *kept.text;
  return {text.ref().get().value(), text.lang()->tag(), *text.version(), text.textWidth(), kept.lines};
}

std::vector<KeptText> inStoreOrder(const Catalogue& catalogue, const CatalogueCheck& check) {
  std::vector<KeptText> kept;
  kept.reserve(check.kept.size());
  for (const std::size_t index : check.kept) {
    const MdibText& text = catalogue.texts[index].text;
    kept.push_back({&text, Localization::Impl::numberOfLineBreaks(text.text()) + 1});
  }
  std::sort(kept.begin(), kept.end(), [](const KeptText& lhs, const KeptText& rhs) {
    return Localization::Impl::compare(keyOf(lhs), keyOf(rhs)) < 0;
  });
  return kept;
}

class Sha256 {
public:
  Sha256() { sha256_init(&m_context); }

  void add(std::string_view bytes) {
    sha256_update(&m_context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  }

  // The low `size` bytes of `value`, most significant first.
  void addBigEndian(std::uint64_t value, std::size_t size) {
    std::array<std::uint8_t, sizeof value> bytes{};
    for (std::size_t i = 0; i < size; ++i) {
      bytes[i] = static_cast<std::uint8_t>(value >> (8U * (size - 1 - i)));
    }
    sha256_update(&m_context, size, bytes.data());
  }

  // A length before the bytes keeps adjacent fields from running into each other.
  void addField(std::string_view bytes) {
    addBigEndian(bytes.size(), 8);
    add(bytes);
  }

  std::string hexDigest() {
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
  sha256_ctx m_context{};
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
