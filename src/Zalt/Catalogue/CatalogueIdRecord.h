// Zalt::Catalogue::CatalogueIdRecord: a device maker's record of the text
// catalogue identifiers it has handed out, each with the digest
// (CatalogueDigest.h) of the catalogue it named, so that a build can tell when
// the texts behind an identifier have changed and it needs a new one.
//
//   const Zalt::Catalogue::CatalogueIdRecord record =
//       Zalt::Catalogue::readCatalogueIdRecordFile("catalogue-ids.txt");
//   if (const Zalt::Catalogue::RecordedCatalogue* entry = record.find(identifier)) {
//     if (entry->digest != digest) { /* the texts have changed: mint a new identifier */ }
//   } else {
//     writeFile("catalogue-ids.txt", Zalt::Catalogue::withRecorded(record, identifier, digest));
//   }
//
// The record is a UTF-8 text file kept under version control, one identifier a
// line, then white space (spaces or tabs) and "sha256:" with the digest's 64
// lowercase hexadecimal digits; lines end in LF or CR LF. A line whose first
// character other than white space is '#' is a comment; blank lines are
// allowed. Lines are only ever added, so that records of two branches merge
// line by line:
//
//   # Text catalogues of the monitor
//   urn:oid:1.3.6.1.4.1.1234.4.1.2.1 sha256:9f86d081884c7d659a2feaa0c55ad015a3bf4f1b2b0b822cd15d6c15b0f00a08
#pragma once

#include <Zalt/Catalogue/CatalogueError.h>
#include <Zalt/Catalogue/CatalogueExport.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Zalt {
namespace Catalogue {

// One line of a record.
struct RecordedCatalogue {
  // As written in the record.
  std::string identifier;
  // The 64 hexadecimal digits, without "sha256:".
  std::string digest;
  std::int32_t line;
};

struct ZALT_LTSCATALOGUE_EXPORT CatalogueIdRecord {
  // The file's bytes as read, to which new lines are added.
  std::string text;
  std::vector<RecordedCatalogue> entries;

  // The entry of `identifier`, compared as comparedForm (CatalogueIdentity.h)
  // does; null where the record lacks it.
  const RecordedCatalogue* find(std::string_view identifier) const;
};

// Reads a record held in memory, naming it `fileName` in problems. Throws
// CatalogueError with a problem at FILE:LINE:COLUMN for a line that is not a
// comment, blank, or an identifier (CatalogueIdentity.h) and a digest, and
// for an identifier that an earlier line holds already.
ZALT_LTSCATALOGUE_EXPORT CatalogueIdRecord readCatalogueIdRecord(std::string_view text,
                                                                 const std::string& fileName);

// Reads the record at `path`; where nothing is there yet, the record is empty.
// Throws CatalogueError as readCatalogueIdRecord does, and where the file
// cannot be read.
ZALT_LTSCATALOGUE_EXPORT CatalogueIdRecord readCatalogueIdRecordFile(const std::string& path);

// The text of `record` with a line for `identifier` and `digest` (64 hex
// digits) added at its end, the earlier lines as they were.
ZALT_LTSCATALOGUE_EXPORT std::string withRecorded(const CatalogueIdRecord& record,
                                                  const std::string& identifier, const std::string& digest);

}  // namespace Catalogue
}  // namespace Zalt
