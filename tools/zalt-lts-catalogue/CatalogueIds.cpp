#include "CatalogueIds.h"

#include <stdexcept>

namespace ZaltCatalogueTool {

using Zalt::Catalogue::Finding;

Zalt::Catalogue::CatalogueIdRecord readRecord(const RecordRequest& request) {
  if (request.path == "-") {
    // The record is read and written back: standard input cannot be both.
    throw std::runtime_error("--catalogue-ids names a file that is kept, not -");
  }
  return Zalt::Catalogue::readCatalogueIdRecordFile(request.path);
}

RecordCheck checkAgainstRecord(const Zalt::Catalogue::IdentityCheck& identity, const std::string& mdibFile,
                               const Zalt::Catalogue::CatalogueIdRecord& record, const std::string& digest,
                               const RecordRequest& request) {
  RecordCheck result;
  if (!identity.catalogueId) {
    result.findings.push_back({Finding::Kind::Identity,
                               {mdibFile, 0, 0},
                               "no MDS declares a text catalogue identifier (a ProductionSpecification with "
                               "SpecType Code 68008) to check against " +
                                   request.path});
    return result;
  }
  if (!identity.findings.empty()) {
    return result;
  }
  const std::string& identifier = *identity.catalogueId;
  if (const Zalt::Catalogue::RecordedCatalogue* entry = record.find(identifier)) {
    if (entry->digest != digest) {
      result.findings.push_back({Finding::Kind::Identity, identity.location,
                                 "the texts of catalogue '" + identifier + "' have changed since line " +
                                     std::to_string(entry->line) + " of " + request.path +
                                     " recorded it: give the catalogue a new identifier"});
    }
  } else if (request.record) {
    result.newText = Zalt::Catalogue::withRecorded(record, identifier, digest);
  } else {
    result.findings.push_back(
        {Finding::Kind::Identity, identity.location,
         "catalogue '" + identifier + "' is not recorded in " + request.path + ": record it with --record"});
  }
  return result;
}

}  // namespace ZaltCatalogueTool
