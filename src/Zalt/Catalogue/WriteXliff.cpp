#include <Zalt/Catalogue/Xliff.h>

#include <Zalt/Catalogue/Private/XliffUnitId.h>
#include <Zalt/Catalogue/Private/XmlWriting.h>
#include <Zalt/Catalogue/WriteCatalogue.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <tuple>

namespace Zalt {
namespace Catalogue {
namespace {

using Tovra::Locale::LanguageTag;
using Tovra::Mdib::LocalizedText;
using Tovra::Mdib::LocalizedTextWidth;

// A kept text with the key under which the store files it, but for its language.
struct KeyedText {
  const LocalizedText* text;
  std::uint32_t lines;

  auto key() const {
    return std::make_tuple(std::string_view(text->ref().get().value()), text->version()->get(),
                           text->textWidth(), lines);
  }
};

KeyedText keyed(const LocalizedText& text) {
  return {&text, Localization::Impl::numberOfLineBreaks(text.text()) + 1};
}

void requireStoreLanguage(const LanguageTag& language, const char* role) {
  if (!language.is2LetterLangAnd2LetterCountry()) {
    throw std::invalid_argument(std::string("the ") + role + " language '" + language.tag() +
                                "' is not a language of the store (ll-CC)");
  }
}

// A wide character takes the room of two narrow ones, which translation
// tools count as characters; none for a text without a width or of xxl.
boost::optional<std::uint32_t> narrowCharactersPerLine(const boost::optional<LocalizedTextWidth>& width) {
  const auto limit = width ? widthLimit(*width) : boost::none;
  return limit ? boost::optional<std::uint32_t>(2 * *limit) : boost::none;
}

// The width part of each unit's note, by width, and none for a text without one.
class WidthNotes {
public:
  WidthNotes() {
    for (const auto& token : textWidthTokens()) {
      std::ostringstream note;
      note << "Width " << token.first << " (" << token.second << "): ";
      if (const auto limit = narrowCharactersPerLine(token.second)) {
        note << "a line holds at most " << *limit
             << " narrow characters; a wide character (East Asian Wide or Fullwidth) counts as two. ";
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

void appendContent(std::string& out, const LocalizedText& text) {
  Private::requireXmlText(text.text().value(), "content", text);
  Private::appendEscaped(out, text.text().value(), false);
}

void appendUnit(std::string& out, const KeyedText& source, const LocalizedText* translation,
                const WidthNotes& notes) {
  const LocalizedText& text = *source.text;
  const std::string& ref = text.ref().get().value();
  Private::requireXmlText(ref, "Ref", text);
  std::string id;
  Private::appendUnitId(id, {ref, text.version()->get(), text.textWidth(), source.lines});
  out += "      <trans-unit id=\"";
  Private::appendEscaped(out, id, true);
  out += "\" resname=\"";
  Private::appendEscaped(out, ref, true);
  out += R"(" xml:space="preserve")";
  if (const auto limit = narrowCharactersPerLine(text.textWidth())) {
    out += R"( maxwidth=")" + std::to_string(*limit) + R"(" size-unit="char")";
  }
  out += ">\n        <source>";
  appendContent(out, text);
  out += "</source>\n";
  if (translation != nullptr) {
    out += "        <target state=\"translated\">";
    appendContent(out, *translation);
    out += "</target>\n";
  }
  out += "        <note>" + notes.of(text.textWidth()) + "Exactly " + std::to_string(source.lines) +
         (source.lines == 1 ? " line.</note>\n" : " lines.</note>\n");
  out += "      </trans-unit>\n";
}

}  // namespace

std::string writeXliff(const Catalogue& catalogue, const CatalogueCheck& check, const LanguageTag& from,
                       const LanguageTag& to, const std::string& original) {
  requireStoreLanguage(from, "source");
  requireStoreLanguage(to, "target");
  if (!Private::isXmlText(original)) {
    throw std::invalid_argument("the original '" + original + "' is not UTF-8 that an XML file can carry");
  }
  std::vector<KeyedText> sources;
  std::vector<KeyedText> translations;
  for (const std::size_t index : check.kept) {
    const LocalizedText& text = catalogue.texts.at(index).text;
    if (*text.lang() == from) {
      sources.push_back(keyed(text));
    } else if (*text.lang() == to) {
      translations.push_back(keyed(text));
    }
  }
  const auto byKey = [](const KeyedText& lhs, const KeyedText& rhs) { return lhs.key() < rhs.key(); };
  std::sort(translations.begin(), translations.end(), byKey);

  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xliff xmlns=\"";
  out += xliffNamespace;
  out += "\" version=\"1.2\">\n  <file original=\"";
  Private::appendEscaped(out, original, true);
  out += "\" source-language=\"" + from.tag() + "\" target-language=\"" + to.tag() +
         "\" datatype=\"plaintext\">\n    <body>\n";
  const WidthNotes notes;
  for (const KeyedText& source : sources) {
    const auto match = std::lower_bound(translations.begin(), translations.end(), source, byKey);
    const bool translated = match != translations.end() && match->key() == source.key();
    appendUnit(out, source, translated ? match->text : nullptr, notes);
  }
  out += "    </body>\n  </file>\n</xliff>\n";
  return out;
}

}  // namespace Catalogue
}  // namespace Zalt
