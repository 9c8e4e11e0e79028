#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/TextWidthTokens.h>
#include <Zalt/Display/Private/FileBytes.h>
#include <Zalt/Display/Private/LocatedJson.h>
#include <Zalt/Display/ReadDisplayProfile.h>

#include <filesystem>
#include <limits>
#include <set>
#include <system_error>

namespace Zalt {
namespace Display {
namespace {

using Catalogue::Finding;
using Private::JsonPlace;
using Private::LocatedMember;
using Private::LocatedValue;

// Pixel sizes far beyond any screen would only let the widths' arithmetic
// overflow.
constexpr std::int64_t largestPixels = 100000;

// Reads the tree of one profile, collecting every problem so that one run
// reports them all.
class ProfileReader {
public:
  explicit ProfileReader(const std::string& path)
      : m_path(path), m_folder(std::filesystem::path(path).parent_path()) {}

  DisplayProfile read(const LocatedValue& root) {
    DisplayProfile profile;
    const std::vector<const LocatedMember*> members =
        knownMembers(root, "the profile", {"fonts", "languageFonts", "areas"});
    if (members.empty()) {
      return profile;
    }
    if (const LocatedValue* fonts = required(root, members[0], "fonts", "the profile")) {
      profile.fonts = chain(*fonts, "fonts");
    }
    if (members[1] != nullptr) {
      profile.languageFonts = languageChains(members[1]->value);
    }
    if (const LocatedValue* areas = required(root, members[2], "areas", "the profile")) {
      profile.areas = displayAreas(*areas);
    }
    return profile;
  }

  // In the order of their places.
  std::vector<Finding> problems() const {
    std::vector<Finding> ordered = m_problems;
    std::stable_sort(ordered.begin(), ordered.end(), [](const Finding& lhs, const Finding& rhs) {
      return std::make_pair(lhs.location.line, lhs.location.column) <
             std::make_pair(rhs.location.line, rhs.location.column);
    });
    return ordered;
  }

private:
  void problem(JsonPlace where, const std::string& message) {
    m_problems.push_back({Finding::Kind::File, {m_path, where.line, where.column}, message});
  }

  // The members of `object` named `keys`, in their order, none for an absent
  // one; empty with a problem where `object` is not an object. Every other
  // key and every repeated one is a problem at its place.
  std::vector<const LocatedMember*> knownMembers(const LocatedValue& object, const std::string& what,
                                                 const std::vector<std::string>& keys) {
    if (!object.scalar.is_object()) {
      problem(object.place, what + " is not an object");
      return {};
    }
    std::vector<const LocatedMember*> found(keys.size(), nullptr);
    for (const LocatedMember& member : object.members) {
      const auto known = std::find(keys.begin(), keys.end(), member.key);
      if (known == keys.end()) {
        std::string message = "unknown key \"" + member.key + "\" in " + what + "; its keys are ";
        for (const std::string& key : keys) {
          message.append(key == keys.front() ? "\"" : ", \"").append(key).append("\"");
        }
        problem(member.keyPlace, message);
      } else if (found[static_cast<std::size_t>(known - keys.begin())] != nullptr) {
        problem(member.keyPlace, "\"" + member.key + "\" is given twice in " + what);
      } else {
        found[static_cast<std::size_t>(known - keys.begin())] = &member;
      }
    }
    return found;
  }

  const LocatedValue* required(const LocatedValue& object, const LocatedMember* member,
                               const std::string& key, const std::string& what) {
    if (member == nullptr) {
      problem(object.place, what + " lacks \"" + key + "\"");
      return nullptr;
    }
    return &member->value;
  }

  boost::optional<std::int64_t> wholeNumber(const LocatedValue& value, const std::string& what,
                                            std::int64_t least, std::int64_t most) {
    const bool inRange = value.scalar.is_number_integer() && value.scalar.get<std::int64_t>() >= least &&
                         value.scalar.get<std::int64_t>() <= most &&
                         !(value.scalar.is_number_unsigned() &&
                           value.scalar.get<std::uint64_t>() > static_cast<std::uint64_t>(most));
    if (!inRange) {
      problem(value.place, what + " is not a whole number from " + std::to_string(least) + " to " +
                               std::to_string(most) + ": " + value.scalar.dump());
      return boost::none;
    }
    return value.scalar.get<std::int64_t>();
  }

  boost::optional<std::string> text(const LocatedValue& value, const std::string& what) {
    if (!value.scalar.is_string() || value.scalar.get<std::string>().empty()) {
      problem(value.place, what + " is not a text that is not empty");
      return boost::none;
    }
    return value.scalar.get<std::string>();
  }

  boost::optional<Tovra::Mdib::LocalizedTextWidth> textWidth(const LocatedValue& value) {
    const auto width = Catalogue::textWidthFromToken(
        value.scalar.is_string() ? value.scalar.get<std::string>() : std::string());
    if (!width) {
      problem(value.place,
              "\"textWidth\" is not one of " + Catalogue::textWidthTokenList() + ": " + value.scalar.dump());
    }
    return width;
  }

