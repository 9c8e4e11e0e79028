// The pictures that `display --pictures DIR` writes: a PNG file of each shown
// text handed in, and DIR/index.html, which lists them worst overflow first.
// Every file is written whole or not at all (OutputFile.h).
//
//   PictureFiles pictures("review");   // made if missing
//   pictures.add({area.name, reference, version, language, pixels, area.width, 0, 0},
//                shaper.chain(), lines, {area.width, area.size, area.lineHeight, area.lines});
//   pictures.finish();                 // review/index.html
#pragma once

#include <Zalt/Display/FontChain.h>
#include <Zalt/Display/PictureIndex.h>
#include <Zalt/Display/ShapedLine.h>
#include <Zalt/Display/TextPicture.h>

#include <string>
#include <vector>

namespace ZaltCatalogueTool {

class PictureFiles {
public:
  // Makes `directory`, and the directories above it, where they are missing.
  // Throws std::runtime_error "cannot write DIRECTORY: REASON".
  explicit PictureFiles(std::string directory);

  // Draws `lines`, shaped with `chain`, in `box`, and writes the picture as
  // the file that the index names for `entry`, whose picture size it fills
  // in. Throws std::runtime_error "cannot write PATH: REASON".
  void add(Zalt::Display::PictureEntry entry, const Zalt::Display::FontChain& chain,
           const std::vector<Zalt::Display::ShapedLine>& lines, const Zalt::Display::PictureBox& box);

  // Writes index.html; throws as add does.
  void finish() const;

private:
  std::string m_directory;
  Zalt::Display::PictureDrawer m_drawer;
  Zalt::Display::PictureIndex m_index;
};

}  // namespace ZaltCatalogueTool
