// How zalt-lts-catalogue words numbers and lists in what it prints, the same
// in every command:
//
//   counted(1, "text", "texts");            // "1 text"
//   countedOrNo(0, "finding", "findings");  // "no findings"
//   listed({"de-DE 1", "en-US 2"});         // "de-DE 1, en-US 2"
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ZaltCatalogueTool {

// The count and its noun, singular for one: "0 texts", "1 text", "2 texts".
std::string counted(std::size_t count, std::string_view singular, std::string_view plural);

// As counted, but "no" for none: "no findings", "1 finding".
std::string countedOrNo(std::size_t count, std::string_view singular, std::string_view plural);

// The items in order, `separator` between each two; "" for none.
std::string listed(const std::vector<std::string>& items, std::string_view separator = ", ");

}  // namespace ZaltCatalogueTool
