// Zalt::Display::PictureIndex: the names of the pictures of shown texts and
// the page that lists them for a reviewer, worst overflow first.
//
//   Zalt::Display::PictureIndex index;
//   const std::string name = index.add({"alarm", "HR_HIGH", 2, "de-DE", 218, 200, 218, 48});
//   writeFile(directory + "/" + name, picture.png);
//   writeFile(directory + "/index.html", index.page());
#pragma once

#include <Zalt/Display/DisplayExport.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Zalt {
namespace Display {

// One shown text's picture, as the index lists it.
struct PictureEntry {
  std::string area;
  std::string reference;
  std::uint64_t version;
  std::string language;
  // The text's widest line, and the width of the area's box.
  std::int64_t pixels;
  std::int32_t box;
  // The picture's size.
  std::int32_t width;
  std::int32_t height;
};

class ZALT_LTSDISPLAY_EXPORT PictureIndex {
public:
  // The file name of the entry's picture, unique among those added: its area,
  // reference, version and language, each cut short, with every character but
  // ASCII letters, digits and '-' made '_', and a hash of all four, so that a
  // name neither leaves the pictures' directory nor depends on the system.
  std::string add(const PictureEntry& entry);

  // index.html: each picture with its area, reference, version, language and
  // widths, worst overflow first. Once every picture has loaded, a script sets
  // the page's title to "N of M pictures loaded", counting those that loaded
  // with a size, so that a test in a browser can tell.
  std::string page() const;

private:
  struct Listed {
    PictureEntry entry;
    std::string file;
  };

  std::vector<Listed> m_listed;
  std::set<std::string> m_files;
};

}  // namespace Display
}  // namespace Zalt
