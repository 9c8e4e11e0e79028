#include <Zalt/Catalogue/LanguageCase.h>
#include <Zalt/Catalogue/ReadXliff.h>
#include <Zalt/Catalogue/XmlNamespaces.h>

#include <Zalt/Catalogue/Private/ReadDocument.h>
#include <Zalt/Catalogue/Private/XliffTargetChecks.h>
#include <Zalt/Catalogue/Private/XliffUnitId.h>
#include <Zalt/Localization/Private/Common/NumberOfLineBreaks.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

namespace Zalt {
namespace Catalogue {
namespace {

using Private::Attribute;
using Private::Element;
using Private::Place;
using Tovra::Locale::LanguageTag;
using Tovra::Locale::Utf8;

// What an open element is to the reader; everything else is Other.
enum class Role : char { Other, Group, Unit, Source, SegmentedSource, Target, TargetSegment, InTarget };

// A unit until its end tag.
struct PendingUnit {
  Place place;
  std::optional<Private::UnitKey> key;
  // The id where it does not decode, for the message.
  std::optional<std::string> undecodedId;
  bool translatable = true;
  bool approved = true;
  bool hasSource = false;
  std::string source;
  bool hasTarget = false;
  Place targetPlace{};
  std::string state;
  std::string stateQualifier;
  std::string target;
  // The mids of the segments of <seg-source> and of the target.
  std::vector<std::string> sourceSegments;
  std::vector<std::string> targetSegments;
  // The first element inside the target, with its place.
  std::optional<std::pair<std::string, Place>> markup;
};

// Tools that save XLIFF without its namespace put every element in none.
bool isXliff(std::string_view xmlNamespace) { return xmlNamespace == xliffNamespace || xmlNamespace.empty(); }

std::string quoted(std::string_view text) { return '\'' + std::string(text) + '\''; }

std::string linesText(std::uint32_t lines) {
  return std::to_string(lines) + (lines == 1 ? " line" : " lines");
}

std::string attributeValue(const Element& element, std::string_view name) {
  return std::string(element.attribute(name).value_or(Attribute{}).value);
}

// Tools that segment a unit wrap each sentence of both texts in one of these.
bool isSegment(const Element& element) {
  return isXliff(element.xmlNamespace) && element.name == "mrk" && attributeValue(element, "mtype") == "seg";
}

class XliffReader : public Private::XmlDocumentReader {
public:
  using Result = XliffImport;

  XliffReader(std::string fileName, std::size_t expectedSize)
      : XmlDocumentReader(std::move(fileName), expectedSize, "an XLIFF file",
                          DocumentType::SkippedWithoutInternalSubset) {}

  XliffImport result() && {
    m_import.catalogue.files.push_back(fileName());
    return std::move(m_import);
  }

private:
  void startElement(const Element& element) override {
    const Role parent = m_roles.empty() ? Role::Other : m_roles.back();
    Role role = Role::Other;
    if (m_roles.empty()) {
      checkRoot(element);
    } else if (parent == Role::Target && isSegment(element)) {
      role = Role::TargetSegment;
      m_unit.targetSegments.push_back(attributeValue(element, "mid"));
    } else if (parent == Role::Target || parent == Role::TargetSegment || parent == Role::InTarget) {
      role = Role::InTarget;
      if (!m_unit.markup) {
        m_unit.markup.emplace(element.qualifiedName(), markupPlace());
      }
    } else if (parent == Role::SegmentedSource && isSegment(element)) {
      m_unit.sourceSegments.push_back(attributeValue(element, "mid"));
    } else if (!isXliff(element.xmlNamespace)) {
      // An extension of a tool: nothing of the texts.
    } else if (element.name == "file") {
      beginFile(element);
    } else if (element.name == "group") {
      role = Role::Group;
      m_groupsTranslate.push_back(translates(element));
    } else if (element.name == "trans-unit" && m_fileUsable) {
      role = beginUnit(element);
    } else if (parent == Role::Unit) {
      role = childOfUnit(element);
    }
    m_roles.push_back(role);
  }

  void endElement() override {
    const Role role = m_roles.back();
    m_roles.pop_back();
    if (role == Role::Unit) {
      endUnit();
    } else if (role == Role::Group) {
      m_groupsTranslate.pop_back();
    }
  }

  // A group's translate holds for what it holds, unless an inner one says otherwise.
  bool translates(const Element& element) const {
    const auto translate = element.attribute("translate");
    return translate ? translate->value != "no" : m_groupsTranslate.empty() || m_groupsTranslate.back();
  }

