// The tool's JSON output: every command's --json prints one document on every
// exit but a wrong command line, its findings in one shape.
//
//   printJson({{"texts", 54}, {"findings", findingsJson(findings)}});
#pragma once

#include <Zalt/Catalogue/Finding.h>

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

// [{"file", "line", "column", "kind", "message"}, ...]
nlohmann::json findingsJson(const std::vector<Zalt::Catalogue::Finding>& findings);

// The finding of kind File that a document carries where `output` cannot be
// written: writeWhole's `error`, which names the output and the reason.
Zalt::Catalogue::Finding unwritableOutput(const std::string& output, const std::runtime_error& error);

// The document on standard output, indented. Texts, references and file names
// need not be UTF-8; what is not comes out as U+FFFD, so that a build
// script's parser always gets a document it can read.
void printJson(const nlohmann::json& document);

}  // namespace ZaltCatalogueTool
