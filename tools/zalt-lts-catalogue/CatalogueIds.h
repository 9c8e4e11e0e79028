// The record of text catalogue identifiers that coverage --catalogue-ids
// checks an MDIB's identifier against and --record adds to.
//
//   const RecordCheck checked = checkAgainstRecord(identity, mdibFile, record, request);
//   if (checked.newText) { writeWhole(request.path, *checked.newText); }
#pragma once

#include <Zalt/Catalogue/CatalogueIdRecord.h>
#include <Zalt/Catalogue/CatalogueIdentity.h>

#include <optional>
#include <string>
#include <vector>

namespace ZaltCatalogueTool {

struct RecordRequest {
  // The record's file.
  std::string path;
  // Adds an identifier that the record lacks, rather than reporting it.
  bool record = false;
};

struct RecordCheck {
  std::vector<Zalt::Catalogue::Finding> findings;
  // The record's whole new text, where --record adds a line.
  std::optional<std::string> newText;
};

// Reads the record of `request`; a record that is not there yet is empty.
// Throws CatalogueError for a file problem, std::runtime_error for "-".
Zalt::Catalogue::CatalogueIdRecord readRecord(const RecordRequest& request);

// Judges the MDIB's identifier against `record`, for a catalogue of `digest`:
// a finding where the MDIB declares none, where the record holds it with
// another digest, or where it lacks it and `request` does not record it.
// An identifier with findings of its own is not looked up.
RecordCheck checkAgainstRecord(const Zalt::Catalogue::IdentityCheck& identity, const std::string& mdibFile,
                               const Zalt::Catalogue::CatalogueIdRecord& record, const std::string& digest,
                               const RecordRequest& request);

}  // namespace ZaltCatalogueTool
