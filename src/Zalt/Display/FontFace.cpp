#include <Zalt/Display/FontFace.h>
#include <Zalt/Display/Private/FileBytes.h>
#include <Zalt/Display/Private/FontHandles.h>

#include <hb-ot.h>

#include <system_error>

namespace Zalt {
namespace Display {
namespace {

std::string fontBytes(const std::string& path) {
  try {
    return Private::fileBytes(path);
  } catch (const std::system_error& error) {
    throw FontFileError("cannot be read: " + error.code().message());
  }
}

}  // namespace

FontFace::Handles::~Handles() {
  hb_font_destroy(harfBuzz);
  if (freeType != nullptr) {
    FT_Done_Face(freeType);
  }
  if (library != nullptr) {
    FT_Done_FreeType(library);
  }
}

// FreeType decides whether the bytes are a font and how many faces they hold;
// HarfBuzz then reads the same bytes, so both see one face.
FontFace::FontFace(const std::string& path, std::uint32_t index)
    : m_path(path), m_index(index), m_handles(std::make_unique<Handles>()) {
  Handles& handles = *m_handles;
  handles.bytes = fontBytes(path);
  if (FT_Init_FreeType(&handles.library) != 0) {
    throw FontFileError("cannot be read: FreeType cannot start");
  }
  const auto* data = reinterpret_cast<const FT_Byte*>(handles.bytes.data());
  const auto size = static_cast<FT_Long>(handles.bytes.size());
  FT_Face probe = nullptr;
  if (FT_New_Memory_Face(handles.library, data, size, -1, &probe) != 0) {
    throw FontFileError("is not a font file");
  }
  const FT_Long faces = probe->num_faces;
  FT_Done_Face(probe);
  if (index >= static_cast<std::uint64_t>(faces)) {
    throw FontFileError("has no face " + std::to_string(index) + ": its faces are 0 to " +
                        std::to_string(faces - 1));
  }
  if (FT_New_Memory_Face(handles.library, data, size, static_cast<FT_Long>(index), &handles.freeType) != 0 ||
      handles.freeType->units_per_EM == 0) {
    throw FontFileError("has no scalable face " + std::to_string(index));
  }
  hb_blob_t* blob = hb_blob_create(handles.bytes.data(), static_cast<unsigned int>(handles.bytes.size()),
                                   HB_MEMORY_MODE_READONLY, nullptr, nullptr);
  hb_face_t* face = hb_face_create(blob, index);
  hb_blob_destroy(blob);
  handles.harfBuzz = hb_font_create(face);
  hb_face_destroy(face);
  hb_ot_font_set_funcs(handles.harfBuzz);
  const int scale = static_cast<int>(handles.freeType->units_per_EM);
  hb_font_set_scale(handles.harfBuzz, scale, scale);
}

FontFace::~FontFace() = default;

std::int32_t FontFace::unitsPerEm() const {
  return static_cast<std::int32_t>(m_handles->freeType->units_per_EM);
}

bool FontFace::hasCharacter(char32_t character) const {
  hb_codepoint_t glyph = 0;
  return hb_font_get_nominal_glyph(m_handles->harfBuzz, character, &glyph) != 0 && glyph != 0;
}

}  // namespace Display
}  // namespace Zalt
