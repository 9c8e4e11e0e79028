// Zalt::Display::FontFace: one face of a font file (TrueType, OpenType or a
// collection), loaded once for shaping and drawing, shared by every font chain
// that names it.
//
//   const auto face = std::make_shared<const Zalt::Display::FontFace>(
//       "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 0);
//   face->unitsPerEm();  // 2048
#pragma once

#include <Zalt/Display/DisplayExport.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace Zalt {
namespace Display {

// A font file that cannot be read, is not a font, or has no face of the index
// asked for; what() says which, without the file's name.
class ZALT_LTSDISPLAY_EXPORT FontFileError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

class ZALT_LTSDISPLAY_EXPORT FontFace {
public:
  // The library's shaping and drawing handles (Private/FontHandles.h).
  struct Handles;

  // Reads face `index` (0 for a file of one face) of the file at `path`;
  // throws FontFileError.
  FontFace(const std::string& path, std::uint32_t index);
  ~FontFace();
  FontFace(const FontFace&) = delete;
  FontFace& operator=(const FontFace&) = delete;

  const std::string& path() const { return m_path; }
  std::uint32_t index() const { return m_index; }
  // The face's design units per em: what its advances are measured in.
  std::int32_t unitsPerEm() const;
  // Whether the face maps `character` to a glyph of its own.
  bool hasCharacter(char32_t character) const;

  // For the library's own shaping and drawing code.
  const Handles& handles() const { return *m_handles; }

private:
  std::string m_path;
  std::uint32_t m_index;
  std::unique_ptr<Handles> m_handles;
};

}  // namespace Display
}  // namespace Zalt
