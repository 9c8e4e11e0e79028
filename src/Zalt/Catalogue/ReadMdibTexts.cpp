#include <Zalt/Catalogue/ReadMdibTexts.h>

#include <Zalt/Catalogue/Private/AttributeValues.h>
#include <Zalt/Catalogue/Private/ReadDocument.h>
#include <Zalt/Catalogue/XmlNamespaces.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Private::Element;
using Private::Place;

// The elements whose type is LocalizedText: one of them without a Ref holds
// its text itself.
constexpr std::array<std::string_view, 12> textElements = {
    "LocalizedText", "CodingSystemName",      "ConceptDescription", "IdentifierName", "Label",
    "Documentation", "Manufacturer",          "ModelName",          "Description",    "Text",
    "ErrorInfo",     "InvocationErrorMessage"};

bool isTextElement(std::string_view name) {
  return std::find(textElements.begin(), textElements.end(), name) != textElements.end();
}

bool isBlank(std::string_view text) { return Private::collapsed(text).empty(); }

// An element that may hold a text inline, until its end tag.
struct PendingInline {
  std::size_t level;
  Place place;
  std::optional<std::string> lang;
  std::string element;
  std::string content;
};

// Takes the text uses from the parser's events.
class MdibReader : public Private::XmlDocumentReader {
public:
  using Result = MdibTexts;

  MdibReader(std::string fileName, std::size_t expectedSize)
      : XmlDocumentReader(std::move(fileName), expectedSize, "an MDIB file") {}

  MdibTexts result() && {
    m_texts.files.push_back(fileName());
    return std::move(m_texts);
  }

private:
  void startElement(const Element& element) override {
    if (element.xmlNamespace != participantNamespace && element.xmlNamespace != messageNamespace) {
      return;
    }
    noteContent(element);
    const Place place = markupPlace();
    std::optional<std::string> lang;
    if (const auto attribute = element.attribute("Lang")) {
      lang = std::string(attribute->value);
    }
    const auto ref = element.attribute("Ref");
    if (!ref) {
      if (isTextElement(element.name)) {
        m_inline.push_back({depth(), place, std::move(lang), std::string(element.name), {}});
      }
      return;
    }
    std::optional<std::uint64_t> version;
    if (const auto attribute = element.attribute("Version")) {
      version = Private::versionNumber(attribute->value);
      if (!version) {
        problem(placeOfValue(*attribute, place), Private::badVersionMessage(attribute->value));
      }
    }
    if (!hasProblems()) {
      m_texts.uses.push_back({false,
                              std::string(ref->value),
                              version,
                              std::move(lang),
                              std::string(element.name),
                              {},
                              0,
                              place.line,
                              place.column});
    }
  }

  void endElement() override {
    if (depth() == 0 && m_holdsTexts && !m_holdsMdibContent) {
      problem({0, 0}, "holds localized texts and no MDIB content: is it a catalogue?");
    }
    if (m_inline.empty() || m_inline.back().level != depth()) {
      return;
    }
    PendingInline& text = m_inline.back();
    if (!hasProblems() && !isBlank(text.content)) {
      m_texts.uses.push_back({true,
                              {},
                              std::nullopt,
                              std::move(text.lang),
                              std::move(text.element),
                              std::move(text.content),
                              0,
                              text.place.line,
                              text.place.column});
    }
    m_inline.pop_back();
  }

  void characters(std::string_view data) override {
    if (!m_inline.empty() && m_inline.back().level + 1 == depth()) {
      m_inline.back().content += data;
    }
  }

  void dropResults() override { m_texts.uses = {}; }

  // A catalogue's Ref attributes would pass for references that an MDIB names,
  // each covered by itself: a document of catalogue elements alone is not
  // taken for an MDIB.
  void noteContent(const Element& element) {
    const bool inParticipant = element.xmlNamespace == participantNamespace;
    if ((inParticipant && element.name == "LocalizedText") || (!inParticipant && element.name == "Text")) {
      m_holdsTexts = true;
    } else if (element.name != (inParticipant ? "LocalizedTexts" : "GetLocalizedTextResponse")) {
      m_holdsMdibContent = true;
    }
  }

  std::vector<PendingInline> m_inline;
  bool m_holdsTexts = false;
  bool m_holdsMdibContent = false;
  MdibTexts m_texts;
};

}  // namespace

void MdibTexts::append(MdibTexts&& other) {
  const auto firstFile = static_cast<std::uint32_t>(files.size());
  for (MdibTextUse& use : other.uses) {
    use.file += firstFile;
  }
  files.insert(files.end(), std::make_move_iterator(other.files.begin()),
               std::make_move_iterator(other.files.end()));
  uses.insert(uses.end(), std::make_move_iterator(other.uses.begin()),
              std::make_move_iterator(other.uses.end()));
}

SourceLocation MdibTexts::location(const MdibTextUse& use) const {
  return {files.at(use.file), use.line, use.column};
}

MdibTexts readMdibTexts(std::string_view content, const std::string& fileName) {
  return Private::readDocument<MdibReader>(content, fileName);
}

MdibTexts readMdibTextsFile(const std::string& path) { return Private::readDocumentFile<MdibReader>(path); }

MdibTexts readMdibTextsFiles(const std::vector<std::string>& paths) {
  return Private::readDocumentFiles<MdibReader>(paths);
}

}  // namespace Catalogue
}  // namespace Zalt
