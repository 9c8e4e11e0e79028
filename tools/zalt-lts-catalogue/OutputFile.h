// The tool's output files: written whole or not at all, and never over one of
// the files the tool reads.
//
//   refuseOutputAmongInputs("texts.xml", {"texts.xml"});  // throws: same file
//   writeWhole("pseudo.xml", bytes);                       // or "-" for standard output
#pragma once

#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// Throws std::runtime_error when `output` is one of `inputs` ("-" aside), as
// named or through links, before anything is read.
void refuseOutputAmongInputs(const std::string& output, const std::vector<std::string>& inputs);

// Writes `bytes` to a new file beside `path`, flushes it to the disk and
// renames it over `path`, so that `path` holds either its earlier bytes or
// all of these. "-" writes to standard output. Throws std::runtime_error
// "cannot write PATH: REASON" with the system's reason; the new file is gone then.
void writeWhole(const std::string& path, const std::string& bytes);

}  // namespace ZaltCatalogueTool
