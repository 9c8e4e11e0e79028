// Zalt::Localization::NumberOfLines: how many lines a text has (its line
// breaks plus one) or how many a display has room for.
#pragma once

#include <cstdint>

namespace Zalt {
namespace Localization {

using NumberOfLines = std::uint32_t;

}  // namespace Localization
}  // namespace Zalt
