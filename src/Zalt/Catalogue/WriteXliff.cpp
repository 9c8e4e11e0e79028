#include <Zalt/Catalogue/WriteXliff.h>
#include <Zalt/Catalogue/XmlNamespaces.h>

#include <Zalt/Catalogue/Private/XliffUnitId.h>
#include <Zalt/Catalogue/Private/XmlWriting.h>
#include <Zalt/Catalogue/TextMeasure.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <array>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <unordered_map>

namespace Zalt {
namespace Catalogue {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextWidth;

// The key under which the store files a kept text, but for its language.
struct TextKey {
  std::string_view ref;
  std::uint64_t version;
  boost::optional<LocalizedTextWidth> width;
  std::uint32_t lines;

  bool operator==(const TextKey& other) const {
    return ref == other.ref && version == other.version && width == other.width && lines == other.lines;
  }
};

// Texts of one reference differ in the rest of the key, which the hash mixes in.
struct TextKeyHash {
  std::size_t operator()(const TextKey& key) const {
    const std::size_t rest = key.version * 64 + std::size_t{key.lines} * 8 +
                             (key.width ? 1 + static_cast<std::size_t>(*key.width) : 0);
    return std::hash<std::string_view>()(key.ref) ^ (rest * 0x9E3779B97F4A7C15U);
  }
};

struct KeyedText {
  const LocalizedText* text;
  TextKey key;
};

KeyedText keyed(const LocalizedText& text) {
  return {&text,
          {text.ref().get().value(), text.version()->get(), text.textWidth(),
           Localization::Impl::numberOfLineBreaks(text.text()) + 1}};
}

void requireStoreLanguage(const LanguageTag& language, const char* role) {
  if (!language.is2LetterLangAnd2LetterCountry()) {
    throw std::invalid_argument(std::string("the ") + role + " language '" + language.tag() +
                                "' is not a language of the store (ll-CC)");
  }
}

// The characters that translation tools count in a line of `width`: in
// fullwidth units a wide character takes the room of two narrow ones, which
// the tools count as characters. None for a text without a width or of xxl.
boost::optional<std::uint32_t> charactersPerLine(const boost::optional<LocalizedTextWidth>& width,
                                                 WidthUnit unit) {
  const auto limit = width ? widthLimit(*width) : boost::none;
  const std::uint32_t perUnit = unit == WidthUnit::Fullwidth ? 2 : 1;
  return limit ? boost::optional<std::uint32_t>(perUnit * *limit) : boost::none;
}

// Tools apply maxwidth to the whole target, line breaks included.
std::uint32_t maxWidth(std::uint32_t perLine, std::uint32_t lines) { return lines * perLine + lines - 1; }

// The width part of each unit's note, by width, and none for a text without one.
class WidthNotes {
public:
  explicit WidthNotes(WidthUnit unit) {
    for (const auto& token : textWidthTokens()) {
      std::ostringstream note;
      note << "Width " << token.first << " (" << token.second << "): ";
      if (const auto limit = charactersPerLine(token.second, unit)) {
        note << "at most " << *limit
             << (unit == WidthUnit::Fullwidth ? " narrow characters a line, a wide one counting as two. "
                                              : " characters a line, a wide one counting as one. ");
      } else {
        note << "no limit to a line. ";
      }
      m_notes.at(static_cast<std::size_t>(token.second)) = note.str();
    }
  }

  const std::string& of(const boost::optional<LocalizedTextWidth>& width) const {
    static const std::string none;
    return width ? m_notes.at(static_cast<std::size_t>(*width)) : none;
  }

private:
  std::array<std::string, 6> m_notes;
};

constexpr std::string_view footer = "    </body>\n  </file>\n</xliff>\n";

// A unit's size where nothing needs escaping: its markup and note, the
// reference twice, and the texts.
std::size_t unitSize(const LocalizedText& source, const LocalizedText* translation) {
  return 320 + 2 * source.ref().get().value().size() + source.text().value().size() +
         (translation != nullptr ? translation->text().value().size() : 0);
}

void appendContent(std::string& out, const LocalizedText& text) {
  Private::requireXmlText(text.text().value(), "content", text);
  Private::appendEscaped(out, text.text().value(), false);
}

void appendUnit(std::string& out, const KeyedText& source, const LocalizedText* translation,
                const WidthNotes& notes, WidthUnit unit) {
  const LocalizedText& text = *source.text;
  const std::string& ref = text.ref().get().value();
  Private::requireXmlText(ref, "Ref", text);
  out += "      <trans-unit id=\"";
  Private::appendUnitId(out, ref, source.key.version, source.key.width, source.key.lines);
  out += "\" resname=\"";
  Private::appendEscaped(out, ref, true);
  out += R"(" xml:space="preserve")";
  if (const auto limit = charactersPerLine(text.textWidth(), unit)) {
    out += R"( maxwidth=")" + std::to_string(maxWidth(*limit, source.key.lines)) + R"(" size-unit="char")";
  }
  out += ">\n        <source>";
  appendContent(out, text);
  out += "</source>\n";
  if (translation != nullptr) {
    out += "        <target state=\"translated\">";
    appendContent(out, *translation);
    out += "</target>\n";
  }
  out += "        <note>" + notes.of(text.textWidth()) + "Exactly " + std::to_string(source.key.lines) +
         (source.key.lines == 1 ? " line.</note>\n" : " lines.</note>\n");
  out += "      </trans-unit>\n";
}

}  // namespace

std::string writeXliff(const Catalogue& catalogue, const CatalogueCheck& check, const LanguageTag& from,
                       const LanguageTag& to, const std::string& original, WidthUnit unit) {
  requireStoreLanguage(from, "source");
  requireStoreLanguage(to, "target");
  if (!Private::isXmlText(original)) {
    throw std::invalid_argument("the original '" + original + "' is not UTF-8 that an XML file can carry");
  }
  std::vector<KeyedText> sources;
  // Hashed: sorting them would cost more than all the writing at a hundred thousand texts.
  std::unordered_map<TextKey, const LocalizedText*, TextKeyHash> translations;
  for (const std::size_t index : check.kept) {
    const LocalizedText& text = catalogue.texts.at(index).text;
    if (*text.lang() == from) {
      sources.push_back(keyed(text));
    } else if (*text.lang() == to) {
      translations.emplace(keyed(text).key, &text);
    }
  }

  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xliff xmlns=\"";
  out += xliffNamespace;
  out += "\" version=\"1.2\">\n  <file original=\"";
  Private::appendEscaped(out, original, true);
  out += "\" source-language=\"" + from.tag() + "\" target-language=\"" + to.tag() +
         "\" datatype=\"plaintext\">\n    <body>\n";
  std::vector<const LocalizedText*> targets;
  targets.reserve(sources.size());
  std::size_t size = out.size();
  for (const KeyedText& source : sources) {
    const auto match = translations.find(source.key);
    targets.push_back(match != translations.end() ? match->second : nullptr);
    size += unitSize(*source.text, targets.back());
  }
  // Growing a document of a hundred thousand units would copy it some twenty
  // times over; its size is known closely enough beforehand.
  out.reserve(size + footer.size());
  const WidthNotes notes(unit);
  for (std::size_t index = 0; index < sources.size(); ++index) {
    appendUnit(out, sources[index], targets[index], notes, unit);
  }
  out += footer;
  return out;
}

}  // namespace Catalogue
}  // namespace Zalt
