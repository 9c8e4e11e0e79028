// Zalt::Display::DisplayArea: one place of a device's screen that shows a
// text: what it asks the store for (a width and a number of lines) and how
// it draws the answer (a font size and a box, in pixels).
//
//   const Zalt::Display::DisplayArea banner{"alarm banner", LocalizedTextWidth::ExtraLarge, 2, 18, 200, 22};
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Zalt/Localization/NumberOfLines.h>

#include <cstdint>
#include <string>

namespace Zalt {
namespace Display {

struct DisplayArea {
  std::string name;
  // What the area asks the device store's text() for.
  Tovra::Mdib::LocalizedTextWidth textWidth;
  Zalt::Localization::NumberOfLines lines;
  // The font size in pixels per em; the box's width and the height of a line
  // in pixels.
  std::int32_t size;
  std::int32_t width;
  std::int32_t lineHeight;
};

}  // namespace Display
}  // namespace Zalt
