// What the display component's tests share: the Debian fonts they shape with,
// and a skip with the reason where one is not installed.
#pragma once

#include <Zalt/Display/FontChain.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace DisplayTestSupport {

inline constexpr const char* dejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline constexpr const char* droidFallback = "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf";

inline bool installed(const std::string& font) { return std::filesystem::exists(font); }

// DejaVu Sans, then the Droid fallback.
inline Zalt::Display::FontChain deviceChain() {
  return {{std::make_shared<const Zalt::Display::FontFace>(dejaVuSans, 0),
           std::make_shared<const Zalt::Display::FontFace>(droidFallback, 0)}};
}

}  // namespace DisplayTestSupport

// Skips the test, naming the font, where a font it shapes with is absent.
#define SKIP_WITHOUT_FONTS()                                                                     \
  for (const char* font : {DisplayTestSupport::dejaVuSans, DisplayTestSupport::droidFallback}) { \
    if (!DisplayTestSupport::installed(font)) {                                                  \
      GTEST_SKIP() << font << " is not installed (fonts-dejavu-core, fonts-droid-fallback)";     \
    }                                                                                            \
  }
