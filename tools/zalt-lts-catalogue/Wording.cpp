#include "Wording.h"

namespace ZaltCatalogueTool {

std::string counted(std::size_t count, std::string_view singular, std::string_view plural) {
  std::string text = std::to_string(count) + ' ';
  text += count == 1 ? singular : plural;
  return text;
}

std::string countedOrNo(std::size_t count, std::string_view singular, std::string_view plural) {
  return count == 0 ? "no " + std::string(plural) : counted(count, singular, plural);
}

std::string listed(const std::vector<std::string>& items, std::string_view separator) {
  std::string text;
  for (std::size_t index = 0; index < items.size(); ++index) {
    text += index == 0 ? std::string_view() : separator;
    text += items[index];
  }
  return text;
}

}  // namespace ZaltCatalogueTool
