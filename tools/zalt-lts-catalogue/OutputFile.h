// The tool's output files: written whole or not at all, never over one of the
// files the tool reads, and never changed in kind. A link is followed to the
// file it names; a FIFO or a device is written to as it is.
//
//   refuseOutputAmongInputs("texts.xml", {"texts.xml"});  // throws: same file
//   writeWhole("pseudo.xml", bytes);                       // or "-" for standard output
//   if (isExistingRegularFile("de.xml")) { /* merge into what it holds */ }
#pragma once

#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// Throws std::runtime_error when `output` is one of `inputs` ("-" aside), as
// named or through links, before anything is read.
void refuseOutputAmongInputs(const std::string& output, const std::vector<std::string>& inputs);

// Whether `output`, its links followed, is a regular file that exists: the one
// kind of output that holds something to merge into. False for "-", a FIFO, a
// device, a directory and a path where nothing is.
bool isExistingRegularFile(const std::string& output);

// How a new regular file reaches the disk before it replaces the old one:
// flushed, so that it is whole also after a crash of the system, or left to
// the system, for outputs as many and as easily made again as pictures.
enum class Flush { ToDisk, LeftToSystem };

// Writes `bytes` to `path`; "-" writes to standard output. A link is followed
// to the file at its end. A regular file, or a new one, is written to a new
// file beside it, flushed as `flush` says and renamed over it, so that it holds
// either its earlier bytes or all of these; an existing one keeps its mode and,
// where the system lets it, its owner. Anything else that exists (a FIFO, a
// device) is opened and written to as it is, never read or replaced. Throws
// std::runtime_error "cannot write PATH: REASON" with the system's reason; no
// new file is left then.
void writeWhole(const std::string& path, const std::string& bytes, Flush flush = Flush::ToDisk);

}  // namespace ZaltCatalogueTool