  void characters(std::string_view data) override {
    const Role role = m_roles.empty() ? Role::Other : m_roles.back();
    if (role == Role::Target || role == Role::TargetSegment) {
      m_unit.target += data;
    } else if (role == Role::Source) {
      m_unit.source += data;
    }
  }

  void dropResults() override { m_import = {}; }

  void checkRoot(const Element& element) {
    const Place place = markupPlace();
    if (element.name != "xliff" || !isXliff(element.xmlNamespace)) {
      fail(place, "not an XLIFF 1.2 file: the root element is " + quoted(element.qualifiedName()) +
                      (element.xmlNamespace.empty() ? " in no namespace"
                                                    : " in the namespace " + quoted(element.xmlNamespace)));
    } else if (const auto version = element.attribute("version"); version && version->value != "1.2") {
      fail(place,
           "XLIFF version " + quoted(version->value) + " is not supported: an XLIFF file is version 1.2");
    }
  }

  // A file's units stand in its target language, which the store must take.
  void beginFile(const Element& element) {
    const auto language = element.attribute("target-language");
    // Tags do not differ by case, but the store's users look them up as they write them.
    m_language = canonicalLanguage(LanguageTag(std::string(language.value_or(Attribute{}).value)));
    m_fileUsable = m_language.is2LetterLangAnd2LetterCountry();
    if (!m_fileUsable) {
      find(
          Finding::Kind::Language, markupPlace(),
          (language ? "target-language " + quoted(language->value) + " is not a language of the store (ll-CC)"
                    : std::string("the file has no target-language")) +
              ": its units yield no texts");
    }
  }

  Role beginUnit(const Element& element) {
    // Which unit an inner one's translation belongs to cannot be told.
    if (std::find(m_roles.begin(), m_roles.end(), Role::Unit) != m_roles.end()) {
      problem(markupPlace(), "a trans-unit inside another, where XLIFF 1.2 allows none");
      return Role::Other;
    }
    // The texts' room is kept from unit to unit, so that most need no allocation.
    m_unit.place = markupPlace();
    m_unit.key.reset();
    m_unit.undecodedId.reset();
    m_unit.translatable = translates(element);
    m_unit.approved = attributeValue(element, "approved") != "no";
    m_unit.hasSource = false;
    m_unit.source.clear();
    m_unit.hasTarget = false;
    m_unit.target.clear();
    m_unit.markup.reset();
    m_unit.sourceSegments.clear();
    m_unit.targetSegments.clear();
    if (const auto id = element.attribute("id")) {
      m_unit.key = Private::decodeUnitId(id->value);
      if (!m_unit.key) {
        m_unit.undecodedId = std::string(id->value);
      }
    }
    return Role::Unit;
  }

  Role childOfUnit(const Element& element) {
    if (element.name == "target") {
      beginTarget(element);
      return Role::Target;
    }
    if (element.name == "source") {
      m_unit.hasSource = true;
      return Role::Source;
    }
    return element.name == "seg-source" ? Role::SegmentedSource : Role::Other;
  }

  void beginTarget(const Element& element) {
    // Which of two translations the translator meant cannot be told, and
    // joining them would change the text in silence.
    if (m_unit.hasTarget) {
      problem(markupPlace(), "a second target in one trans-unit, where XLIFF 1.2 allows one");
    }
    m_unit.hasTarget = true;
    m_unit.targetPlace = markupPlace();
    m_unit.state = attributeValue(element, "state");
    m_unit.stateQualifier = attributeValue(element, "state-qualifier");
  }

  void endUnit() {
    PendingUnit& unit = m_unit;
    if (!unit.translatable) {
      return;
    }
    if (!unit.key) {
      find(Finding::Kind::Id, unit.place,
           unit.undecodedId
               ? "unit id " + quoted(*unit.undecodedId) + " is not of the form VERSION.WIDTH.LINES.REFERENCE"
               : std::string("the unit has no id"));
      return;
    }
    const auto unitName = [&unit] { return "unit " + quoted(unit.key->ref); };
    if (!unit.hasTarget) {
      find(Finding::Kind::Untranslated, unit.place, unitName() + " has no translation");
    } else if (unit.state == "new" || unit.state == "needs-translation") {
      find(Finding::Kind::Untranslated, unit.targetPlace,
           unitName() + " is not translated: its target's state is " + quoted(unit.state));
    } else if (unit.markup) {
      find(Finding::Kind::Markup, unit.markup->second,
           "the translation of " + unitName() + " holds the element " + quoted(unit.markup->first) +
               ": a text holds characters only");
    } else if (const auto change = Private::segmentsChange(unit.sourceSegments, unit.targetSegments)) {
      find(Finding::Kind::Segments, unit.place, "the translation of " + unitName() + ' ' + *change);
    } else if (Private::isBlank(unit.target)) {
      find(Finding::Kind::Untranslated, unit.targetPlace,
           unitName() + (unit.target.empty() ? " has an empty translation" : " has a blank translation"));
    } else {
      addText(unit);
    }
  }

