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

// The code of MDC_ATTR_VMS_MDS_TEXT_CAT, by which an MDS names its text catalogue.
constexpr std::string_view textCatalogueCode = "68008";
constexpr std::string_view defaultCodingSystem = "urn:oid:1.2.840.10004.1.1.1.0.0.1";

// An MDS, with the production entry of its own being read, if any.
struct OpenMds {
  std::size_t level = 0;
  std::optional<std::string> handle;
  // The level of the production entry child being read; 0 outside one.
  std::size_t entryLevel = 0;
  bool namesTextCatalogue = false;
  bool inProductionSpec = false;
  std::optional<Place> productionSpec;
  std::string value;
};

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
    noteDeclaration(element, place);
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
    endDeclaration();
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
    if (m_mds && m_mds->inProductionSpec && depth() == m_mds->entryLevel + 2) {
      m_mds->value += data;
    }
    if (!m_inline.empty() && m_inline.back().level + 1 == depth()) {
      m_inline.back().content += data;
    }
  }

  void dropResults() override {
    m_texts.uses = {};
    m_texts.catalogueIds = {};
  }

  // Follows an MDS's own production entries: a VMD's or a channel's lie
  // deeper and name something else.
  void noteDeclaration(const Element& element, Place place) {
    if (element.xmlNamespace != participantNamespace) {
      return;
    }
    if (element.name == "Mds") {
      const auto handle = element.attribute("Handle");
      m_mds.emplace();
      m_mds->level = depth();
      if (handle) {
        m_mds->handle = std::string(handle->value);
      }
      return;
    }
    if (!m_mds) {
      return;
    }
    if (element.name == "ProductionSpecification" && depth() == m_mds->level + 1) {
      m_mds->entryLevel = depth();
      m_mds->namesTextCatalogue = false;
      m_mds->productionSpec.reset();
      m_mds->value.clear();
    } else if (m_mds->entryLevel != 0 && depth() == m_mds->entryLevel + 1) {
      if (element.name == "SpecType") {
        m_mds->namesTextCatalogue = namesTextCatalogue(element);
      } else if (element.name == "ProductionSpec") {
        m_mds->inProductionSpec = true;
        m_mds->productionSpec = place;
      }
    }
  }

  static bool namesTextCatalogue(const Element& element) {
    const auto code = element.attribute("Code");
    const auto system = element.attribute("CodingSystem");
    return code && code->value == textCatalogueCode && (!system || system->value == defaultCodingSystem);
  }

  void endDeclaration() {
    if (!m_mds) {
      return;
    }
    m_mds->inProductionSpec = false;
    if (depth() == m_mds->level) {
      m_mds.reset();
    } else if (depth() == m_mds->entryLevel) {
      m_mds->entryLevel = 0;
      if (m_mds->namesTextCatalogue && m_mds->productionSpec && !hasProblems()) {
        m_texts.catalogueIds.push_back({std::string(Private::collapsed(m_mds->value)), m_mds->handle, 0,
                                        m_mds->productionSpec->line, m_mds->productionSpec->column});
      }
    }
  }

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
  std::optional<OpenMds> m_mds;
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
  for (CatalogueIdentifier& identifier : other.catalogueIds) {
    identifier.file += firstFile;
  }
  files.insert(files.end(), std::make_move_iterator(other.files.begin()),
               std::make_move_iterator(other.files.end()));
  uses.insert(uses.end(), std::make_move_iterator(other.uses.begin()),
              std::make_move_iterator(other.uses.end()));
  catalogueIds.insert(catalogueIds.end(), std::make_move_iterator(other.catalogueIds.begin()),
                      std::make_move_iterator(other.catalogueIds.end()));
}

SourceLocation MdibTexts::location(const MdibTextUse& use) const {
  return {files.at(use.file), use.line, use.column};
}

SourceLocation MdibTexts::location(const CatalogueIdentifier& identifier) const {
  return {files.at(identifier.file), identifier.line, identifier.column};
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
