// The pictures that `display --pictures DIR` writes: a PNG file of each shown
// text handed in, and DIR/index.html, which lists them worst overflow first.
// Every file is written whole or not at all (OutputFile.h).
//
//   PictureFiles pictures("review");   // made if missing
//   pictures.add(area, shaper, {"Herzfrequenz über Obergrenze", "Patient prüfen"},
//                "alarm.hr.high", 2, "de-DE");
//   pictures.finish();                 // review/index.html
#pragma once

#include <Zalt/Display/DisplayArea.h>
#include <Zalt/Display/LineShaper.h>
#include <Zalt/Display/PictureIndex.h>
#include <Zalt/Display/TextPicture.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

class PictureFiles {
public:
  // Makes `directory`, and the directories above it, where they are missing.
  // Throws std::runtime_error "cannot write DIRECTORY: REASON".
  explicit PictureFiles(std::string directory);

  // Draws the text of `lines` (UTF-8, without line breaks), shaped by
  // `shaper` at the area's size, in the area's box, and writes the picture as
  // the file that the index names for the area, reference, version and
  // language. Throws std::runtime_error "cannot write PATH: REASON".
  void add(const Zalt::Display::DisplayArea& area, Zalt::Display::LineShaper& shaper,
           const std::vector<std::string>& lines, const std::string& reference, std::uint64_t version,
           const std::string& language);

  // Writes index.html; throws as add does.
  void finish() const;

private:
  std::string m_directory;
  Zalt::Display::PictureDrawer m_drawer;
  Zalt::Display::PictureIndex m_index;
};

}  // namespace ZaltCatalogueTool
