#include <Zalt/Catalogue/Private/EmptyCatalogue.h>

#include <Zalt/Catalogue/XmlNamespaces.h>

#include <boost/optional.hpp>

#include <string>
#include <string_view>

namespace Zalt {
namespace Catalogue {
namespace Private {
namespace {

std::string misplacedMessage(const MisplacedElement& element) {
  const std::string_view expected = element.name == "Text" ? messageNamespace : participantNamespace;
  const std::string stands =
      element.xmlNamespace.empty() ? "in no namespace" : "in the namespace '" + element.xmlNamespace + "'";
  return "no localized text found: this " + element.name + " is " + stands + ", not in '" +
         std::string(expected) + "'";
}

// A file's root tells what the file is where it is not a catalogue, and so the
// command that reads it. A catalogue's own root may stand in the participant
// namespace (LocalizedTexts) or be a GetLocalizedTextResponse; any other
// message is MDIB content.
boost::optional<std::string> kindHint(const CatalogueFileContent& content) {
  if (content.rootName == "xliff") {
    return std::string("an XLIFF file: use xliff import");
  }
  const bool isMdib =
      (content.rootNamespace == participantNamespace && content.rootName == "Mdib") ||
      (content.rootNamespace == messageNamespace && content.rootName != "GetLocalizedTextResponse");
  if (isMdib) {
    return std::string("an MDIB: use coverage --mdib");
  }
  return boost::none;
}

std::string emptyMessage(const boost::optional<std::string>& hint) {
  if (hint) {
    return "no localized text found: " + *hint;
  }
  return "no localized text found: texts are LocalizedText elements of '" +
         std::string(participantNamespace) + "' or Text elements of a GetLocalizedTextResponse of '" +
         std::string(messageNamespace) + "'";
}

void addMisplaced(const MisplacedElement& element, std::vector<Finding>& findings) {
  findings.push_back({Finding::Kind::Empty, element.location, misplacedMessage(element)});
}

void addEmptyFile(const Catalogue& catalogue, const CatalogueFileContent& content,
                  std::vector<Finding>& findings) {
  const std::string& file = catalogue.files.at(content.file);
  const boost::optional<std::string> hint = kindHint(content);
  const std::size_t before = findings.size();
  if (!hint) {
    for (const MisplacedElement& element : catalogue.misplaced) {
      if (element.location.file == file) {
        addMisplaced(element, findings);
      }
    }
  }
  if (findings.size() == before) {
    findings.push_back({Finding::Kind::Empty, {file, 0, 0}, emptyMessage(hint)});
  }
}

}  // namespace

std::vector<Finding> emptyCatalogueFindings(const Catalogue& catalogue) {
  std::vector<Finding> findings;
  const boost::optional<std::string> hint =
      catalogue.contents.empty() ? boost::none : kindHint(catalogue.contents.front());
  if (!hint && !catalogue.misplaced.empty()) {
    for (const MisplacedElement& element : catalogue.misplaced) {
      addMisplaced(element, findings);
    }
    return findings;
  }
  const std::string file = catalogue.files.empty() ? std::string() : catalogue.files.front();
  findings.push_back({Finding::Kind::Empty, {file, 0, 0}, emptyMessage(hint)});
  return findings;
}

// Among files that hold texts, one without any is most likely another kind of
// file given by mistake, whose texts the user means to be there.
std::vector<Finding> emptyFileFindings(const Catalogue& catalogue) {
  std::vector<Finding> findings;
  for (const CatalogueFileContent& content : catalogue.contents) {
    if (content.texts == 0) {
      addEmptyFile(catalogue, content, findings);
    }
  }
  return findings;
}

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
