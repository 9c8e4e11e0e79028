// The commands of zalt-lts-catalogue. Each reads its files as one catalogue,
// writes its answer to stdout and returns the exit status (ExitCode.h). File
// problems end fit and stats on stderr; check reports them as findings.
#pragma once

#include <Tovra/Mdib/LocalizedTextWidth.h>
#include <Tovra/Mdib/VersionCounter.h>
#include <Zalt/Localization/NumberOfLines.h>

#include <boost/optional.hpp>

#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// Every problem that a device store would meet, one "FILE:LINE:COLUMN: message"
// per line, then a summary line; or one JSON document. With file problems, only
// those.
int check(const std::vector<std::string>& files, bool json);

struct FitRequest {
  std::string language;
  boost::optional<Tovra::Mdib::LocalizedTextWidth> width;
  boost::optional<Zalt::Localization::NumberOfLines> lines;
  boost::optional<std::string> ref;
  boost::optional<Tovra::Mdib::VersionCounter> version;
};

// A table of what the store's text() answers for each reference (or the one
// asked for), in its newest version unless a version is asked for. Says on
// stderr, instead, which language, reference or version no kept text has.
int fit(const std::vector<std::string>& files, const FitRequest& request);

// Numbers of texts, references, versions and languages, and texts per width
// and number of lines.
int stats(const std::vector<std::string>& files);

}  // namespace ZaltCatalogueTool
