// Zalt::Catalogue::catalogueDigest: the SHA-256 fingerprint of what a device
// store keeps of a catalogue, so that a build can tell whether the texts that
// a catalogue identifier names have changed.
//
//   const Zalt::Catalogue::CatalogueCheck check = Zalt::Catalogue::checkCatalogue(catalogue);
//   const std::string digest = Zalt::Catalogue::catalogueDigest(catalogue, check);  // "3f5a..."
//
// The digest is SHA-256 over the kept texts (check.keyOrder) in the store's
// key order (reference and language byte-wise, version newest first, an absent
// width before the narrowest, then number of lines ascending), each written
// as these fields one after the other, every number big-endian:
//
//   reference       8-byte length, then its UTF-8 bytes
//   language tag    8-byte length, then its bytes, as written (no case folding)
//   version         8 bytes
//   width           1 byte 0 when absent; else 1 byte 1, then the value in 4 bytes
//   number of lines 4 bytes: the store's line breaks of the text, plus one
//   text            8-byte length, then its UTF-8 bytes
//
// So the digest depends only on the texts the store keeps: not on files, their
// order or encoding, the order of texts, formatting or comments, nor on a text
// that the store drops because its key is already taken. Changing this layout
// changes every digest, and with it every identifier derived from one.
#pragma once

#include <Zalt/Catalogue/Catalogue.h>
#include <Zalt/Catalogue/CatalogueExport.h>
#include <Zalt/Catalogue/CheckCatalogue.h>

#include <string>

namespace Zalt {
namespace Catalogue {

// The 64 lowercase hexadecimal digits of the SHA-256 described above, over
// the texts of `catalogue` that `check` (of that catalogue) keeps. Throws only
// what allocation throws.
ZALT_LTSCATALOGUE_EXPORT std::string catalogueDigest(const Catalogue& catalogue, const CatalogueCheck& check);

}  // namespace Catalogue
}  // namespace Zalt