  std::shared_ptr<const FontFace> face(const LocatedValue& font) {
    const std::vector<const LocatedMember*> members = knownMembers(font, "a font", {"file", "index"});
    if (members.empty()) {
      return nullptr;
    }
    const LocatedValue* fileValue = required(font, members[0], "file", "a font");
    const boost::optional<std::string> file = fileValue ? text(*fileValue, "\"file\"") : boost::none;
    const boost::optional<std::int64_t> index =
        members[1] ? wholeNumber(members[1]->value, "\"index\"", 0, std::numeric_limits<std::int32_t>::max())
                   : boost::optional<std::int64_t>(0);
    if (!file || !index) {
      return nullptr;
    }
    const std::string path = (m_folder / std::filesystem::u8path(*file)).u8string();
    const auto key = std::make_pair(path, *index);
    const auto loaded = m_faces.find(key);
    if (loaded != m_faces.end()) {
      return loaded->second;
    }
    try {
      return m_faces[key] = std::make_shared<const FontFace>(path, static_cast<std::uint32_t>(*index));
    } catch (const FontFileError& error) {
      problem(members[1] && std::string(error.what()).rfind("has no face", 0) == 0 ? members[1]->value.place
                                                                                   : fileValue->place,
              "the font file " + path + " " + error.what());
      return nullptr;
    }
  }

  FontChain chain(const LocatedValue& fonts, const std::string& what) {
    FontChain loaded;
    if (!fonts.scalar.is_array() || fonts.elements.empty()) {
      problem(fonts.place, what + " is not a list of fonts that is not empty");
      return loaded;
    }
    for (const LocatedValue& font : fonts.elements) {
      if (auto face = this->face(font)) {
        loaded.faces.push_back(std::move(face));
      }
    }
    return loaded;
  }

  std::map<std::string, FontChain> languageChains(const LocatedValue& languages) {
    std::map<std::string, FontChain> chains;
    if (!languages.scalar.is_object()) {
      problem(languages.place, "\"languageFonts\" is not an object");
      return chains;
    }
    for (const LocatedMember& member : languages.members) {
      std::string key = member.key;
      std::transform(key.begin(), key.end(), key.begin(), [](char letter) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
      });
      const bool tag =
          key.size() == 5 && key[2] == '-' && std::all_of(key.begin(), key.end(), [](char letter) {
            return letter == '-' || std::isalpha(static_cast<unsigned char>(letter));
          });
      if (!tag) {
        problem(member.keyPlace, "\"" + member.key + R"(" is not a language tag ll-CC, such as "ja-JP")");
      } else if (chains.count(key) != 0) {
        problem(member.keyPlace, "the language \"" + member.key + "\" is given twice");
      } else {
        chains[key] = chain(member.value, "the fonts of \"" + member.key + "\"");
      }
    }
    return chains;
  }

  boost::optional<DisplayArea> area(const LocatedValue& value) {
    static const std::vector<std::string> keys{"name", "textWidth", "lines", "size", "width", "lineHeight"};
    const std::vector<const LocatedMember*> members = knownMembers(value, "an area", keys);
    if (members.empty()) {
      return boost::none;
    }
    std::vector<const LocatedValue*> values;
    for (std::size_t key = 0; key < keys.size(); ++key) {
      values.push_back(required(value, members[key], keys[key], "an area"));
    }
    // Every value present is checked, also where another is missing, so that
    // one run names every problem.
    const auto number = [this, &values](std::size_t key, std::int64_t most) -> boost::optional<std::int64_t> {
      return values[key] ? wholeNumber(*values[key], '"' + keys[key] + '"', 1, most) : boost::none;
    };
    const auto name = values[0] ? text(*values[0], "\"name\"") : boost::none;
    const auto width = values[1] ? textWidth(*values[1]) : boost::none;
    const auto lines = number(2, std::numeric_limits<std::uint32_t>::max());
    const auto size = number(3, largestPixels);
    const auto pixels = number(4, largestPixels);
    const auto lineHeight = number(5, largestPixels);
    if (!name || !width || !lines || !size || !pixels || !lineHeight) {
      return boost::none;
    }
    return DisplayArea{*name,
                       *width,
                       static_cast<Zalt::Localization::NumberOfLines>(*lines),
                       static_cast<std::int32_t>(*size),
                       static_cast<std::int32_t>(*pixels),
                       static_cast<std::int32_t>(*lineHeight)};
  }

  std::vector<DisplayArea> displayAreas(const LocatedValue& areas) {
    std::vector<DisplayArea> read;
    if (!areas.scalar.is_array() || areas.elements.empty()) {
      problem(areas.place, "\"areas\" is not a list of areas that is not empty");
      return read;
    }
    std::set<std::string> names;
    for (const LocatedValue& element : areas.elements) {
      if (auto displayArea = area(element)) {
        if (!names.insert(displayArea->name).second) {
          problem(element.place, "the area name \"" + displayArea->name + "\" is given twice");
        }
        read.push_back(std::move(*displayArea));
      }
    }
    return read;
  }

  std::string m_path;
  std::filesystem::path m_folder;
  std::map<std::pair<std::string, std::int64_t>, std::shared_ptr<const FontFace>> m_faces;
  std::vector<Finding> m_problems;
};

std::string fileContent(const std::string& path) {
  try {
    return Private::fileBytes(path);
  } catch (const std::system_error& error) {
    throw Catalogue::CatalogueError(
        {{Finding::Kind::File, {path, 0, 0}, "cannot be read: " + error.code().message()}}, __FILE__,
        __LINE__);
  }
}

}  // namespace

DisplayProfile readDisplayProfile(const std::string& path) {
  const std::string content = fileContent(path);
  Private::LocatedValue root;
  try {
    root = Private::readLocatedJson(content);
  } catch (const Private::LocatedJsonError& error) {
    throw Catalogue::CatalogueError(
        {{Finding::Kind::File, {path, error.place.line, error.place.column}, error.what()}}, __FILE__,
        __LINE__);
  }
  ProfileReader reader(path);
  DisplayProfile profile = reader.read(root);
  if (!reader.problems().empty()) {
    throw Catalogue::CatalogueError(reader.problems(), __FILE__, __LINE__);
  }
  return profile;
}

}  // namespace Display
}  // namespace Zalt
