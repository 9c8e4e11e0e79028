// Text for a terminal or a log parser: one line, and nothing in it that
// moves the cursor or reorders what follows.
//
//   escapedForTerminal("ab\n\u202Ec");  // "ab\\n\\u202Ec"
#pragma once

#include <string>
#include <string_view>

namespace ZaltCatalogueTool {

// Tab, LF and CR as \t, \n, \r; every other control character (C0, DEL, C1),
// line and paragraph separators and the bidirectional controls as \uXXXX;
// a byte that is not UTF-8 as \xHH. Everything else as it is.
std::string escapedForTerminal(std::string_view text);

}  // namespace ZaltCatalogueTool