  void addText(PendingUnit& unit) {
    Utf8 text(unit.target);
    const std::uint32_t lines = Localization::Impl::numberOfLineBreaks(text) + 1;
    if (lines != unit.key->lines) {
      find(Finding::Kind::Lines, unit.targetPlace,
           "the translation of unit " + quoted(unit.key->ref) + " has " + linesText(lines) +
               " where the source has " + linesText(unit.key->lines));
      return;
    }
    if (unit.hasSource) {
      if (const auto change = Private::keptFormsChange(unit.source, unit.target)) {
        find(Finding::Kind::Placeholder, unit.place,
             "the translation of unit " + quoted(unit.key->ref) + ' ' + *change);
        return;
      }
    }
    if (const auto reason = Private::unreviewedBecause(unit.state, unit.stateQualifier, unit.approved)) {
      find(Finding::Kind::Unreviewed, unit.place,
           "the translation of unit " + quoted(unit.key->ref) + " is not reviewed: " + *reason);
      m_import.unreviewed.push_back(m_import.catalogue.texts.size());
    }
    m_import.catalogue.texts.push_back(
        {Tovra::Mdib::LocalizedText(std::move(text), m_language,
                                    Tovra::Mdib::LocalizedTextRef(Utf8(std::move(unit.key->ref))),
                                    Tovra::Mdib::VersionCounter(unit.key->version), unit.key->width),
         0, unit.targetPlace.line, unit.targetPlace.column});
  }

  // The texts' room is taken once, by how densely the first chunk holds
  // units: growing to a hundred thousand texts would move them all some
  // seventeen times into fresh memory.
  void firstChunkFed(std::size_t fileSize, std::size_t readSoFar) override {
    std::vector<CatalogueText>& texts = m_import.catalogue.texts;
    if (fileSize > readSoFar && !texts.empty()) {
      texts.reserve(texts.size() * (fileSize / readSoFar + 1));
    }
  }

  void find(Finding::Kind kind, Place place, std::string message) {
    m_import.findings.push_back({kind, {fileName(), place.line, place.column}, std::move(message)});
  }

  std::vector<Role> m_roles;
  // Whether each open group is to be translated.
  std::vector<bool> m_groupsTranslate;
  bool m_fileUsable = false;
  LanguageTag m_language;
  PendingUnit m_unit;
  XliffImport m_import;
};

}  // namespace

void XliffImport::append(XliffImport&& other) {
  for (const std::size_t index : other.unreviewed) {
    unreviewed.push_back(catalogue.texts.size() + index);
  }
  catalogue.append(std::move(other.catalogue));
  findings.insert(findings.end(), std::make_move_iterator(other.findings.begin()),
                  std::make_move_iterator(other.findings.end()));
}

XliffImport withoutUnreviewed(XliffImport&& import) {
  std::vector<CatalogueText> reviewed;
  reviewed.reserve(import.catalogue.texts.size() - import.unreviewed.size());
  auto next = import.unreviewed.begin();
  for (std::size_t index = 0; index < import.catalogue.texts.size(); ++index) {
    if (next != import.unreviewed.end() && *next == index) {
      ++next;
    } else {
      reviewed.push_back(std::move(import.catalogue.texts[index]));
    }
  }
  import.catalogue.texts = std::move(reviewed);
  import.unreviewed.clear();
  return std::move(import);
}

XliffImport readXliff(std::string_view content, const std::string& fileName) {
  return Private::readDocument<XliffReader>(content, fileName);
}

XliffImport readXliffFile(const std::string& path) { return Private::readDocumentFile<XliffReader>(path); }

XliffImport readXliffFiles(const std::vector<std::string>& paths) {
  return Private::readDocumentFiles<XliffReader>(paths);
}

}  // namespace Catalogue
}  // namespace Zalt
