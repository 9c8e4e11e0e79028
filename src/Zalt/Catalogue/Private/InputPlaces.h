// Zalt::Catalogue::Private input places: the line and column of a point of a
// document that the streaming parser has read, counted from where it stands.
//
//   const xmlParserInput& input = *context->input;
//   const Place tag = placeOf(input, markupStart(input));  // the '<' just read
#pragma once

#include <libxml/parser.h>

#include <cstdint>

namespace Zalt {
namespace Catalogue {
namespace Private {

struct Place {
  std::int32_t line;
  std::int32_t column;
};

// The '<' of the markup that the parser has just read.
const xmlChar* markupStart(const xmlParserInput& input);

// Whether `at` is in the part of the parser's buffer that it has read.
bool isRead(const xmlParserInput& input, const xmlChar* at);

// The place of `at`, a byte that the parser has read and still holds in its
// buffer; columns count characters, from 1.
Place placeOf(const xmlParserInput& input, const xmlChar* at);

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
