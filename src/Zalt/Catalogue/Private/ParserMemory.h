// Zalt::Catalogue::Private parser memory: notes the allocations of the
// streaming parser that fail. The parser does not always tell a lack of memory
// for what it is: an allocation that fails inside it may come out as an error
// of the document (a namespace that is "empty", say) or as nothing at all, so
// a reader asks here instead.
//
//   const std::size_t before = failedParserAllocations();
//   xmlParseChunk(context, data, size, 0);
//   if (failedParserAllocations() != before) { throw std::bad_alloc(); }
#pragma once

#include <cstddef>

namespace Zalt {
namespace Catalogue {
namespace Private {

// Routes the parser's allocations, once for the process, through functions
// that count the failures and otherwise hand on to the allocator set before.
// An allocator that a program sets for the parser afterwards ends the counting.
void noteFailedParserAllocations();

// How many allocations of the parser have failed on this thread since
// noteFailedParserAllocations.
std::size_t failedParserAllocations();

}  // namespace Private
}  // namespace Catalogue
}  // namespace Zalt
